#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

#include "platform/basic/kvo_export.h"

/// Knows which place of this machine a path of the table means. The system composes and stores paths with backslashes
/// ("P:\Artikel\Allg\foto.jpg", "\\server\share\…"); only platform/files turns them into the machine's own form.
///
/// Rules of resolving, in this order: both separators count and repeated ones are one; a leading "X:" or
/// "\\server\share" goes through the map (without regard to case), a share that nobody mapped is looked up among the
/// network mounts; "C:" is the root file system unless mapped otherwise, and "C:" without a separator behind it the
/// current directory; a path without any of them is taken from the current directory, one that begins with a single
/// separator from the root. "." and ".." are resolved by the text and never lead above the drive or share. Then, level
/// by level, a name whose exact form is missing is looked up without regard to case. A level that is missing in every
/// case loses its trailing dots and blanks, as the share would drop them, and is looked up again; when that is missing
/// too it stays in this form.
class KVO_EXPORT Pfadkarte {
 public:
  /// The map in force for the whole process.
  static Pfadkarte& aktuell();

  /// Maps a drive ("P:", one letter and a colon) or a share ("\\server\share") to a folder of this machine. An earlier
  /// entry of the same name is replaced. Any other name raises 5.
  void setze(const QString& laufwerk_oder_Freigabe, const QString& ordner);
  /// Takes an entry back; harmless when there is none.
  void entferne(const QString& laufwerk_oder_Freigabe);
  /// The folder that a drive or share is mapped to, or none.
  std::optional<QString> ordner(const QString& laufwerk_oder_Freigabe) const;
  /// All entries' names, drives first.
  QStringList namen() const;

  /// The machine's own path, in the file system's bytes. A drive or share that nobody mapped raises 76, an empty path
  /// 76, a path with a zero character 52.
  QByteArray maschinenpfad(const QString& pfad) const;
  /// The same without a look at the disk: the exact form of the path, whether it is there or not. Where it is there,
  /// it is what maschinenpfad gives.
  QByteArray genauer_Pfad(const QString& pfad) const;
  /// As maschinenpfad, for a name that is to be made: the last level keeps the case that was asked for, also where the
  /// name exists in another.
  QByteArray maschinenpfad_neu(const QString& pfad) const;
  /// The way back for a path of this machine: the longest mapped folder wins, the rest is written with backslashes;
  /// what lies outside all of them becomes "C:\…".
  QString tabellenpfad(const QString& maschinenpfad) const;

 private:
  struct Eintrag {
    QString name;
    QString ordner;
  };
  /// A path's place on this machine, and its levels below that, as text with backslashes.
  struct Zerlegt {
    QString wurzel;
    QString rest;
  };
  const Eintrag* suche(QStringView name) const;
  QString freigabe(const QString& name) const;
  Zerlegt zerlege(const QString& pfad) const;
  QList<Eintrag> eintraege_;
};
