#pragma once

#include <cstdint>

namespace gdiplus {

/// Those of GDI+'s status numbers that come up here (learn.microsoft.com, "GdiPlusTypes.h: Status enumeration").
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

/// The status that stands for a Laufzeitfehler of that number, raised while a file was read or written.
std::int32_t status_beim_Lesen(std::int32_t nummer) noexcept;
std::int32_t status_beim_Schreiben(std::int32_t nummer) noexcept;

}  // namespace gdiplus
