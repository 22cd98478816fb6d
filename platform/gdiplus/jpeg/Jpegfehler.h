#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio>

// jpeglib.h wants size_t and FILE to be declared before it.
#include <jerror.h>
#include <jpeglib.h>

/// libjpeg leaves by a jump. Nothing with a destructor may live between the place of return and the calls, so whoever
/// calls it keeps everything in members. An exception must not pass through the frames of a C library either.
namespace jpegfehler {

/// To be the `err` of a libjpeg structure; `rueckkehr` is set by setjmp before each group of calls.
struct Fehlerziel {
  jpeg_error_mgr verwaltung;  // first, so that the library's pointer is this structure's
  std::jmp_buf rueckkehr;
  /// Rows of blocks in the first scan that are damaged or missing.
  unsigned defekte_Reihen = 0;
  /// Number of the first row that was not judged yet.
  unsigned naechste_Reihe = 0;
};

/// Errors jump, warnings are counted and nothing is printed: a truncated picture shows what it holds.
jpeg_error_mgr* richte_ein(Fehlerziel& ziel) noexcept;

/// The last error as a gdiplus::Status: 3 when memory runs out, otherwise 1.
std::int32_t status(const Fehlerziel& ziel) noexcept;

/// Ends the library's call with an error of that kind (a JERR number).
[[noreturn]] void brich_ab(j_common_ptr cinfo, int art);

}  // namespace jpegfehler
