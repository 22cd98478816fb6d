#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

class Tdsserver;

/// All that a data folder and its database hold: the rows and the files, read with nothing of the program's own.
struct Bestand {
  /// The rows of Bild_Zuordnungen in the order in which they were inserted: "Key1|Key2|Key3|key4|Bildname|BildExt|Typ1|
  /// Typ2|BildPfad|Beschreibung|Druckkennzeichen|Grafik_Ursprung|GrafikAnbNr|SortIndex", trailing blanks cut, NULL as
  /// "<NULL>".
  QStringList zuordnungen;
  /// The rows of all other tables, the table's name in front.
  QStringList uebrige;
  /// Each file by its path in the folder, but the database's: of a text file its bytes, of any other their SHA-1.
  QMap<QString, QByteArray> dateien;

  /// The database is the folder's, or, with a server, what stands behind it. Raises std::runtime_error when it can't be
  /// read.
  static Bestand lies(const QString& ordner, Tdsserver* server);
};

/// What `ist` has too much ("+ …") and too little ("- …"); empty when both are the same. The order of rows counts.
QStringList unterschied(const Bestand& ist, const Bestand& soll);
