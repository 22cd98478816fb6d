#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "platform/adodb/Connection.h"

/// The connect string that a user's words mean: one as it stands, or the name of a SQLite file.
QString verbindung_aus_angabe(const QString& angabe);
/// The database file of a connect string as a path of the table, or none where it names a server.
std::optional<QString> datenbankdatei(const QString& verbindung);
/// Opens a connection for reading; a failure ends with Ausgang::Datenbank and words.
std::shared_ptr<adodb::Connection> oeffne(const QString& verbindung);

/// A text as a literal of a statement.
QString literal(QString text);
