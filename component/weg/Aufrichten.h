#pragma once

#include "component/Zuordnungsweg.h"
#include "component/weg/Posten.h"
#include "component/weg/Verbindungen.h"

namespace weg {

/// Sets upright the copies that the dialog of this collection, or the save after it, has made for new pictures, and
/// whose rows are stored: never a source, never a file that another row names too or that is not the copy any more.
/// What could not be turned stays as it came; `ergebnis` then has the words, and the user is told them.
void richte_Kopien_auf(clsBildZuordnungen& bilder, const Verbindungen& verbindungen, const Auftrag& auftrag,
    Zuordnungsweg::Ergebnis& ergebnis);

}  // namespace weg
