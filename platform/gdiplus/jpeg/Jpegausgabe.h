#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/gdiplus/jpeg/Blockdrehung.h"
#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"

/// Writes JPEG streams into memory.
namespace jpegausgabe {

struct Komponente : jpegkoeffizienten::Komponentenkopf {
  const JHUFF_TBL* gleichstrom = nullptr;  ///< of the source
  const JHUFF_TBL* wechselstrom = nullptr;
  std::unique_ptr<blockdrehung::Zeilen> zeilen;
};

struct Auftrag {
  QSize groesse;
  J_COLOR_SPACE raum = JCS_UNKNOWN;
  bool progressiv = false;
  /// Huffman tables made for this picture. Without it the standard's tables serve (ITU T.81 annex K), unless the source
  /// had others.
  bool optimiert = false;
  unsigned neustart = 0;
  std::vector<Komponente> komponenten;
  const std::vector<jpegkoeffizienten::Marke>* marken = nullptr;  ///< written as they are, nothing else beside them
  qsizetype geschaetzt = 0;                                       ///< bytes that the stream may take
  QByteArrayView dahinter;                                        ///< goes behind the end
};

/// The result is a gdiplus::Status: 0, 1 for coefficients that no stream can hold, 3 when memory runs out.
std::int32_t schreibe(const Auftrag& auftrag, QByteArray& bytes);

/// A stream can have sides of that length.
bool fasst(QSize groesse) noexcept;

/// Codes pixels with GDI+'s own quality of 75 and 4:2:0. The image is RGB32.
std::int32_t kodiere(const QImage& bild, QByteArray& bytes);

}  // namespace jpegausgabe
