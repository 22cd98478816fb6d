#pragma once

#include <QImage>
#include <QList>
#include <QSize>

#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/bild/Bildspeicher.h"

/// Reduced pixels out of others, and which are worth keeping.
namespace reduktion {

/// Only what is smaller than the picture itself is worth keeping.
inline bool ist_verkleinert(const Bildkopf& kopf, QSize ziel) noexcept {
  return !ziel.isEmpty() && flaeche(ziel) < flaeche(kopf.groesse);
}

/// Those of exactly that size, or null.
QImage von_Groesse(const QList<QImage>& alle, QSize ziel);
/// The largest, or null.
QImage groesstes(const QList<QImage>& alle);

/// What the cache has of exactly that size, or null. With `auch_aus_Groesserem` also scaled down from pixels at least
/// twice as wide and high, which loses nothing that shows; the cache has them from then on.
QImage vorhanden(
    const Bildspeicher::Schluessel& schluessel, const Bildkopf& kopf, QSize ziel, bool auch_aus_Groesserem);

/// The cache has them from now on, and the desktop's an entry to scale them down from; where nothing could be decoded,
/// the desktop's is told that. `pixel` come from `entpackt`, and that from `bytes` of the key's state. `im_Vorlauf`: on
/// a thread that nobody waits for by himself.
void merke(const Bildspeicher::Schluessel& schluessel, const Bildkopf& kopf, const QByteArray& bytes,
    const QImage& entpackt, const QImage& pixel, bool im_Vorlauf);

}  // namespace reduktion
