#pragma once

#include <QColor>

#include "platform/basic/Farben.h"

namespace farben {

inline QColor qt(Farbe farbe) {
  return QColor::fromRgb(farbe & 0xFF, farbe >> 8 & 0xFF, farbe >> 16 & 0xFF);
}

inline Farbe von_Qt(const QColor& c) {
  return static_cast<Farbe>(c.red() | c.green() << 8 | c.blue() << 16);
}

}  // namespace farben
