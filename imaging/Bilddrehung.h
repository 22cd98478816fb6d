#pragma once

#include <QString>
#include <cstdint>

#include "platform/basic/kvo_export.h"

/// Turning a picture file without a window.
namespace bilddrehung {

/// Writes the picture file `quelle`, transformed, as JPEG to `ziel`: 13, 14 and 15 turn clockwise by 90, 180 and 270
/// degrees, 16 mirrors left and right, 17 top and bottom. The result is a status of GDI+ (0 for success), as of
/// gdiplus::GdipLoadImageFromFile and GdipSaveImageToFile; nothing is shown.
KVO_EXPORT std::int32_t drehe(const QString& quelle, const QString& ziel, std::int32_t transform);

}  // namespace bilddrehung
