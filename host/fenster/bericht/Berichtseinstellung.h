#pragma once

#include "host/bericht/Berichtswahl.h"

/// What the user chose for picture reports, kept beside the places of the program's windows.
namespace berichtseinstellung {

/// The last choice; of what was never chosen, or can't be, the usual one.
Berichtswahl wahl();
void wahl(const Berichtswahl& wert);

}  // namespace berichtseinstellung
