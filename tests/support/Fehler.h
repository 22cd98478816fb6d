#pragma once

#include <cstdint>
#include <functional>

#include "platform/basic/Laufzeitfehler.h"

/// Number of the failure that a statement raises, 0 when it runs to its end.
inline std::int32_t Fehlernummer_von(const std::function<void()>& anweisung) {
  try {
    anweisung();
  } catch (const Laufzeitfehler& fehler) {
    return fehler.Nummer();
  }
  return 0;
}
