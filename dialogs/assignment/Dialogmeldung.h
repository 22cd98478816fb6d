#pragma once

#include "platform/basic/Laufzeitfehler.h"

/// How the entry points tell a failure.
namespace dialogmeldung {

/// Hands a failure of the entry point of that name to the central error report.
void melde(const char16_t* prozedur, const Laufzeitfehler& fehler);

}  // namespace dialogmeldung
