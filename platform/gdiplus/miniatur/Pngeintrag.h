#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>

#include "platform/gdiplus/miniatur/Angaben.h"

/// The file of an entry: a PNG of 8 bits and three colours without interlacing (W3C PNG), its texts (tEXt) before its
/// pixels, and no other chunks. Only what is built like that is read, so that a foreign file gets no further than here.
namespace miniatur {

struct Pngkopf {
  QSize groesse;
  Texte texte;
  qsizetype pixel_ab = 0;  ///< position of the first chunk with pixels
};

enum class Lesestand { Ok, ZuKurz, Kaputt };

/// Reads header and texts from the start of a file; ZuKurz where they go on behind it.
Lesestand lies_Pngkopf(QByteArrayView anfang, Pngkopf& kopf);

/// So many bytes from the start hold header and texts of any entry.
inline constexpr qsizetype Laengster_Pngkopf = qsizetype{64} * 1024;

/// The pixels of a whole file as RGB32; null where anything of them is missing or wrong.
QImage lies_Pixel(const QByteArray& alle, const Pngkopf& kopf);

/// An entry's file; empty when it can't be made.
QByteArray als_Png(const QImage& pixel, const Texte& texte);

}  // namespace miniatur
