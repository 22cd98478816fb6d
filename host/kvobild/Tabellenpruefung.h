#pragma once

#include <QJsonArray>
#include <QList>
#include <QString>
#include <QStringList>

#include "platform/adodb/Connection.h"

/// Something that is not as it should be.
struct Befund {
  /// For scripts, in small letters.
  QString kennung;
  /// For people.
  QString text;
  /// The system can't work with it; otherwise it works, and loses or misses something.
  bool sperrt = false;
  /// Rows that it is about, 0 where it is about a table; the first of them as objects of names and values.
  qint64 anzahl = 0;
  QJsonArray zeilen;
};

/// Whether one statement is allowed.
struct Recht {
  QString anweisung;
  QString tabelle;
  bool reicht = false;
};

/// What is known of the two tables.
struct Tabellenlage {
  /// Names of the tables that are there, and how many of the expected columns each has.
  QStringList tabellen;
  QList<int> spalten;
  QList<Recht> rechte;
  QList<Befund> befunde;
  /// The rows of Bild_Zuordnungen can be read with all columns that their names need.
  bool lesbar = false;
};

/// Looks at both tables, their columns with types, lengths and collation, and tries the statements of the system.
/// Leaves nothing behind. Raises what the connection raises for anything but a missing table or right.
Tabellenlage pruefe_Tabellen(adodb::Connection& verbindung);
