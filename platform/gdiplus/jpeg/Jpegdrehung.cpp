#include "platform/gdiplus/jpeg/Jpegdrehung.h"

#include <algorithm>
#include <utility>

#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/jpeg/Jpegausgabe.h"
#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"
#include "platform/gdiplus/jpeg/Jpegneukodierung.h"

using jpegkoeffizienten::Inhalt;
using jpegkoeffizienten::Quantisierung;

namespace jpegdrehung {
namespace {

Quantisierung transponiert(const Quantisierung& tabelle) {
  Quantisierung neu{};
  for (std::size_t i = 0; i < DCTSIZE2; ++i) neu[i % DCTSIZE * DCTSIZE + i / DCTSIZE] = tabelle[i];
  return neu;
}

// Every component keeps the slot of its table. Where the source filled a slot anew between two scans, the later of two
// components with different tables takes a free one: there are four of each.
int platz_fuer(const std::vector<jpegausgabe::Komponente>& bisher, int wunsch, const Quantisierung& tabelle) {
  const auto passt = [&](int platz) {
    return std::none_of(
        bisher.begin(), bisher.end(), [&](const auto& k) { return k.tabelle == platz && k.quantisierung != tabelle; });
  };
  if (passt(wunsch)) return wunsch;
  int platz = 0;
  while (!passt(platz)) ++platz;
  return platz;
}

bool bleibt_ganz(const Inhalt& bild, const jpegkoeffizienten::Komponente& k, const Drehung& drehung) {
  const bool x = jpegneukodierung::bleibt_ganz(bild.groesse.width(), k.waagrecht, bild.waagrecht);
  const bool y = jpegneukodierung::bleibt_ganz(bild.groesse.height(), k.senkrecht, bild.senkrecht);
  return (x || !drehung.quelle_x()) && (y || !drehung.quelle_y());
}

jpegausgabe::Komponente gedreht(
    const Inhalt& bild, jpegkoeffizienten::Komponente& k, const Drehung& drehung, bool ganz) {
  jpegausgabe::Komponente neu{
      static_cast<const jpegkoeffizienten::Komponentenkopf&>(k), &k.gleichstrom, &k.wechselstrom, nullptr};
  if (drehung.tausche) {
    std::swap(neu.waagrecht, neu.senkrecht);
    neu.quantisierung = transponiert(k.quantisierung);
  }
  if (ganz) {
    neu.zeilen = std::make_unique<blockdrehung::Gedreht>(k, drehung, neu.senkrecht);
  } else {
    neu.zeilen = std::make_unique<blockdrehung::Fertig>(jpegneukodierung::drehe(k, bild, drehung, neu.quantisierung));
    k.speicher.gib_frei();
  }
  return neu;
}

jpegausgabe::Auftrag auftrag_fuer(Inhalt& bild, const Drehung& drehung) {
  jpegausgabe::Auftrag auftrag;
  auftrag.groesse = drehung.auf(bild.groesse);
  auftrag.raum = bild.raum;
  auftrag.progressiv = bild.progressiv;
  auftrag.neustart = bild.neustart;
  auftrag.marken = &bild.marken;
  auftrag.dahinter = bild.dahinter;
  auftrag.optimiert = bild.arithmetisch;
  for (jpegkoeffizienten::Komponente& k : bild.komponenten) {
    const bool ganz = bleibt_ganz(bild, k, drehung);
    auftrag.optimiert |= !ganz;
    jpegausgabe::Komponente neu = gedreht(bild, k, drehung, ganz);
    neu.tabelle = platz_fuer(auftrag.komponenten, k.tabelle, neu.quantisierung);
    auftrag.komponenten.push_back(std::move(neu));
  }
  return auftrag;
}

}  // namespace

std::int32_t drehe(QByteArrayView bytes, const Drehung& drehung, QByteArray& ergebnis) {
  Inhalt bild;
  if (const std::int32_t status = jpegkoeffizienten::lies(bytes, bild); status != gdiplus::Ok) return status;
  jpegausgabe::Auftrag auftrag = auftrag_fuer(bild, drehung);
  auftrag.geschaetzt = bytes.size() + bytes.size() / 16;
  return jpegausgabe::schreibe(auftrag, ergebnis);
}

}  // namespace jpegdrehung
