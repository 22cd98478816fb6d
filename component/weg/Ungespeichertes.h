#pragma once

#include "component/Zuordnungsweg.h"

/// What a dialog leaves that closed although its changes were not saved and the user did not refuse to save them.
namespace weg::ungespeichertes {

/// Tells it to the user, by picture. True when the dialog is to be opened again with it, over the same collection.
bool soll_wieder_oeffnen(clsBildZuordnungen& bilder);
/// Adds to the result what the user left unsaved after all.
void trage_ein(clsBildZuordnungen& bilder, Zuordnungsweg::Ergebnis& ergebnis);

}  // namespace weg::ungespeichertes
