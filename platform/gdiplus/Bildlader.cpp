#include "platform/gdiplus/Bildlader.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Binaerdatei.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/Bilddekoder.h"
#include "platform/gdiplus/Bildspeicher.h"
#include "platform/gdiplus/Jpegdekoder.h"
#include "platform/gdiplus/Jpegmarken.h"
#include "platform/gdiplus/gdiplus.h"

Bild::~Bild() = default;

namespace bildlader {
namespace {

using Schluessel = std::optional<Bildspeicher::Schluessel>;

std::int64_t flaeche(QSize groesse) noexcept {
  return std::int64_t{groesse.width()} * groesse.height();
}

QByteArray lies(const Binaerdatei& datei, qsizetype anzahl) {
  QByteArray bytes(anzahl, Qt::Uninitialized);
  const std::size_t gelesen = datei.lies(0, std::as_writable_bytes(std::span(bytes.begin(), bytes.end())));
  bytes.truncate(static_cast<qsizetype>(gelesen));
  return bytes;
}

/// The bytes with everything in front that a decoder wants to find there.
QByteArray& vollstaendig(QByteArray& bytes) {
  if (erkenne_Bildformat(bytes) == Bildformat::Jpeg) trage_Hoehe_ein(bytes);
  return bytes;
}

// The content of one state of a picture file. Usually it is the compressed bytes, taken when the file was opened. Where
// the cache knew that state, it is the reduced pixels; the bytes are then only read when another size is asked for, and
// only while the file is still in that state. When it no longer is, the largest of those pixels serve: coarser than the
// file was, but never another picture.
class Bilddatei {
 public:
  Bilddatei(QString pfad, Schluessel schluessel, const Bildkopf& gelesener_kopf, QByteArray bytes,
            QList<QImage> reduzierte)
      : kopf(gelesener_kopf),
        pfad_(std::move(pfad)),
        schluessel_(std::move(schluessel)),
        bytes_(std::move(bytes)),
        reduzierte_(std::move(reduzierte)) {}

  QImage bild(QSize ziel, QRgb hintergrund) {
    const std::scoped_lock halten(sperre_);
    const bool merken = schluessel_ && flaeche(ziel) < flaeche(kopf.groesse) && (hintergrund & RGB_MASK) == 0;
    if (merken)
      if (const QImage gemerkt = gemerktes(ziel); !gemerkt.isNull()) return gemerkt;
    if (bytes_.isNull() && !lies_nach()) return bilddekoder::auf_Groesse(groesstes(), ziel);
    const QImage neu = bilddekoder::dekodiere(kopf, bytes_, ziel, hintergrund);
    if (merken) Bildspeicher::aktuell().merke(*schluessel_, kopf, neu);
    return neu;
  }

  const Bildkopf kopf;

 private:
  QImage gemerktes(QSize ziel) const {
    const auto suche = [&](const QList<QImage>& alle) {
      const auto b = std::find_if(alle.cbegin(), alle.cend(), [&](const QImage& x) { return x.size() == ziel; });
      return b == alle.cend() ? QImage() : *b;
    };
    if (const QImage eigenes = suche(reduzierte_); !eigenes.isNull()) return eigenes;
    const auto eintrag = Bildspeicher::aktuell().suche(*schluessel_);
    return eintrag ? suche(eintrag->reduzierte) : QImage();
  }

  bool lies_nach() {
    return fehler::still_enden([&] {
      QByteArray bytes = dateien::lies_alles(pfad_);
      vollstaendig(bytes);
      if (dateien::kennung(pfad_) != schluessel_->kennung) return false;
      bytes_ = std::move(bytes);
      return true;
    });
  }

  QImage groesstes() const {
    return *std::max_element(reduzierte_.cbegin(), reduzierte_.cend(),
                             [](const QImage& a, const QImage& b) { return flaeche(a.size()) < flaeche(b.size()); });
  }

  std::mutex sperre_;
  const QString pfad_;
  const Schluessel schluessel_;
  QByteArray bytes_;
  const QList<QImage> reduzierte_;
};

class DateiBild final : public Bild {
 public:
  DateiBild(std::shared_ptr<Bilddatei> datei, QRgb hintergrund) : datei_(std::move(datei)), hintergrund_(hintergrund) {}

  QSize groesse() const override { return datei_->kopf.groesse; }

  QImage bild(QSize ziel) const override {
    const QSize soll = ziel.isEmpty() ? groesse() : ziel;
    if (!ist_haltbar(soll)) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
    return datei_->bild(soll, hintergrund_);
  }

