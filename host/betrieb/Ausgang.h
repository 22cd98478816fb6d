#pragma once

#include <QString>
#include <exception>
#include <optional>
#include <type_traits>

#include "platform/basic/Laufzeitfehler.h"

/// What a run of the command line ended in; scripts see it as the exit code.
enum class Ausgang : int {
  Erledigt = 0,
  /// Nothing was found, or a part of the work was not done.
  Teilweise = 1,
  /// The call itself is wrong; nothing was tried.
  Aufruf = 2,
  /// The database can't be reached or refused a statement.
  Datenbank = 3,
  /// A file or folder is missing, is in the way or can't be written.
  Datei = 4,
};

/// Which kind of failure a number of the platform is; the database's own numbers are all below 0 or above 3000.
inline Ausgang ausgang_von(const Laufzeitfehler& fehler) {
  return fehler.Nummer() > 0 && fehler.Nummer() < 1000 ? Ausgang::Datei : Ausgang::Datenbank;
}

/// Ends a command with words for the user. Nothing that the user had is lost when it flies.
class Abbruch final : public std::exception {
 public:
  Abbruch(Ausgang ausgang, QString text) : ausgang_(ausgang), text_(std::move(text)) {}
  Ausgang ausgang() const noexcept { return ausgang_; }
  const QString& text() const noexcept { return text_; }
  const char* what() const noexcept override { return "Abbruch"; }

 private:
  Ausgang ausgang_;
  QString text_;
};

/// Runs what may fail at the platform and gives what `deute` makes of the failure, or none. An Abbruch flies on.
template <class Anweisung, class Deute>
auto versuche(Anweisung&& anweisung, Deute&& deute)
    -> std::optional<std::invoke_result_t<Deute, const Laufzeitfehler&>> {
  try {
    anweisung();
    return std::nullopt;
  } catch (const Laufzeitfehler& fehler) {
    return deute(fehler);
  }
}
/// The same with the failure itself.
template <class Anweisung>
std::optional<Laufzeitfehler> versuche(Anweisung&& anweisung) {
  return versuche(anweisung, [](const Laufzeitfehler& fehler) { return fehler; });
}

/// Runs what may fail in any way; for steps that take back what was done, which must all have their turn.
template <class Anweisung>
bool gelingt(Anweisung&& anweisung) {
  try {
    return !versuche(anweisung);
  } catch (const Abbruch&) {
    return false;
  }
}
