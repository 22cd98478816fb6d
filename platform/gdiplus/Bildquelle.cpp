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

/// Takes the pixels, so that a big picture stands in memory twice at most.
QImage gedreht(QImage bild, const Drehung& drehung) {
  if (drehung.tausche) bild = bild.transformed(QTransform(0, 1, 1, 0, 0, 0));
  bild = std::move(bild).mirrored(drehung.spiegle_x, drehung.spiegle_y);
  if (bild.isNull()) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return bild;
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
    // A few bytes may claim a side of millions; what comes out could not be written after all the work.
    if (!jpegausgabe::fasst(kopf_.groesse)) return std::int32_t{gdiplus::GenericError};
    QImage bild = bilddekoder::lies(kopf_, bytes_, kopf_.groesse, qRgb(0, 0, 0));
    if (bild.isNull()) bild = bilddekoder::schwarz(kopf_.groesse);
    return jpegausgabe::kodiere(gedreht(std::move(bild), drehung), strom);
  });
}
