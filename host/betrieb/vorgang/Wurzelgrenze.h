#pragma once

#include "platform/adodb/Connection.h"
#include "store/clsBildZuordnungen.h"

/// The component's overviews look for the file of every row that they show. Where one leads out of the picture root
/// they are not opened: these end with Abbruch, Ausgang::Datei, which names the picture and its folder.
namespace wurzelgrenze {

/// Checks all rows of a collection. The cursor is on row 0 afterwards where there is one.
void pruefe_Zeilen(clsBildZuordnungen& store);
/// Checks all rows of a picture's name, whichever record they belong to.
void pruefe_Bild(adodb::Connection& verbindung, const QString& name, const QString& ext);

}  // namespace wurzelgrenze
