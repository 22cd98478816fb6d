#include "platform/gdiplus/bild/Pixelquelle.h"

#include <mutex>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"
#include "platform/gdiplus/bild/Reduktion.h"
#include "platform/gdiplus/vorlauf/Inarbeit.h"

Pixelquelle::Pixelquelle(QString pfad, Schluessel schluessel, const Bildkopf& kopf)
    : pfad_(std::move(pfad)), schluessel_(std::move(schluessel)), kopf_(kopf) {}

bool Pixelquelle::ist_zu_merken(QSize ziel, QRgb hintergrund) const noexcept {
  return schluessel_ && reduktion::ist_verkleinert(kopf_, ziel) && (hintergrund & RGB_MASK) == 0;
}

QList<QImage> Pixelquelle::gemerkte() const {
  const auto eintrag = schluessel_ ? Bildspeicher::aktuell().suche(*schluessel_) : std::nullopt;
  return eintrag ? eintrag->reduzierte : QList<QImage>();
}

QImage Pixelquelle::gemerkt_oder(QSize ziel, bool auch_aus_Groesserem, const std::function<Neues()>& mache) const {
  const auto gemerkt = [&] { return reduktion::vorhanden(*schluessel_, kopf_, ziel, auch_aus_Groesserem); };
  if (QImage pixel = gemerkt(); !pixel.isNull()) return pixel;
  // Another thread may be about to put them there.
  const inarbeit::Marke allein = inarbeit::warte(schluessel_->pfad);
  if (QImage pixel = gemerkt(); !pixel.isNull()) return pixel;
  if (QImage pixel = dauerspeicher::suche(*schluessel_, kopf_, ziel); !pixel.isNull()) return pixel;
  if (dauerspeicher::gibt_nichts_her(*schluessel_)) return {};
  const Neues neu = mache();
  QImage pixel = bilddekoder::auf_Groesse(neu.entpackt, ziel);
  if (!neu.bytes.isNull()) reduktion::merke(*schluessel_, neu.kopf, neu.bytes, neu.entpackt, pixel, false);
  return pixel;
}

namespace {

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

  QByteArray bytes() override {
    const std::scoped_lock halten(sperre_);
    return bytes_;
  }

  QImage bild(QSize ziel, QRgb hintergrund) override {
    const std::scoped_lock halten(sperre_);
    if (!ist_zu_merken(ziel, hintergrund)) return bilddekoder::auf_Groesse(aus_Datei(ziel, hintergrund).entpackt, ziel);
    if (const QImage eigenes = reduktion::von_Groesse(reduzierte_, ziel); !eigenes.isNull()) return eigenes;
    return gemerkt_oder(ziel, false, [&] { return aus_Datei(ziel, hintergrund); });
  }

 private:
  Neues aus_Datei(QSize ziel, QRgb hintergrund) {
    if (bytes_.isNull() && !lies_nach()) return {reduktion::groesstes(reduzierte_), kopf(), {}};
    return {bilddekoder::entpacke(kopf(), bytes_, ziel, hintergrund), kopf(), bytes_};
  }

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
    if (!ist_zu_merken(ziel, hintergrund)) return bilddekoder::auf_Groesse(aus_Datei(ziel, hintergrund).entpackt, ziel);
    return gemerkt_oder(ziel, true, [&] { return aus_Datei(ziel, hintergrund); });
  }

 private:
  struct Inhalt {
    QByteArray bytes;  ///< null where there is no picture
    Bildkopf kopf;
    bool unveraendert = false;  ///< surely still what was opened
  };

  Neues aus_Datei(QSize ziel, QRgb hintergrund) const {
    const Inhalt inhalt = fehler::still_enden([&] { return lies(); });
    if (inhalt.bytes.isNull()) return {reduktion::groesstes(gemerkte()), kopf(), {}};
    return {bilddekoder::entpacke(inhalt.kopf, inhalt.bytes, ziel, hintergrund), inhalt.kopf,
        inhalt.unveraendert ? inhalt.bytes : QByteArray()};
  }

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
