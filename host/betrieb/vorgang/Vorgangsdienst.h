#pragma once

#include <QList>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"

/// Asks for records beside the window: on a thread and a connection of its own, one question at a time. A new question
/// gives the one that runs up, and only the newest one waits. What can't be given up, a login or a server that is gone,
/// holds no one up: nobody waits for it, not even the end of the program. Used on the GUI thread, which gets the
/// answers too.
class Vorgangsdienst {
 public:
  struct Antwort {
    vorgangsquelle::Herkunft herkunft = vorgangsquelle::Herkunft::Eigene;
    QList<Vorgang> vorgaenge;
    /// The question gave as many as it wanted at most; their number is counted and comes later.
    bool vielleicht_mehr = false;
    /// Why there is no answer.
    std::optional<Datenbankausfall> ausfall;
  };

  Vorgangsdienst();
  /// Gives up what runs, and leaves it behind where that takes too long.
  ~Vorgangsdienst();
  Q_DISABLE_COPY_MOVE(Vorgangsdienst)

  /// The newest question has its answer. Questions that were overtaken have none.
  std::function<void(const Antwort&)> bei_Antwort;
  /// The number of all that fit the question; Zaehlgrenze and one for more. Without an answer where that can't be read.
  std::function<void(std::int64_t)> bei_Zahl;

  /// The database for the questions from now on. It is opened by the first question, anew where it was open.
  void verbinde(const QString& verbindungszeichenfolge);
  void frage(const vorgangsquelle::Frage& frage);
  /// There is a question without an answer.
  bool fragt() const;
  /// The last question has its answer and its number too.
  bool ruht() const;

  /// A question was left behind; its thread may be anywhere in a driver, so that the process must end without tidying
  /// up.
  static bool einer_zurueckgelassen();

 private:
  struct Lage;
  class Arbeiter;
  std::shared_ptr<Lage> lage_;
};
