#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include "platform/adodb/Connection.h"

/// The tables of a database; the scripts that make them are part of the program.
namespace schema {

/// The one table of the system, and the one of the host that it reads.
inline const QString Zuordnungen = QStringLiteral("Bild_Zuordnungen");
inline const QString Belegkoepfe = QStringLiteral("BelegKopfZunft");
/// The view of the firm's records, which both programs read.
inline const QString Vorgaenge = QStringLiteral("Bild_Vorgaenge");

/// A column as the server's script declares it; `laenge` counts 16-bit characters, 0 for a number or
/// a date.
struct Spalte {
  QString name;
  QString typ;
  int laenge = 0;
};
/// The columns of one of the two tables or of the view, in their order.
QList<Spalte> spalten(const QString& tabelle);

/// The definitions of the columns in a CREATE TABLE statement by their names in capital letters; conditions of the
/// whole table are not understood.
QHash<QString, QString> definitionen(const QString& create_table);

/// What a run of the scripts made.
struct Angelegt {
  QStringList tabellen;
  /// Columns that a table of an older installation lacked, as "Tabelle.Spalte".
  QStringList spalten;
  QStringList indexe;
  bool nichts() const { return tabellen.isEmpty() && spalten.isEmpty() && indexe.isEmpty(); }
};

/// Makes what is missing of the table Bild_Zuordnungen (with `mit_Beispieltabellen` of the host's table as well) in the
/// database of a connect string, and an SQLite file that is missing. What stands there stays as it is, its rows too. A
/// database that had none of these tables gets Bild_Vorgaenge too, with what stands behind it; in one that has
/// assignments already an empty Bild_Vorgaenge would hide all records. Failures end with Ausgang::Datenbank.
Angelegt lege_an(const QString& verbindung, bool mit_Beispieltabellen = false);

/// Makes what is missing of a data folder's own database: the firm's records with their search and what the component
/// reads of a host. Raises what the connection raises.
void richte_Betrieb_ein(adodb::Connection& verbindung);
/// Fills those tables from the tables of an older data folder, which stand beside as "…_bisher".
void uebernimm_Betrieb(adodb::Connection& verbindung);
/// The catalogue names a Bild_Vorgaenge: a view whose own tables are missing fails as a missing one does.
bool nennt_Vorgaenge(adodb::Connection& verbindung);
/// The database has the tables for records of its own.
bool hat_eigene_Vorgaenge(adodb::Connection& verbindung);

}  // namespace schema
