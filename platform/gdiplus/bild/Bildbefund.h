#pragma once

#include <QByteArray>
#include <cstdint>

#include "platform/gdiplus/bild/Bildkopf.h"

class Binaerdatei;

/// What signature and header say about a picture file, as a gdiplus::Status.
namespace bildbefund {

struct Befund {
  std::int32_t status = 0;
  Bildkopf kopf;
};

/// Judges a whole file. The bytes then have everything in front that a decoder wants to find there.
Befund urteile(QByteArray& alle);

/// The same finding from no more of the file than it takes: first 64 KB, then four times as much, until the header is
/// complete; of a TIFF the directory, wherever it stands. A broken header never is complete, and the directory of an
/// icon may lead anywhere: such files are read whole.
/// Failures of reading as Binaerdatei's.
Befund urteile_nach_Anfang(const Binaerdatei& datei);

/// Reads a whole file and judges it. What is no picture may be large: it is not read. `bytes` may bring room along,
/// which is then used.
Befund lies_und_urteile(const Binaerdatei& datei, QByteArray& bytes);

}  // namespace bildbefund
