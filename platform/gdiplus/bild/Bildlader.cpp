#include "platform/gdiplus/bild/Bildlader.h"

#include <QPainter>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Binaerdatei.h"
#include "platform/files/Dateien.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/gdiplus/bild/Pixelquelle.h"
#include "platform/gdiplus/vorlauf/Inarbeit.h"

namespace bildlader {
namespace {

/// The size that is asked for, or the picture's own. One that nobody can hold raises 7.
QSize soll(const Bild& bild, QSize ziel) {
  const QSize groesse = ziel.isEmpty() ? bild.groesse() : ziel;
  if (!ist_haltbar(groesse)) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return groesse;
}

class DateiBild final : public Bild {
 public:
  DateiBild(std::shared_ptr<Pixelquelle> datei, QRgb hintergrund, std::shared_ptr<const Bild> ersatz = {})
      : datei_(std::move(datei)), hintergrund_(hintergrund), ersatz_(std::move(ersatz)) {}

  QSize groesse() const override { return datei_->kopf().groesse; }

  QImage bild(QSize ziel) const override {
    QImage pixel = eigene_Pixel(ziel);
    return pixel.isNull() ? Ersatz(soll(*this, ziel)) : pixel;
  }

  QImage eigene_Pixel(QSize ziel) const { return datei_->bild(soll(*this, ziel), hintergrund_); }

  std::optional<Herkunft> herkunft() const {
    if (!datei_->schluessel() || (hintergrund_ & RGB_MASK) != 0) return std::nullopt;
    return Herkunft{*datei_->schluessel(), datei_->kopf(), datei_->bytes()};
  }

  std::shared_ptr<const Bild> auf(QRgb hintergrund) const {
    return std::make_shared<DateiBild>(datei_, hintergrund, ersatz_);
  }
  std::shared_ptr<const Bild> mit(std::shared_ptr<const Bild> ersatz) const {
    return std::make_shared<DateiBild>(datei_, hintergrund_, std::move(ersatz));
  }

 private:
  /// What shows in place of a picture that can't be decoded: black, or on white the one that mit_Ersatz gave, in its
  /// own size or smaller where that does not fit.
  QImage Ersatz(QSize ziel) const {
    QImage flaeche = bilddekoder::schwarz(ziel);
    if (!ersatz_) return flaeche;
    flaeche.fill(Qt::white);
    const QSize groesse = ersatz_->groesse();
    const QSize klein = groesse.scaled(groesse.boundedTo(ziel), Qt::KeepAspectRatio);
    if (klein.isEmpty()) return flaeche;
    QPainter(&flaeche).drawImage(
        (ziel.width() - klein.width()) / 2, (ziel.height() - klein.height()) / 2, ersatz_->bild(klein));
    return flaeche;
  }

  std::shared_ptr<Pixelquelle> datei_;
  QRgb hintergrund_;
  std::shared_ptr<const Bild> ersatz_;
};

class PixelBild final : public Bild {
 public:
  explicit PixelBild(QImage pixel) : pixel_(std::move(pixel)) {}

  QSize groesse() const override { return pixel_.size(); }

  QImage bild(QSize ziel) const override { return bilddekoder::auf_Groesse(pixel_, soll(*this, ziel)); }

 private:
  QImage pixel_;
};

Ergebnis mit(const std::shared_ptr<Pixelquelle>& datei) {
  return {gdiplus::Ok, datei->kopf().format, std::make_shared<DateiBild>(datei, qRgb(0, 0, 0))};
}

Ergebnis ohne_Bild(const bildbefund::Befund& befund) {
  return {befund.status, befund.kopf.format, {}};
}

/// What the cache knows of the state, or, where another thread is at work on the file, will know at its end.
class Bekanntes {
 public:
  /// `brauchbar` tells whether an entry is enough.
  Bekanntes(const Pixelquelle::Schluessel& schluessel, bool (*brauchbar)(const Bildspeicher::Eintrag&)) {
    if (!schluessel) return;
    const auto suche = [&] {
      eintrag_ = Bildspeicher::aktuell().suche(*schluessel);
      if (eintrag_ && !brauchbar(*eintrag_)) eintrag_.reset();
      return eintrag_.has_value();
    };
    if (suche()) return;
    allein_.emplace(inarbeit::warte(schluessel->pfad));
    if (suche()) allein_.reset();
  }
  std::optional<Bildspeicher::Eintrag>& eintrag() noexcept { return eintrag_; }

