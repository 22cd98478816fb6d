#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "host/betrieb/aufraeumen/Aufraeumplan.h"
#include "host/betrieb/aufraeumen/Papierkorb.h"
#include "platform/adodb/Connection.h"
#include "platform/files/wirt/Umzug.h"
#include "store/clsBildZuordnungen.h"

/// How long what came into the picture tree is left alone, by the clock that the tree's files bear.
struct Schonfrist {
  static constexpr std::chrono::minutes Ueblich{60};
  /// 0: nothing is new.
  std::chrono::minutes dauer = Ueblich;
  /// Nanoseconds since 1970 in a folder.
  std::function<std::int64_t(const QString&)> uhr = umzug::jetzt_ns;
};

/// The clearing of the picture tree as a host offers it: the component deletes without a question, and where the table
/// can't be asked it deletes too much. So it is listed, shown, asked, and then it does what was shown or nothing; and
/// what goes is moved to the Papierkorb wherever there can be one. The root itself stays.
class Aufraeumen {
 public:
  /// `wurzel` is the picture root, `start` the folder to begin at, the root itself or one below it; both paths of the
  /// table; closing backslashes are cut off. The store is bound to that connection and stays the caller's.
  enum class Schritt { Lesen, Pruefen, Loeschen };
  /// Told before each step of the work how much of it is done, out of how much, or out of 0 where that is not known
  /// yet; false stops it between two files.
  using Fortgang = std::function<bool(Schritt schritt, std::size_t getan, std::size_t von)>;
  /// What a clearing has done.
  struct Ergebnis {
    /// So many of the list had their turn; fewer than it has where it was stopped.
    std::size_t getan = 0;
    /// Paths of these that did not go, as shown.
    QStringList geblieben = {};
    /// The run of the Papierkorb that has them; empty where they are gone for good.
    QString lauf = {};
  };

  Aufraeumen(clsBildZuordnungen& store, std::shared_ptr<adodb::Connection> verbindung, QString wurzel, QString start,
      Schonfrist schonfrist = {});

  /// Another place for what goes; ends with Abbruch as the Papierkorb does.
  void papierkorb(const QString& ordner) { papierkorb_ = Papierkorb(wurzel_, ordner); }
  const Papierkorb& papierkorb() const noexcept { return papierkorb_; }
  /// Nothing can take what goes, so that it will be gone for good.
  bool ist_endgueltig() const { return !papierkorb_.moeglich(); }

  /// What would go. Ends with Abbruch: Ausgang::Teilweise where it was stopped; Ausgang::Datei where the start is
  /// missing, or the root is empty though the table names pictures (a share that is not mounted), or a picture can't be
  /// asked for because of an apostrophe in its name or folder; Ausgang::Datenbank where the table can't be asked, or
  /// refused a single answer.
  Aufraeumplan liste(const Fortgang& fortgang = {});
  /// Takes away what is on the list and nothing else, if it is still the one that was shown; otherwise ends with
  /// Abbruch, Ausgang::Teilweise, and nothing is deleted. `ausgenommen` are paths of the list that the user has taken
  /// off. `endgueltig` is what the user was told: where a Papierkorb was promised, it is used or everything stays.
  Ergebnis fuehre_aus(const Aufraeumplan& gezeigt, const Fortgang& fortgang = {}, const QSet<QString>& ausgenommen = {},
      std::optional<bool> endgueltig = {});
  /// The list without what the user has taken off it, and without what stays because of that.
  static Aufraeumplan ohne(const Aufraeumplan& plan, const QSet<QString>& ausgenommen);
  /// How long its files are together.
  static std::int64_t bytes(const Aufraeumliste& liste);
  /// The words of the Abbruch where it was stopped before anything went.
  static QString abgebrochen();
  /// What became of what went: deleted, or moved to the Papierkorb.
  static QString worte(const Ergebnis& ergebnis);
  /// What a clearing that was stopped has done, in words; empty where it was not.
  QString angehalten(const Ergebnis& ergebnis, const Aufraeumplan& plan) const;

  /// A path of the list as the user knows it: below the root, a folder with a closing backslash; "." is the root.
  QString angezeigt(const Aufraeumposten& posten) const { return angezeigt(posten.Pfad, posten.ist_Ordner()); }
  QString angezeigt(const Bleibendes& bleibendes) const { return angezeigt(bleibendes.Pfad, bleibendes.ist_Ordner); }
  /// Sentences about what a user might not expect of the list; none where there is nothing.
  QStringList warnungen(const Aufraeumliste& liste) const;
  /// Why something goes: for scripts, one lower-case word, and for people.
  static QString kennung(Aufraeumposten::Grund grund);
  static QString worte(Aufraeumposten::Grund grund);
  /// Why something stays, for people.
  static QString worte(Bleibendes::Grund grund);

 private:
  bool hat_Zeilen() const;
  std::size_t pruefe_Namen(const Fortgang& fortgang) const;
  Aufraeumplan plane(const Fortgang& fortgang, std::optional<std::int64_t> stichzeit);
  std::optional<std::int64_t> stichzeit() const;
  std::optional<Bleibendes::Grund> warum_es_bleibt(const Aufraeumposten& posten, std::optional<std::int64_t> stichzeit);
  bool nennt_eine_Zeile(const QString& pfad) const;
  void nimm_weg(const Aufraeumposten& posten, const QString& lauf) const;
  QString angezeigt(const QString& pfad, bool ist_Ordner) const;

  clsBildZuordnungen& store_;
  std::shared_ptr<adodb::Connection> verbindung_;
  QString wurzel_;
  QString start_;
  Schonfrist schonfrist_;
  Papierkorb papierkorb_;
};
