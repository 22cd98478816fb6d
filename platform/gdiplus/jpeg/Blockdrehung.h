#pragma once

#include <QSize>

#include "platform/gdiplus/Drehung.h"
#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"

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
