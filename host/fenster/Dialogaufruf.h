#pragma once

#include "host/fenster/Zuordnungslauf.h"

namespace dialogaufruf {

/// The component's own dialog.
Zuordnungsdialog der_Komponente();

}  // namespace dialogaufruf
