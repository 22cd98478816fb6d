#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/basic/kvo_export.h"
#include "platform/gdiplus/Bild.h"

/// The GDI+ operations that the system uses, with GDI+'s names and status numbers
/// (learn.microsoft.com, "GdiPlusTypes.h: Status enumeration").
namespace gdiplus {

enum Status : std::int32_t {
  Ok = 0,
  GenericError = 1,
  InvalidParameter = 2,
  OutOfMemory = 3,
  Win32Error = 7,
  FileNotFound = 10,
  AccessDenied = 12,
  UnknownImageFormat = 13,
  UnsupportedGdiplusVersion = 17,
  GdiplusNotInitialized = 18,
};

/// Starts a session; sessions are counted. Version 1 is the only one (17 otherwise). `token` gets a number that is not
/// 0, and keeps its value on a failure.
std::int32_t GdiplusStartup(std::int32_t& token, std::int32_t version);
/// Takes one start back, whatever its token: nested users share one variable for it and end the inner token twice. One
/// end too many is status 0 and changes nothing.
std::int32_t GdiplusShutdown(std::int32_t token);

/// An opened bitmap; null when there is none.
using Bitmap = std::shared_ptr<const Bild>;

/// Opens a picture file, from signature and header alone: 18 without a session, 10 for a missing file (a folder too),
/// 12 without the right to read, 7 for a failure of the disk, 13 for content of no known picture format, 2 for a known
/// format with a broken header, 3 for a size nobody can hold (over 2 GB of 32-bit pixels, a JPEG with a side over
/// 65500, a PNG with one over 1,000,000). Known are JPEG, PNG, GIF, BMP, TIFF and ICO; a JPEG with 12 bits to a sample,
/// a lossless one, and one that tells its height only behind its first scan count as broken. The file is closed again.
std::int32_t GdipCreateBitmapFromFile(const QString& pfad, Bitmap& bitmap);
/// Turns the bitmap into a displayable one on the given background (0 is black). 18 without a session, 2 without a
/// bitmap.
std::int32_t GdipCreateHBITMAPFromBitmap(const Bitmap& bitmap, Bitmap& handle, std::int32_t hintergrund);
/// Releases the bitmap. 18 without a session, 2 without a bitmap.
std::int32_t GdipDisposeImage(Bitmap& bitmap);

/// The platform's plain picture loader, for programs without a GDI+ session: BMP, GIF and JPEG. Raises 53 for a missing
/// file, 481 for anything that is no such picture.
std::shared_ptr<const Bild> LoadPicture(const QString& pfad);

}  // namespace gdiplus
