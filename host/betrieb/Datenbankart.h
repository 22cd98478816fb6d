#pragma once

#include <QString>

#include "host/betrieb/Gegenstelle.h"
#include "platform/adodb/Recordset.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

/// A column as it stands in the database.
struct Spaltenlage {
  QString name;
  QString typ;
  /// In characters; -1 has no end.
  int laenge = -1;
  bool nullbar = true;
  bool ist_Text = false;
  bool ist_Zahl = false;
  /// Compares without regard to the case of letters, as the statements rely on.
  bool vergleicht_gleich = true;
};

/// What differs between the database engines in the programs' own statements.
struct Datenbankart {
  /// A file of this machine, without a login.
  bool ist_Datei;
  /// The scripts of sql/ that make the table of the system, and those of the host that it reads.
  QString Skript;
  QString Wirtsskript;
  /// The script that makes the records' view, or the table in its place, in an empty database.
  QString Vorgangsskript;
  /// The script itself adds the columns that an older table lacks.
  bool ergaenzt_Spalten;
  /// Asks for the names of tables and columns, and of indexes, of the two tables %1 and %2.
  QString Spaltennamen;
  QString Indexnamen;
  /// Asks for the columns of the table %1; each row is for `spalte`.
  QString Spalten;
  Spaltenlage (*spalte)(const adodb::Recordset& satz);
  /// Asks for the columns of Bild_Zuordnungen that a new row can't leave out.
  QString Pflichtspalten;
  /// Widest key of an index in bytes; 0 has no end.
  int Schluesselbytes;
  /// The expression %1 as a text that compares and matches without regard to the case of any letter, and whether what
  /// it is compared with has to be folded as well.
  QString Vergleichstext;
  bool faltet;
  /// Takes a transaction back that a failure may have ended.
  QString Ruecknahme;
  Gegenstelle (*gegenstelle)(adodb::Connection& verbindung);

  static const Datenbankart SQLite;
  static const Datenbankart Server;
  static const Datenbankart& von(const adodb::Verbindungszeichenfolge& folge);
  static const Datenbankart& von(const adodb::Connection& verbindung);
};

/// The pairs of a connect string. A text that is none has no pairs; the opening says what is wrong with it.
adodb::Verbindungszeichenfolge gelesene_Verbindung(const QString& verbindung);