  std::shared_ptr<const Bild> auf(QRgb hintergrund) const { return std::make_shared<DateiBild>(datei_, hintergrund); }

 private:
  std::shared_ptr<Bilddatei> datei_;
  QRgb hintergrund_;
};

class PixelBild final : public Bild {
 public:
  explicit PixelBild(QImage pixel) : pixel_(std::move(pixel)) {}

  QSize groesse() const override { return pixel_.size(); }

  QImage bild(QSize ziel) const override {
    const QSize soll = ziel.isEmpty() ? groesse() : ziel;
    if (!ist_haltbar(soll)) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
    return bilddekoder::auf_Groesse(pixel_, soll);
  }

 private:
  QImage pixel_;
};

std::int32_t status_des_Kopfes(const Bildkopf& kopf, const QByteArray& bytes) {
  switch (kopf.befund) {
    case Kopfbefund::Unbekannt:
      return gdiplus::UnknownImageFormat;
    case Kopfbefund::Defekt:
      return gdiplus::InvalidParameter;
    case Kopfbefund::ZuGross:
      return gdiplus::OutOfMemory;
    case Kopfbefund::Ok:
      break;
  }
  const bool lesbar = kopf.format != Bildformat::Jpeg || jpegdekoder::ist_Kopf_lesbar(bytes);
  return lesbar ? gdiplus::Ok : gdiplus::InvalidParameter;
}

std::int32_t status_des_Fehlers(std::int32_t nummer) noexcept {
  switch (nummer) {
    case fehlernummer::ZugriffVerweigert:
      return gdiplus::AccessDenied;
    case fehlernummer::SpeicherErschoepft:
      return gdiplus::OutOfMemory;
    case fehlernummer::EinAusgabeFehler:
      return gdiplus::Win32Error;
    case fehlernummer::DateiNichtGefunden:
    case fehlernummer::UngueltigerDateiname:
    case fehlernummer::PfadZugriff:
    case fehlernummer::PfadNichtGefunden:
      return gdiplus::FileNotFound;
    default:
      return gdiplus::GenericError;
  }
}

Ergebnis mit(const Bildkopf& kopf, std::shared_ptr<Bilddatei> datei) {
  return {gdiplus::Ok, kopf.format, std::make_shared<DateiBild>(std::move(datei), qRgb(0, 0, 0))};
}

Ergebnis oeffne_oder_wirf(const QString& pfad) {
  Schluessel schluessel = Bildspeicher::aktuell().schluessel(pfad);
  if (schluessel)
    if (auto bekannt = Bildspeicher::aktuell().suche(*schluessel))
      return mit(bekannt->kopf, std::make_shared<Bilddatei>(pfad, std::move(schluessel), bekannt->kopf, QByteArray(),
                                                            std::move(bekannt->reduzierte)));
  Binaerdatei datei;
  datei.oeffne_lesend(pfad);
  // What is no picture may be large: it is not read.
  if (erkenne_Bildformat(lies(datei, kSignaturlaenge)) == Bildformat::Unbekannt)
    return {gdiplus::UnknownImageFormat, {}, {}};
  QByteArray bytes = lies(datei, static_cast<qsizetype>(datei.laenge()));
  datei.schliesse();
  if (schluessel && dateien::kennung(pfad) != schluessel->kennung) schluessel.reset();
  const Bildkopf kopf = lies_Bildkopf(vollstaendig(bytes));
  if (const std::int32_t status = status_des_Kopfes(kopf, bytes); status != gdiplus::Ok)
    return {status, kopf.format, {}};
  return mit(kopf, std::make_shared<Bilddatei>(pfad, std::move(schluessel), kopf, std::move(bytes), QList<QImage>()));
}

}  // namespace

Ergebnis oeffne(const QString& pfad) {
  Ergebnis ergebnis;
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& f) {
        ergebnis = {status_des_Fehlers(f.Nummer()), Bildformat::Unbekannt, {}};
      },
      [&] { ergebnis = oeffne_oder_wirf(pfad); });
  return ergebnis;
}

std::shared_ptr<const Bild> mit_Hintergrund(const std::shared_ptr<const Bild>& bild, QRgb hintergrund) {
  const auto* const aus_Datei = dynamic_cast<const DateiBild*>(bild.get());
  return aus_Datei != nullptr ? aus_Datei->auf(hintergrund) : bild;
}

std::shared_ptr<const Bild> aus_Pixeln(const QImage& pixel) {
  if (pixel.isNull()) return nullptr;
  return std::make_shared<PixelBild>(bilddekoder::undurchsichtig(pixel, qRgb(0, 0, 0)));
}

}  // namespace bildlader
