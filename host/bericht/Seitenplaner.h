#pragma once

#include "host/bericht/Bericht.h"
#include "host/bericht/Berichtswahl.h"
#include "host/bericht/Seitenplan.h"

namespace seitenplan {

/// Lays a report out on pages. `zeichen` is the size of the firm's mark in any unit, empty for none. Needs a
/// QGuiApplication for the measures of letters. There is one page at least.
Seitenplan plane(const Bericht& bericht, int je_Seite, QSizeF zeichen = {});

}  // namespace seitenplan
