#pragma once

#include "store/clsBildZuordnungen.h"

/// The statements carry all values of a row but its description as they are, without doubling a quote. An apostrophe in
/// one of them breaks the statement, widens its condition to other records (A' or '1'='1), or begins a second statement
/// on a server. Rows of other programs can hold one; ours send none of them. All end with Abbruch, Ausgang::Datenbank,
/// which names the picture, the column and its value.
namespace hochkomma {

/// Checks the eight columns that identify a row, which deleting it and asking for it put into the statement.
void pruefe_Kennung(const clsBilderSpeicher& satz);
/// Checks everything that writing a row puts into the statement as it is.
void pruefe_Zeile(const clsBilderSpeicher& satz);

/// The same of all rows of a collection. The cursor is on row 0 afterwards where there is one.
void pruefe_Zeilen(clsBildZuordnungen& store);

}  // namespace hochkomma
