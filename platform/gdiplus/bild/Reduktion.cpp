#include "platform/gdiplus/bild/Reduktion.h"

#include <algorithm>

#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"

namespace reduktion {
namespace {

// The smallest that are at least twice as wide and high.
QImage groesseres(const QList<QImage>& alle, QSize ziel) {
  QImage beste;
  for (const QImage& x : alle)
    if (x.width() >= 2 * ziel.width() && x.height() >= 2 * ziel.height())
      if (beste.isNull() || flaeche(x.size()) < flaeche(beste.size())) beste = x;
  return beste;
}

}  // namespace

QImage von_Groesse(const QList<QImage>& alle, QSize ziel) {
  const auto b = std::ranges::find(alle, ziel, &QImage::size);
  return b == alle.cend() ? QImage() : *b;
}

QImage groesstes(const QList<QImage>& alle) {
  const auto b = std::ranges::max_element(alle, {}, [](const QImage& x) { return flaeche(x.size()); });
  return b == alle.cend() ? QImage() : *b;
}

// Often a thumbnail of the picture that the window shows large beside it: its pixels spare reading the file.
QImage vorhanden(
    const Bildspeicher::Schluessel& schluessel, const Bildkopf& kopf, QSize ziel, bool auch_aus_Groesserem) {
  const auto eintrag = Bildspeicher::aktuell().suche(schluessel);
  if (!eintrag) return {};
  if (QImage gemerkt = von_Groesse(eintrag->reduzierte, ziel); !gemerkt.isNull()) return gemerkt;
  const QImage quelle = auch_aus_Groesserem ? groesseres(eintrag->reduzierte, ziel) : QImage();
  if (quelle.isNull()) return {};
  QImage neu = bilddekoder::auf_Groesse(quelle, ziel);
  Bildspeicher::aktuell().merke(schluessel, kopf, neu);
  return neu;
}

void merke(const Bildspeicher::Schluessel& schluessel, const Bildkopf& kopf, const QByteArray& bytes,
    const QImage& entpackt, const QImage& pixel, bool im_Vorlauf) {
  using dauerspeicher::Andrang;
  if (pixel.isNull()) return dauerspeicher::behalte_Fehlschlag(schluessel, gdiplus::Ok, kopf);
  Bildspeicher::aktuell().merke(schluessel, kopf, pixel);
  dauerspeicher::behalte(
      schluessel, kopf, bytes, entpackt, pixel.size(), im_Vorlauf ? Andrang::Schreibe_sofort : Andrang::Verzichte);
}

}  // namespace reduktion
