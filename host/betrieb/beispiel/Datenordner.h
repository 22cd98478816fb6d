#pragma once

#include <QString>

/// The program's own folder with its database and its picture tree. Paths of the table.
namespace datenordner {

/// There is a database in the folder.
bool eingerichtet(const QString& ordner);

/// The folder is missing or there is nothing in it but a journal.
bool ist_frei(const QString& ordner);

/// What a folder holds that is made now: the sample firm's records and pictures, or nothing, for the firm's own.
enum class Inhalt { Beispiele, Leer };

/// Makes the folder with its database and its picture tree; in that of the samples one assigned file is missing. All of
/// it is made beside the folder and takes its name when it is complete. A folder that is set up already stays, with its
/// database brought to the state of today; one that holds anything else is refused. Failures end with Abbruch, and
/// nothing is left.
void richte_ein(const QString& ordner, Inhalt inhalt = Inhalt::Beispiele);

/// Removes a folder with all that is in it, as far as it goes; nothing where it is missing.
void entferne(const QString& ordner);

/// The connect string of the folder's database, and its picture root.
QString verbindung(const QString& ordner);
QString bilder(const QString& ordner);

}  // namespace datenordner
