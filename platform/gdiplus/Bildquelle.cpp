#include "platform/gdiplus/Bildquelle.h"

#include <QImage>
#include <QTransform>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Binaerdatei.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/jpeg/Jpegausgabe.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"

namespace {

std::int32_t lies(const QString& pfad, std::shared_ptr<const Bildquelle>& quelle) {
  Binaerdatei datei;
  datei.oeffne_lesend(pfad);
  QByteArray bytes;
  const bildbefund::Befund befund = bildbefund::lies_und_urteile(datei, bytes);
  if (befund.status == gdiplus::Ok)
    quelle = std::make_shared<Bildquelle>(std::move(bytes), befund.kopf, dateien::kennung(pfad));
  return befund.status;
}

QImage gedreht(const QImage& bild, const Drehung& drehung) {
  const QImage getauscht = drehung.tausche ? bild.transformed(QTransform(0, 1, 1, 0, 0, 0)) : bild;
  QImage ergebnis = getauscht.mirrored(drehung.spiegle_x, drehung.spiegle_y);
  if (ergebnis.isNull()) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return ergebnis;
}

// The failure that running out of memory raises becomes a status here.
template <class Anweisung>
std::int32_t als_Status(Anweisung&& anweisung) {
  std::int32_t status = gdiplus::Ok;
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& f) { status = gdiplus::status_beim_Lesen(f.Nummer()); }, [&] { status = anweisung(); });
  return status;
}

}  // namespace

std::int32_t Bildquelle::oeffne(const QString& pfad, std::shared_ptr<const Bildquelle>& quelle) {
  return als_Status([&] { return lies(pfad, quelle); });
}

bool Bildquelle::ist_Datei(const QString& pfad) const noexcept {
  return fehler::still_enden([&] {
    const dateien::Kennung andere = dateien::kennung(pfad);
    return andere.geraet == kennung_.geraet && andere.inode == kennung_.inode;
  });
}

std::int32_t Bildquelle::drehe(const Drehung& drehung, QByteArray& strom) const {
  return als_Status([&] {
    if (kopf_.format == Bildformat::Jpeg) return jpegdrehung::drehe(bytes_, drehung, strom);
    const QImage bild = bilddekoder::lies(kopf_, bytes_, kopf_.groesse, qRgb(0, 0, 0));
    return jpegausgabe::kodiere(gedreht(bild.isNull() ? bilddekoder::schwarz(kopf_.groesse) : bild, drehung), strom);
  });
}
