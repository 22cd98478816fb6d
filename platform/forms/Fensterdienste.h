#pragma once

#include "platform/basic/kvo_export.h"

/// The services of platform/host as a program with windows has them: message boxes, mouse pointer and event pump.
namespace fensterdienste {

/// Puts them in force for the process. To be called on the GUI thread, once the QApplication is there.
KVO_EXPORT void richte_ein();

}  // namespace fensterdienste
