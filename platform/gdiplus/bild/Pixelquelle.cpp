#include "platform/gdiplus/bild/Pixelquelle.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/bild/Bilddekoder.h"

Pixelquelle::Pixelquelle(QString pfad, Schluessel schluessel, const Bildkopf& kopf)
    : pfad_(std::move(pfad)), schluessel_(std::move(schluessel)), kopf_(kopf) {}

bool Pixelquelle::ist_zu_merken(QSize ziel, QRgb hintergrund) const noexcept {
  return schluessel_ && flaeche(ziel) < flaeche(kopf_.groesse) && (hintergrund & RGB_MASK) == 0;
}

QList<QImage> Pixelquelle::gemerkte() const {
  const auto eintrag = schluessel_ ? Bildspeicher::aktuell().suche(*schluessel_) : std::nullopt;
  return eintrag ? eintrag->reduzierte : QList<QImage>();
}

namespace {

QImage von_Groesse(const QList<QImage>& alle, QSize ziel) {
  const auto b = std::ranges::find(alle, ziel, &QImage::size);
  return b == alle.cend() ? QImage() : *b;
}

QImage groesstes(const QList<QImage>& alle) {
  const auto b = std::ranges::max_element(alle, {}, [](const QImage& x) { return flaeche(x.size()); });
  return b == alle.cend() ? QImage() : *b;
}

// The smallest that are at least twice as wide and high: scaling them down loses nothing that shows.
QImage groesseres(const QList<QImage>& alle, QSize ziel) {
  QImage beste;
  for (const QImage& x : alle)
    if (x.width() >= 2 * ziel.width() && x.height() >= 2 * ziel.height())
      if (beste.isNull() || flaeche(x.size()) < flaeche(beste.size())) beste = x;
  return beste;
}

// The content of one state of a picture file. Usually it is the compressed bytes, taken when the file was opened. Where
// the cache knew that state, it is the reduced pixels; the bytes are then only read when another size is asked for, and
// only while the file is still in that state. When it no longer is, the largest of those pixels serve: coarser than the
// file was, but never another picture.
class GehaltenePixel final : public Pixelquelle {
 public:
  GehaltenePixel(QString pfad, Schluessel schluessel, const Bildkopf& kopf, QByteArray bytes, QList<QImage> reduzierte)
      : Pixelquelle(std::move(pfad), std::move(schluessel), kopf),
        bytes_(std::move(bytes)),
        reduzierte_(std::move(reduzierte)) {}

  QImage bild(QSize ziel, QRgb hintergrund) override {
    const std::scoped_lock halten(sperre_);
    const bool merken = ist_zu_merken(ziel, hintergrund);
    if (merken) {
      if (const QImage eigenes = von_Groesse(reduzierte_, ziel); !eigenes.isNull()) return eigenes;
      if (const QImage gemerkt = von_Groesse(gemerkte(), ziel); !gemerkt.isNull()) return gemerkt;
    }
    if (bytes_.isNull() && !lies_nach()) return bilddekoder::auf_Groesse(groesstes(reduzierte_), ziel);
    const QImage neu = bilddekoder::lies(kopf(), bytes_, ziel, hintergrund);
    if (merken && !neu.isNull()) Bildspeicher::aktuell().merke(*schluessel_, kopf(), neu);
    return neu;
  }

 private:
  bool lies_nach() {
    return fehler::still_enden([&] {
      QByteArray bytes = dateien::lies_alles(pfad_);
      bildbefund::urteile(bytes);
      if (dateien::kennung(pfad_) != schluessel_->kennung) return false;
      bytes_ = std::move(bytes);
      return true;
    });
  }

  std::mutex sperre_;
  QByteArray bytes_;
  const QList<QImage> reduzierte_;
};

// Nothing but the path, the header and the key. Reduced pixels are looked up in the cache and not held beside it, so
// that its bound holds for any number of such pictures.
class UngelesenePixel final : public Pixelquelle {
 public:
  UngelesenePixel(QString pfad, Schluessel schluessel, const Bildkopf& kopf)
      : Pixelquelle(std::move(pfad), std::move(schluessel), kopf) {}

  QImage bild(QSize ziel, QRgb hintergrund) override {
    const bool merken = ist_zu_merken(ziel, hintergrund);
    if (merken) {
      const QList<QImage> alle = gemerkte();
      if (const QImage gemerkt = von_Groesse(alle, ziel); !gemerkt.isNull()) return gemerkt;
      // Often a thumbnail of the picture that the window shows large beside it: its pixels spare reading the file.
      if (const QImage groesser = groesseres(alle, ziel); !groesser.isNull()) {
        const QImage neu = bilddekoder::auf_Groesse(groesser, ziel);
        Bildspeicher::aktuell().merke(*schluessel_, kopf(), neu);
        return neu;
      }
    }
    const Inhalt inhalt = fehler::still_enden([&] { return lies(); });
    if (inhalt.bytes.isNull()) return bilddekoder::auf_Groesse(groesstes(gemerkte()), ziel);
    const QImage neu = bilddekoder::lies(inhalt.kopf, inhalt.bytes, ziel, hintergrund);
    if (merken && inhalt.unveraendert && !neu.isNull()) Bildspeicher::aktuell().merke(*schluessel_, inhalt.kopf, neu);
    return neu;
  }

 private:
  struct Inhalt {
    QByteArray bytes;  ///< null where there is no picture
    Bildkopf kopf;
    bool unveraendert = false;  ///< surely still what was opened
  };

  // The header is read with the bytes, so that both are of one state, whichever it is.
  Inhalt lies() const {
    Inhalt inhalt{dateien::lies_alles(pfad_), {}, false};
    const bildbefund::Befund befund = bildbefund::urteile(inhalt.bytes);
    if (befund.status != gdiplus::Ok) return {};
    inhalt.kopf = befund.kopf;
    inhalt.unveraendert = schluessel_ && dateien::kennung(pfad_) == schluessel_->kennung;
    return inhalt;
  }
};

}  // namespace

std::shared_ptr<Pixelquelle> gehaltene_Pixel(QString pfad, Pixelquelle::Schluessel schluessel, const Bildkopf& kopf,
    QByteArray bytes, QList<QImage> reduzierte) {
  return std::make_shared<GehaltenePixel>(
      std::move(pfad), std::move(schluessel), kopf, std::move(bytes), std::move(reduzierte));
}

std::shared_ptr<Pixelquelle> ungelesene_Pixel(QString pfad, Pixelquelle::Schluessel schluessel, const Bildkopf& kopf) {
  return std::make_shared<UngelesenePixel>(std::move(pfad), std::move(schluessel), kopf);
}
