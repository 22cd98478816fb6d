#pragma once

#include <QString>
#include <cstdint>

#include "platform/basic/kvo_export.h"
#include "platform/gdiplus/Drehart.h"  // IWYU pragma: export

/// Turning and judging a picture file without a window.
namespace bilddrehung {

/// Writes the picture file `quelle`, transformed, as JPEG to `ziel`; `transform` is a gdiplus::Drehart. The result is a
/// status of GDI+ (0 for success), as of gdiplus::GdipLoadImageFromFile and GdipSaveImageToFile; nothing is shown.
KVO_EXPORT std::int32_t drehe(const QString& quelle, const QString& ziel, std::int32_t transform);

/// The status with which that file opens as a picture, from signature and header alone; as of
/// gdiplus::GdipCreateBitmapFromFile.
KVO_EXPORT std::int32_t pruefe(const QString& datei);

}  // namespace bilddrehung
