#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "host/betrieb/Ausgang.h"
#include "platform/adodb/Connection.h"
#include "platform/basic/Laufzeitfehler.h"

/// The connect string of a SQLite file.
QString verbindung_zur_Datei(const QString& datei);
/// The connect string that a user's words mean: one as it stands, or the name of a SQLite file.
QString verbindung_aus_Angabe(const QString& angabe);
/// The database file of a connect string as a path of the table, or none where it names a server.
std::optional<QString> datenbankdatei(const QString& verbindung);
/// What a failure of the database comes from, as far as its numbers tell.
/// `Angaben`: the connect string can't be honoured. `Neuer`: a later version of the program has made the tables.
enum class Datenbankgrund { Anderer, Unerreichbar, Angaben, Anmeldung, Tabelle_fehlt, Recht_fehlt, Neuer };

/// A failure of the database and its words for the user.
struct Datenbankausfall {
  Datenbankgrund grund = Datenbankgrund::Anderer;
  QString worte;
};
Datenbankausfall ausfall_von(const Laufzeitfehler& fehler);

/// Runs what may fail at the database and gives the failure, or none.
template <class Anweisung>
std::optional<Datenbankausfall> versuche_Datenbank(Anweisung&& anweisung) {
  return versuche(anweisung, ausfall_von);
}

/// Marks a file with tables that are made here as one of this program's, with the version of these tables
/// (sqlite.org, "The Database File Format", application ID and user version). Harmless when it is marked.
void kennzeichne(adodb::Connection& verbindung);

/// As `oeffne`, for callers that need the reason of a failure. None means that `offene` is open.
std::optional<Datenbankausfall> versuche_zu_oeffnen(
    const QString& verbindung, std::shared_ptr<adodb::Connection>& offene);
/// Opens a connection for reading; a failure ends with Ausgang::Datenbank and words.
std::shared_ptr<adodb::Connection> oeffne(const QString& verbindung);

/// A text as a literal of a statement.
QString literal(QString text);
