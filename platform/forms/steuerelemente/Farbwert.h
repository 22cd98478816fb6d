#pragma once

#include <QColor>

#include "platform/basic/Farben.h"

namespace farben {

inline QColor qt(Farbe farbe) {
  const auto anteil = [farbe](unsigned ab) { return static_cast<int>(farbe >> ab & 0xFF); };
  return QColor::fromRgb(anteil(0), anteil(8), anteil(16));
}

inline Farbe von_Qt(const QColor& c) {
  return static_cast<Farbe>(c.red() | c.green() << 8 | c.blue() << 16);
}

}  // namespace farben
