#pragma once

#include <QSize>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"

/// A turn or mirroring of a picture: first the axes change places, then the new ones are mirrored.
struct Drehung {
  bool tausche = false;
  bool spiegle_x = false;  ///< left and right of the result
  bool spiegle_y = false;  ///< top and bottom of the result

  /// The transforms of GDI+: 13, 14 and 15 turn clockwise by 90, 180 and 270 degrees, 16 mirrors left and right, 17 top
  /// and bottom. None for other numbers.
  static std::optional<Drehung> von(std::int32_t wert) noexcept;

  QSize auf(QSize groesse) const { return tausche ? groesse.transposed() : groesse; }
  /// The axis of the source that is mirrored.
  bool quelle_x() const noexcept { return tausche ? spiegle_y : spiegle_x; }
  bool quelle_y() const noexcept { return tausche ? spiegle_x : spiegle_y; }
};

namespace blockdrehung {

/// Rows of blocks of a component as the compressor takes them from the top down, once for each pass.
class Zeilen {
 public:
  virtual ~Zeilen() = default;
  /// Rows that lie together; good until the next call.
  virtual JBLOCKARRAY zeilen(JDIMENSION anfang) noexcept = 0;
};

/// The blocks of a component, turned without any loss: in the frequencies a turn exchanges rows and columns and
/// changes signs. They are turned when they are asked for, so that there never is a second copy of the picture.
class Gedreht final : public Zeilen {
 public:
  /// `quelle` must live on. The rows asked for at a time are `je_Zugriff`.
  Gedreht(const jpegkoeffizienten::Komponente& quelle, const Drehung& drehung, int je_Zugriff);
  JBLOCKARRAY zeilen(JDIMENSION anfang) noexcept override;

 private:
  void fuelle(std::size_t anfang, std::size_t anzahl) noexcept;

  const jpegkoeffizienten::Komponente& quelle_;
  const Drehung drehung_;
  const QSize bloecke_;
  const std::size_t hoehe_;  ///< rows of the band that is held
  std::size_t anfang_ = 0;
  bool gefuellt_ = false;
  jpegkoeffizienten::Blockspeicher band_;
};

/// Blocks that are there already.
class Fertig final : public Zeilen {
 public:
  explicit Fertig(jpegkoeffizienten::Blockspeicher bloecke) : bloecke_(std::move(bloecke)) {}
  JBLOCKARRAY zeilen(JDIMENSION anfang) noexcept override { return bloecke_.zeilen(anfang); }

 private:
  jpegkoeffizienten::Blockspeicher bloecke_;
};

/// One block turned; coefficients that no file of 8 bits can hold, as only a broken stream has them, become the nearest
/// that it can.
void drehe(const JCOEF* von, JCOEF* nach, const Drehung& drehung) noexcept;

}  // namespace blockdrehung
