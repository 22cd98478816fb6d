#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <functional>
#include <memory>

#include "platform/adodb/Connection.h"
#include "store/clsBildZuordnungen.h"

/// The clearing of the picture tree as a host offers it: the component deletes without a question, and where the table
/// can't be asked it deletes too much. So it is listed, shown, asked, and then it does what was shown or nothing.
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
  };

  Aufraeumen(clsBildZuordnungen& store, std::shared_ptr<adodb::Connection> verbindung, QString wurzel, QString start);

  /// What would go. Ends with Abbruch: Ausgang::Teilweise where it was stopped; Ausgang::Datei where the start is
  /// missing, or the root is empty though the table names pictures (a share that is not mounted), or a picture can't be
  /// asked for because of an apostrophe in its name or folder; Ausgang::Datenbank where the table can't be asked, or
  /// refused a single answer.
  Aufraeumliste liste(const Fortgang& fortgang = {});
  /// Deletes what is on the list and nothing else, if it is still the one that was shown; otherwise ends with Abbruch,
  /// Ausgang::Teilweise, and nothing is deleted.
  Ergebnis fuehre_aus(const Aufraeumliste& gezeigt, const Fortgang& fortgang = {});
  /// The words of the Abbruch where it was stopped before anything went.
  static QString abgebrochen();
  /// What a clearing that was stopped has done, in words; empty where it was not.
  QString angehalten(const Ergebnis& ergebnis, const Aufraeumliste& liste) const;

  /// A path of the list as the user knows it: below the root, a folder with a closing backslash; "." is the root.
  QString angezeigt(const Aufraeumposten& posten) const;
  /// Sentences about what a user might not expect of the list; none where there is nothing.
  QStringList warnungen(const Aufraeumliste& liste) const;
  /// Why something goes: for scripts, one lower-case word, and for people.
  static QString kennung(Aufraeumposten::Grund grund);
  static QString worte(Aufraeumposten::Grund grund);

 private:
  bool hat_Zeilen() const;
  std::size_t pruefe_Namen(const Fortgang& fortgang) const;
  /// The file lies directly in the root, where none is ever found in the table.
  bool liegt_in_der_Wurzel(const Aufraeumposten& posten) const;

  clsBildZuordnungen& store_;
  std::shared_ptr<adodb::Connection> verbindung_;
  QString wurzel_;
  QString start_;
};
