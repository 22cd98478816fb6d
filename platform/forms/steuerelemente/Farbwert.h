#pragma once

#include <QColor>

#include "platform/basic/Farben.h"

namespace farben {

inline QColor qt(Farbe farbe) {
  const auto byte = [&](unsigned stelle) { return static_cast<int>((farbe >> stelle) & 0xFFU); };
  return QColor(byte(0), byte(8), byte(16));
}

}  // namespace farben