 private:
  std::optional<Bildspeicher::Eintrag> eintrag_;
  std::optional<inarbeit::Marke> allein_;
};

/// An earlier opening of that state found no picture.
std::optional<bildbefund::Befund> Fehlschlag(const Pixelquelle::Schluessel& schluessel) {
  const auto frueher = schluessel ? dauerspeicher::auskunft(*schluessel) : std::nullopt;
  if (!frueher || frueher->status == gdiplus::Ok) return std::nullopt;
  return bildbefund::Befund{frueher->status, frueher->kopf};
}

/// The next opening of that state need not read it.
Ergebnis gescheitert_ist(const Pixelquelle::Schluessel& schluessel, const bildbefund::Befund& befund) {
  if (schluessel) dauerspeicher::behalte_Fehlschlag(*schluessel, befund.status, befund.kopf);
  return ohne_Bild(befund);
}

Ergebnis oeffne_ganz(const QString& pfad) {
  Pixelquelle::Schluessel schluessel = Bildspeicher::aktuell().schluessel(pfad);
  // A header without pixels is no picture that outlives its file.
  Bekanntes bekanntes(schluessel, [](const Bildspeicher::Eintrag& e) { return !e.reduzierte.isEmpty(); });
  if (auto& bekannt = bekanntes.eintrag())
    return mit(gehaltene_Pixel(pfad, std::move(schluessel), bekannt->kopf, {}, std::move(bekannt->reduzierte)));
  if (const auto gescheitert = Fehlschlag(schluessel)) return ohne_Bild(*gescheitert);
  Binaerdatei datei;
  datei.oeffne_lesend(pfad);
  QByteArray bytes;
  const bildbefund::Befund befund = bildbefund::lies_und_urteile(datei, bytes);
  datei.schliesse();
  if (schluessel && dateien::kennung(pfad) != schluessel->kennung) schluessel.reset();
  if (befund.status != gdiplus::Ok) return gescheitert_ist(schluessel, befund);
  return mit(gehaltene_Pixel(pfad, std::move(schluessel), befund.kopf, std::move(bytes), {}));
}

Ergebnis oeffne_Kopf(const QString& pfad) {
  Pixelquelle::Schluessel schluessel = Bildspeicher::aktuell().schluessel(pfad);
  Bekanntes bekanntes(schluessel, [](const Bildspeicher::Eintrag&) { return true; });
  if (const auto& bekannt = bekanntes.eintrag())
    return mit(ungelesene_Pixel(pfad, std::move(schluessel), bekannt->kopf));
  if (const auto frueher = schluessel ? dauerspeicher::auskunft(*schluessel) : std::nullopt) {
    if (frueher->status != gdiplus::Ok) return ohne_Bild({frueher->status, frueher->kopf});
    Bildspeicher::aktuell().merke_Kopf(*schluessel, frueher->kopf);
    return mit(ungelesene_Pixel(pfad, std::move(schluessel), frueher->kopf));
  }
  Binaerdatei datei;
  datei.oeffne_lesend(pfad);
  const bildbefund::Befund befund = bildbefund::urteile_nach_Anfang(datei);
  datei.schliesse();
  if (schluessel && dateien::kennung(pfad) != schluessel->kennung) schluessel.reset();
  if (befund.status != gdiplus::Ok) return gescheitert_ist(schluessel, befund);
  if (schluessel) Bildspeicher::aktuell().merke_Kopf(*schluessel, befund.kopf);
  return mit(ungelesene_Pixel(pfad, std::move(schluessel), befund.kopf));
}

}  // namespace

Ergebnis oeffne(const QString& pfad) {
  Ergebnis ergebnis;
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { ergebnis.status = gdiplus::status_beim_Lesen(f.Nummer()); },
      [&] { ergebnis = NurKopf::gilt() ? oeffne_Kopf(pfad) : oeffne_ganz(pfad); });
  return ergebnis;
}

std::shared_ptr<const Bild> mit_Hintergrund(const std::shared_ptr<const Bild>& bild, QRgb hintergrund) {
  const auto* const aus_Datei = dynamic_cast<const DateiBild*>(bild.get());
  return aus_Datei != nullptr ? aus_Datei->auf(hintergrund) : bild;
}

std::shared_ptr<const Bild> mit_Ersatz(const std::shared_ptr<const Bild>& bild, std::shared_ptr<const Bild> ersatz) {
  const auto* const aus_Datei = dynamic_cast<const DateiBild*>(bild.get());
  return aus_Datei != nullptr ? aus_Datei->mit(std::move(ersatz)) : bild;
}

QImage eigene_Pixel(const Bild& bild, QSize ziel) {
  const auto* const aus_Datei = dynamic_cast<const DateiBild*>(&bild);
  return aus_Datei != nullptr ? aus_Datei->eigene_Pixel(ziel) : bild.bild(ziel);
}

std::optional<Herkunft> herkunft(const Bild& bild) {
  const auto* const aus_Datei = dynamic_cast<const DateiBild*>(&bild);
  return aus_Datei != nullptr ? aus_Datei->herkunft() : std::nullopt;
}

std::shared_ptr<const Bild> aus_Pixeln(const QImage& pixel) {
  if (pixel.isNull()) return nullptr;
  return std::make_shared<PixelBild>(bilddekoder::undurchsichtig(pixel, qRgb(0, 0, 0)));
}

}  // namespace bildlader
