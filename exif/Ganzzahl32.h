#pragma once

#include <cstdint>

#include "platform/basic/Variant.h"

/// Signed 32-bit arithmetic in which an overflow is a failure.
namespace ganzzahl32 {

/// A sum or product as a 32-bit number. Raises 6 when it is none.
std::int32_t pruefe(std::int64_t zahl);

/// The number of an entry's value: Empty is 0, a number is itself, a text of decimal digits alone the number they
/// write ("00000010" is ten). Raises 6 for digits beyond 32 bits and 13 for anything else, blanks, signs and exponents
/// among it.
std::int32_t aus_Wert(const Variant& wert);

}  // namespace ganzzahl32
