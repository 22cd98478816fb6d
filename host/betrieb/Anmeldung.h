#pragma once

#include <QString>

/// The login in a connect string: what may be shown and kept of it, and the password that may not.
namespace anmeldung {

/// What a user is told of a connection; empty where the connect string does not say it.
struct Worte {
  QString server;
  QString datenbank;
  QString benutzer;
};
/// A value that may hold a password's rest, after a forgotten semicolon, is left out.
Worte worte(const QString& verbindung);

/// It names a password, if an empty one, or holds something that may be one.
bool nennt_Kennwort(const QString& verbindung);
/// It names a server and a user, but no password anywhere. False for SQLite, for the system's own login, and for a text
/// that is no connect string.
bool fehlt_Kennwort(const QString& verbindung);
/// The same connection with that password.
QString mit_Kennwort(const QString& verbindung, const QString& kennwort);
/// The same with the password of the environment variable KVOBILD_KENNWORT, where that is set and the string has none.
QString mit_Kennwort_der_Umgebung(const QString& verbindung);
/// The connect string without its password, to be kept; an SQLite file with its whole path. Empty where the rest might
/// still hold one.
QString zum_Merken(const QString& verbindung);

/// A text for a message, cut where a password begins.
QString ohne_Geheimnis(const QString& text);

}  // namespace anmeldung
