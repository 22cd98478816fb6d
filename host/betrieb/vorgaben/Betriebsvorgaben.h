#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

/// What a firm gives all of its desks, from the file bildzuordnung/betrieb.ini below the first folder of
/// XDG_CONFIG_DIRS (XDG Base Directory Specification; "/etc/xdg" where that is not set) that has one:
///
///     [Verbindung]
///     Verbindung=Provider=MSOLEDBSQL;Data Source=SRV01\KVO;Initial Catalog=Betrieb;User ID=kvo
///     Bilder=/srv/bilder
///     [Laufwerke]
///     P:=/srv/bilder
///     [Berichtskopf]
///     Zeile1=Heizungsbau Muster
///     Zeichen=/etc/xdg/bildzuordnung/zeichen.png
///     [Betrieb]
///     gesperrt=Verbindung, Bilder, Berichtskopf
///
/// Values stand as they are to the end of their line: a connect string has semicolons and backslashes. Lines that begin
/// with ";" or "#" are remarks. What is not named under `gesperrt` a user may set otherwise.
struct Betriebsvorgaben {
  /// What can be locked.
  static const QString Verbindung;
  static const QString Bilder;
  static const QString Berichtskopf;

  /// The file, a path of this machine; empty where there is none, and then so is everything else.
  QString datei;
  QString verbindung;
  QString bilder;
  /// Drives and shares by the names that the path map takes, with their folders.
  QMap<QString, QString> laufwerke;
  /// The values of the report's head by their names.
  QHash<QString, QString> berichtskopf;
  QStringList gesperrt;

  bool sperrt(const QString& name) const { return gesperrt.contains(name, Qt::CaseInsensitive); }
  /// Ends with Abbruch, Ausgang::Aufruf, where `name` is locked; `option` is what would have set it otherwise.
  void pruefe_frei(const QString& name, const QString& option) const;

  /// Reads it anew. Ends with Abbruch, Ausgang::Datei, where it can't be read, has a line or a name that is none, or
  /// holds a password: everybody on this machine may read it.
  static Betriebsvorgaben lies();
  /// The same for what is open already: where the file can't be read any more, what it gave the last time. A slip is
  /// told when a program begins; one that comes later must neither end the work nor unlock anything.
  static Betriebsvorgaben geltende();
  /// Enters the drives into the path map; one that is none ends with Abbruch.
  void richte_Laufwerke_ein() const;
};
