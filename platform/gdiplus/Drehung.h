#pragma once

#include <QSize>
#include <QStringView>
#include <optional>

#include "platform/gdiplus/Drehart.h"

/// A turn or mirroring of a picture: first the axes change places, then the new ones are mirrored.
struct Drehung {
  /// What GDI+ calls it: "JpgTransformRotate90", "…Rotate180", "…Rotate270", "…FlipHorizontal", "…FlipVertical".
  QStringView name;
  gdiplus::Drehart art;
  bool tausche = false;
  bool spiegle_x = false;  ///< left and right of the result
  bool spiegle_y = false;  ///< top and bottom of the result

  /// None for a number that is no gdiplus::Drehart.
  static std::optional<Drehung> von(std::int32_t nummer) noexcept;
  /// None for another name; case of letters counts.
  static std::optional<Drehung> mit_Namen(QStringView name) noexcept;

  QSize auf(QSize groesse) const { return tausche ? groesse.transposed() : groesse; }
  /// The axis of the source that is mirrored.
  bool quelle_x() const noexcept { return tausche ? spiegle_y : spiegle_x; }
  bool quelle_y() const noexcept { return tausche ? spiegle_x : spiegle_y; }
};
