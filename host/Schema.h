#pragma once

#include <QString>
#include <QStringList>

/// The tables of the embedded database; their texts are part of the program.
namespace schema {

/// Makes the table Bild_Zuordnungen in the database of a connect string, and the database's file where it is missing.
/// False when the table stood there already; it is left as it is then. Failures end with Ausgang::Datenbank.
bool lege_an(const QString& verbindung);

/// The statements that make the tables of a host that the component reads.
QStringList wirtstabellen();

}  // namespace schema
