#pragma once

#include "component/weg/Posten.h"
#include "component/weg/Verbindungen.h"

namespace weg {

/// Saves a collection: writes, checks against the table, mends, and asks the user whether to try again for as long as
/// something waits. What waits stays flagged in the collection. What became of each picture is added to `ergebnis`.
void speichere(
    clsBildZuordnungen& bilder, Verbindungen& verbindungen, const Auftrag& auftrag, Zuordnungsweg::Ergebnis& ergebnis);

}  // namespace weg
