#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "host/betrieb/aufraeumen/Aufraeumplan.h"

/// Where a clearing puts what goes, so that it can be taken back: a folder beside the picture root, since the clearing
/// of any desk walks everything inside. Each clearing has a run of its own there, named by its time, with the same
/// folders as below the root; a list of what and why stands beside it. All paths are those of the table.
class Papierkorb {
 public:
  /// For the picture root `wurzel`, beside it or in the folder `anderswo`. Nothing is touched. Ends with Abbruch,
  /// Ausgang::Aufruf, where that lies in the picture root itself.
  explicit Papierkorb(QString wurzel, const std::optional<QString>& anderswo = {});

  /// It can take something. Beside the root it can't where a rename does not reach: no right to make folders there, or
  /// a root that is a mount of its own. Another place is copied to.
  bool moeglich() const;
  /// The folder that it is; empty where no path can mean it.
  const QString& ordner() const noexcept { return ordner_; }
  /// Names of its runs, the oldest first.
  QStringList laeufe() const;
  /// When a run was, by its name.
  static QDateTime zeit(const QString& lauf);

  /// A path below a root leads into what clearings of another root have put away.
  static bool liegt_in_einem(const QString& pfad);

  /// Makes a run for what is on the list and writes the list beside it; gives its name. Raises where that fails;
  /// nothing is changed then.
  QString beginne(const Aufraeumplan& plan) const;
  /// Takes one of the list into the run.
  void nimm(const QString& lauf, const Aufraeumposten& posten) const;
  /// A run that has taken nothing goes.
  void verwirf_leeren(const QString& lauf) const;

  /// What a run has, or what was done with it; paths as below the root, folders with a closing backslash.
  struct Bestand {
    QStringList dateien;
    QStringList ordner;
    std::int64_t bytes = 0;
  };
  Bestand bestand(const QString& lauf) const;
  /// Brings everything of a run back, never over a file that is there. Gives what stayed in the run, with the reason in
  /// words.
  struct Gebliebenes {
    QString pfad;
    QString grund;
  };
  QList<Gebliebenes> hole_zurueck(const QString& lauf) const;
  /// The runs that are older than that many days.
  QStringList aeltere(int tage, const QDateTime& jetzt = QDateTime::currentDateTime()) const;
  /// Deletes a run for good. Gives what stayed, as above.
  QList<Gebliebenes> loesche(const QString& lauf) const;

 private:
  QString im_Lauf(const QString& lauf, const QString& relativ) const;
  QString liste_von(const QString& lauf) const { return ordner_ + u'\\' + lauf + QStringLiteral(".json"); }
  QString relativ(const QString& pfad) const { return pfad.mid(wurzel_.size() + 1); }
  void sammle(const QString& ordner, const QString& davor, Bestand& bestand) const;
  void raeume_leere(const QString& lauf, const QStringList& ordner) const;

  QString wurzel_;
  QString ordner_;
  bool anderswo_;
};
