#pragma once

#include <gtest/gtest.h>

#include "exif/clsExifInfo.h"

/// Reaches the routine that nothing in the system calls yet.
class ExifInfoPruefer {
 public:
  /// Reads one directory at a position of the file as a maker note's.
  static void lies(clsExifInfo& info, const QString& pfad, std::int32_t position) {
    info.Read_File_Bytes(pfad);
    ASSERT_TRUE(info.Find_Exif_Segment());
    info.Read_MakerNote_Ifd(position);
  }
  static QString Pad_Left(const QString& text, qsizetype laenge, QChar zeichen) {
    return clsExifInfo::Pad_Left(text, laenge, zeichen);
  }
};
