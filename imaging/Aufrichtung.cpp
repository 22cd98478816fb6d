#include "imaging/Aufrichtung.h"

#include "imaging/Drehspur.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildbefund.h"
#include "platform/gdiplus/jpeg/Exifmarke.h"
#include "platform/gdiplus/jpeg/Jpegdrehung.h"

using namespace Qt::Literals::StringLiterals;

namespace aufrichtung {
namespace {

/// A quarter turn has made what the camera noted as width the height. The noted numbers say nothing of a half turn.
bool ist_schon_gedreht(const QByteArray& bytes, QSize groesse, const Drehung& drehung) {
  if (!drehung.tausche || groesse.width() == groesse.height()) return false;
  return exifmarke::notierte_Groesse(bytes) == groesse.transposed();
}

Ergebnis gescheitert(std::int32_t status) {
  const QString grund =
      status == gdiplus::OutOfMemory ? u"Der Speicher reicht nicht."_s : u"Das Bild ist nicht zu Ende zu lesen."_s;
  return {Befund::Gescheitert, {}, grund};
}

Ergebnis drehe(const QByteArray& bytes, QSize groesse, bool vom_Benutzer, const Drehung& drehung) {
  Ergebnis ergebnis;
  const bool gedreht = vom_Benutzer || ist_schon_gedreht(bytes, groesse, drehung);
  ergebnis.befund = gedreht ? Befund::Nur_Marke : Befund::Gedreht;
  ergebnis.bytes = bytes;
  if (!gedreht) {
    if (const std::int32_t status = jpegdrehung::drehe(bytes, drehung, ergebnis.bytes); status != gdiplus::Ok)
      return gescheitert(status);
  }
  const QSize jetzt = gedreht ? groesse : drehung.auf(groesse);
  const QSize notiert = exifmarke::notierte_Groesse(bytes);
  if (notiert != jetzt && notiert == jetzt.transposed()) exifmarke::tausche_notierte_Groesse(ergebnis.bytes);
  exifmarke::drehe_Vorschau(ergebnis.bytes, drehung);
  exifmarke::setze_aufrecht(ergebnis.bytes);
  return ergebnis;
}

}  // namespace

Ergebnis richte_auf(const QByteArray& bytes, const QString& quelle) {
  Ergebnis ergebnis;
  const auto sage = [&](const Laufzeitfehler& f) { ergebnis = {Befund::Gescheitert, {}, f.Beschreibung()}; };
  fehler::melden_und_enden(sage, [&] {
    if (erkenne_Bildformat(bytes) != Bildformat::Jpeg) return;
    const auto drehung = exifmarke::drehung(exifmarke::lies(bytes));
    if (!drehung) return;
    QByteArray alle = bytes;
    const bildbefund::Befund befund = bildbefund::urteile(alle);
    const bool vom_Benutzer = !quelle.isEmpty() && drehspur::hat(quelle);
    ergebnis = gescheitert(befund.status);
    if (befund.status == gdiplus::Ok) ergebnis = drehe(alle, befund.kopf.groesse, vom_Benutzer, *drehung);
  });
  return ergebnis;
}

QByteArray mit_aufrechter_Marke(const QByteArray& jpeg) {
  QByteArray neu = jpeg;
  exifmarke::setze_aufrecht(neu);
  return neu;
}

}  // namespace aufrichtung
