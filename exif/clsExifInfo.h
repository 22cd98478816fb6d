#pragma once

#include <QString>
#include <cstdint>
#include <variant>
#include <vector>

#include "platform/basic/Variant.h"
#include "platform/basic/kvo_export.h"

/// One directory entry as it was read.
struct Exif_Entry {
  std::int32_t Tag_Id = 0;
  bool Is_MakerNote = false;
  std::int32_t Format_Code = 0;
  std::int32_t Item_Count = 0;
  /// Relative to the TIFF header; 0 where the value stood in the entry itself.
  std::int32_t Data_Offset = 0;
  /// Empty, a 32-bit number or a text.
  Variant Value;
};
