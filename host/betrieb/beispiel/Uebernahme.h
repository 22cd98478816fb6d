#pragma once

#include <QString>

/// Brings the database of a data folder of an older program into its tables of today.
namespace uebernahme {

/// The database has tables of an older program only. False where it can't be opened.
bool noetig(const QString& ordner);

/// Nothing where that is done already. Otherwise the file as it was is kept beside it ("betrieb-vorher.db", with a
/// number where that is taken), and all of it happens in one transaction. The user is told of rows that the tables of
/// today do not take. A database that may not be written stays as
/// it is. Any other failure ends with Abbruch and words, and the database is as before.
void bringe_auf_Stand(const QString& ordner);

}  // namespace uebernahme
