#pragma once

#include <cstdint>

namespace gdiplus {

/// GDI+'s status numbers (learn.microsoft.com, "GdiPlusTypes.h: Status enumeration").
enum Status : std::int32_t {
  Ok = 0,
  GenericError = 1,
  InvalidParameter = 2,
  OutOfMemory = 3,
  ObjectBusy = 4,
  InsufficientBuffer = 5,
  NotImplemented = 6,
  Win32Error = 7,
  WrongState = 8,
  Aborted = 9,
  FileNotFound = 10,
  ValueOverflow = 11,
  AccessDenied = 12,
  UnknownImageFormat = 13,
  FontFamilyNotFound = 14,
  FontStyleNotFound = 15,
  NotTrueTypeFont = 16,
  UnsupportedGdiplusVersion = 17,
  GdiplusNotInitialized = 18,
  PropertyNotFound = 19,
  PropertyNotSupported = 20,
};

/// The status that stands for a Laufzeitfehler of that number, raised while a file was read or written.
std::int32_t status_beim_Lesen(std::int32_t nummer) noexcept;
std::int32_t status_beim_Schreiben(std::int32_t nummer) noexcept;

}  // namespace gdiplus
