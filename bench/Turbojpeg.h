#pragma once

#include <turbojpeg.h>

#include <QByteArray>
#include <QImage>

#include "bench/Messung.h"

namespace messung {

/// The measure of all small pictures: TurboJPEG's plain decode at 1/8, of bytes that are in memory already.
inline void turbojpeg_Achtel(const QByteArray& bytes) {
  const tjhandle h = tjInitDecompress();
  const auto* const anfang = reinterpret_cast<const unsigned char*>(bytes.constData());
  const auto laenge = static_cast<unsigned long>(bytes.size());
  int breite = 0, hoehe = 0, abtastung = 0, farben = 0;
  verlange(tjDecompressHeader3(h, anfang, laenge, &breite, &hoehe, &abtastung, &farben) == 0, "TurboJPEG header");
  constexpr tjscalingfactor Achtel{1, 8};
  QImage bild(TJSCALED(breite, Achtel), TJSCALED(hoehe, Achtel), QImage::Format_RGB32);
  verlange(tjDecompress2(h, anfang, laenge, bild.bits(), bild.width(), static_cast<int>(bild.bytesPerLine()),
               bild.height(), TJPF_BGRX, 0) == 0,
      "TurboJPEG decode");
  tjDestroy(h);
}

}  // namespace messung
