#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/gdiplus/jpeg/Jpegfehler.h"

/// A JPEG picture as its quantised DCT coefficients (ITU T.81), with all that a new file of it needs.
namespace jpegkoeffizienten {

/// Blocks of coefficients in rows. Memory that nobody writes to costs nothing, so a small file with a large claim is
/// cheap; all of it reads as 0 at first.
class Blockspeicher {
 public:
  /// False when the memory is not to be had.
  bool reserviere(std::size_t zeilen, std::size_t spalten) noexcept;
  /// The rows from `anfang` on, as libjpeg takes them.
  JBLOCKARRAY zeilen(std::size_t anfang) const noexcept { return zeilen_.get() + anfang; }
  JBLOCKROW zeile(std::size_t nummer) const noexcept { return zeilen_.get()[nummer]; }
  void gib_frei() noexcept { *this = {}; }

 private:
  struct Freigabe {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): from calloc
    void operator()(void* p) const noexcept { std::free(p); }
  };
  std::unique_ptr<JBLOCK, Freigabe> bloecke_;
  std::unique_ptr<JBLOCKROW, Freigabe> zeilen_;
};

using Quantisierung = std::array<std::uint16_t, DCTSIZE2>;  ///< in natural order: row by row

struct Komponentenkopf {
  int kennung = 0;
  int waagrecht = 1;  ///< sampling factors, 1 to 4
  int senkrecht = 1;
  int tabelle = 0;  ///< slot of the quantisation table, 0 to 3
  Quantisierung quantisierung{};
};

struct Komponente : Komponentenkopf {
  QSize bloecke;  ///< without those that only fill an MCU
  QSize proben;   ///< samples that belong to the picture
  JHUFF_TBL gleichstrom{};
  JHUFF_TBL wechselstrom{};
  Blockspeicher speicher;
};

/// An APPn or COM segment.
struct Marke {
  int art = 0;
  QByteArray inhalt;  ///< without the length
};

struct Inhalt {
  QSize groesse;
  J_COLOR_SPACE raum = JCS_UNKNOWN;
  int waagrecht = 1;  ///< largest sampling factors
  int senkrecht = 1;
  bool progressiv = false;
  bool arithmetisch = false;
  unsigned neustart = 0;  ///< MCUs between two restart markers, 0 for none
  std::vector<Komponente> komponenten;
  std::vector<Marke> marken;  ///< in their order
  QByteArrayView dahinter;    ///< what stands behind the end of the picture; a view of the bytes that were read
};

/// Files with more scans are refused, so that a small file can't keep a processor for minutes.
inline constexpr int Hoechstens_Scans = 200;

/// Reads all coefficients. The result is a gdiplus::Status: 0 also where the stream is truncated or damaged (what it
/// does not give is 0), 1 for a stream that can't be read on, 3 when memory runs out.
std::int32_t lies(QByteArrayView bytes, Inhalt& bild);

}  // namespace jpegkoeffizienten
