#pragma once

#include "host/betrieb/vorgang/Zuordnungslauf.h"
#include "platform/adodb/Connection.h"
#include "store/clsBildZuordnungen.h"

/// Tells the user, before assignments are removed, by how many other records their pictures are used.
namespace entfernungsfrage {

/// Asks where there is something to say. False where the user keeps them; without a question it is true.
bool bejaht(adodb::Connection& verbindung, clsBildZuordnungen& bilder);

/// The dialog with that question behind it, before anything is written; what the user keeps is not marked any more.
/// Without a `dialog` it is the component's own.
Zuordnungsdialog hinter(Zuordnungsdialog dialog);

}  // namespace entfernungsfrage
