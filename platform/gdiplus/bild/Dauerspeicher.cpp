#include "platform/gdiplus/bild/Dauerspeicher.h"

#include <memory>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Pfadkarte.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/jpeg/Exifmarke.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"

namespace dauerspeicher {
namespace {

Miniaturablage::Datei datei(const Schluessel& s) {
  return {s.pfad, s.kennung.laenge, s.kennung.geaendert_ns, s.gesehen_ns};
}

/// An entry to be written: its pixels in that size, or the content that they are still to be decoded from.
struct Vorhaben {
  Miniaturablage::Datei datei;
  Bildkopf kopf;
  int kante = 0;
  bool gedreht = false;
  QImage pixel;
  QByteArray bytes;

  qint64 gewicht() const { return pixel.sizeInBytes() + bytes.size(); }
};

/// Reduces what was decoded to the entry's size.
void schrumpfe(Vorhaben& v) {
  if (v.pixel.isNull()) return;
  const QSize groesse = Miniaturablage::groesse_des_Eintrags(v.kopf.groesse, v.kante);
  v.pixel = bilddekoder::auf_Groesse(v.pixel, groesse).convertToFormat(QImage::Format_RGB888);
}

void schreibe(Vorhaben& v) {
  fehler::still_enden([&] {
    schrumpfe(v);
    if (v.pixel.isNull()) {
      const QSize groesse = Miniaturablage::groesse_des_Eintrags(v.kopf.groesse, v.kante);
      v.pixel = bilddekoder::entpacke(v.kopf, v.bytes, groesse, qRgb(0, 0, 0));
    }
    if (!v.pixel.isNull()) Miniaturablage::aktuell().merke(v.datei, v.kopf, v.pixel, v.kante, v.gedreht);
  });
}

/// False where there is no room for it until there is time.
bool hebe_auf(const std::shared_ptr<Vorhaben>& vorhaben, Speicherplatz& wo) {
  auto anteil = wo.versuche(vorhaben->gewicht());
  if (!anteil) return false;
  const auto platz = std::make_shared<Speicherplatz::Anteil>(std::move(*anteil));
  Rechenwerk::aktuell().nebenbei([vorhaben, platz] { schreibe(*vorhaben); });
  return true;
}

// What was decoded for a smaller size may be too small for the entry, or lack the scans that did not show.
bool reicht_fuer(QSize eintrag, const QImage& entpackt, const Bildkopf& kopf, const QByteArray& bytes) {
  if (entpackt.width() < eintrag.width() || entpackt.height() < eintrag.height()) return false;
  return kopf.format != Bildformat::Jpeg || jpegdekoder::Koeffizienten_im_Speicher(bytes) == 0;
}

}  // namespace

std::optional<Miniaturablage::Auskunft> auskunft(const Schluessel& schluessel) {
  return Miniaturablage::aktuell().kopf(datei(schluessel));
}

QImage suche(const Schluessel& schluessel, const Bildkopf& kopf, QSize ziel) {
  const QImage eintrag = Miniaturablage::aktuell().suche(datei(schluessel), ziel);
  if (eintrag.isNull()) return {};
  return fehler::still_enden([&] {
    QImage pixel = bilddekoder::auf_Groesse(eintrag, ziel);
    Bildspeicher::aktuell().merke(schluessel, kopf, pixel);
    return pixel;
  });
}

bool gibt_nichts_her(const Schluessel& schluessel) {
  const auto a = auskunft(schluessel);
  return a && a->fehlschlag && a->status == gdiplus::Ok;
}

void behalte(const Schluessel& schluessel, const Bildkopf& kopf, const QByteArray& bytes, const QImage& entpackt,
    QSize ziel, Andrang andrang) {
  const int kante = Miniaturablage::kante_fuer(ziel, kopf.groesse);
  if (kante == 0 || !Miniaturablage::aktuell().ist_an()) return;
  fehler::still_enden([&] {
    const QSize groesse = Miniaturablage::groesse_des_Eintrags(kopf.groesse, kante);
    const bool gedreht = kopf.format == Bildformat::Jpeg && exifmarke::lies(bytes) != 1;
    const auto vorhaben = std::make_shared<Vorhaben>(Vorhaben{datei(schluessel), kopf, kante, gedreht, {}, {}});
    if (reicht_fuer(groesse, entpackt, kopf, bytes))
      vorhaben->pixel = entpackt;
    else
      vorhaben->bytes = bytes;
    if (hebe_auf(vorhaben, Rechenwerk::aktuell().ungeschrumpftes)) return;
    schrumpfe(*vorhaben);
    if (hebe_auf(vorhaben, Rechenwerk::aktuell().aufgehobenes)) return;
    if (andrang == Andrang::Schreibe_sofort) schreibe(*vorhaben);
  });
}

void behalte_Fehlschlag(const Schluessel& schluessel, std::int32_t status, const Bildkopf& kopf) {
  if (!Miniaturablage::aktuell().ist_an()) return;
  fehler::still_enden([&] {
    Rechenwerk::aktuell().nebenbei(
        [d = datei(schluessel), status, kopf] { Miniaturablage::aktuell().merke_Fehlschlag(d, status, kopf); });
  });
}

void vergiss(const QString& pfad) {
  fehler::still_enden([&] { Miniaturablage::aktuell().vergiss(Pfadkarte::aktuell().maschinenpfad(pfad)); });
}

}  // namespace dauerspeicher
