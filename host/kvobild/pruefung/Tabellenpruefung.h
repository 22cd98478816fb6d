#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "host/kvobild/pruefung/Befund.h"
#include "platform/adodb/Connection.h"

/// Whether one statement is allowed.
struct Recht {
  QString anweisung;
  QString tabelle;
  bool reicht = false;
};

/// What is known of some tables.
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
