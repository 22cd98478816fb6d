#pragma once

#include "platform/basic/kvo_export.h"

/// The services of platform/host as a program with windows has them: message boxes, mouse pointer, event pump, core
/// component and folder choice.
namespace fensterdienste {

/// Puts them in force for the process, and with them the toolkit's German texts where they are installed. To be called
/// on the GUI thread, once the QApplication is there; calling it again is harmless. What a host has of its own it sets
/// afterwards; a "KVOCore.KVFileFunctions" that is registered already stays.
KVO_EXPORT void richte_ein();

}  // namespace fensterdienste
