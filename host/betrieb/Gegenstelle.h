#pragma once

#include <QString>
#include <optional>

#include "platform/adodb/Connection.h"

/// What an open connection has reached, as the database itself says.
struct Gegenstelle {
  /// The server's name, or the path of the file.
  QString server;
  /// "Microsoft SQL Server 15.0.2000.5, Express Edition" or "SQLite 3.40.1".
  QString version;
  /// Empty on SQLite, as is the user.
  QString datenbank;
  QString benutzer;
  /// Whether this connection is encrypted; none where the database does not tell.
  std::optional<bool> verschluesselt;
  /// The same in words, with what is checked of the certificate, or with the reason where it is not known.
  QString verschluesselung;
  /// What the driver checks of the server's certificate, for scripts: "geprueft", "ohne_namen", "nicht_geprueft"; empty
  /// where nothing is encrypted or nobody knows.
  QString zertifikat;
};

/// Asks an open connection, to a file or to a server (see Datenbankart). Raises what the connection raises; a right
/// that is missing for the encryption raises nothing.
Gegenstelle gegenstelle_Datei(adodb::Connection& verbindung);
Gegenstelle gegenstelle_Server(adodb::Connection& verbindung);
