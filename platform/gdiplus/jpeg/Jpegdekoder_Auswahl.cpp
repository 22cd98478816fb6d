#include <algorithm>
#include <array>
#include <optional>

#include "platform/basic/Bytesicht.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "platform/gdiplus/jpeg/Jpegmarken.h"

// Which scans of a progressive picture a reduced size needs. A component of w samples that ends in z pixels shows
// nothing finer than n = 8 z / w half waves to a block, so only the coefficients of the n x n lowest frequencies
// matter.
namespace jpegdekoder {
namespace {

constexpr int Hoechstens = 100;

// Position in zigzag order (ITU T.81 figure A.6) of the highest frequency of the lowest n x n ones.
constexpr std::array<int, 9> LetzteFrequenz{0, 0, 4, 12, 24, 39, 51, 59, 63};

int frequenzen(int abtastung, int hoechste, int seite, int ziel) {
  const std::int64_t proben = (std::int64_t{seite} * abtastung + hoechste - 1) / hoechste;
  return static_cast<int>(std::clamp<std::int64_t>((std::int64_t{ziel} * 8 + proben - 1) / proben, 1, 8));
}

// The last coefficient that a component needs.
struct Bedarf {
  std::uint8_t kennung = 0;
  int letzter = 63;
};

std::vector<Bedarf> bedarf(const Jpegrahmen& r, QSize ziel) {
  const int num = massstab({r.breite, r.hoehe}, ziel);
  int hmax = 1;
  int vmax = 1;
  for (const auto& k : r.komponenten) {
    hmax = std::max<int>(hmax, k.waagrecht);
    vmax = std::max<int>(vmax, k.senkrecht);
  }
  std::vector<Bedarf> ergebnis;
  for (int i = 0; i < r.anzahl; ++i) {
    const auto& k = r.komponenten[static_cast<std::size_t>(i)];
    if (num == 8) {
      ergebnis.push_back({k.kennung, 63});
      continue;
    }
    // Never more than the scale itself gives: rounding up of a side must not ask for another frequency.
    const int w = std::min(frequenzen(k.waagrecht, hmax, r.breite, ziel.width()), num * hmax / k.waagrecht);
    const int h = std::min(frequenzen(k.senkrecht, vmax, r.hoehe, ziel.height()), num * vmax / k.senkrecht);
    ergebnis.push_back({k.kennung, LetzteFrequenz[static_cast<std::size_t>(std::clamp(std::max(w, h), 1, 8))]});
  }
  return ergebnis;
}

bool ist_noetig(const Bytesicht& b, const Jpegmarken::Segment& scan, const std::vector<Bedarf>& alle) {
  const auto p = static_cast<std::uint64_t>(scan.inhalt);
  const unsigned anzahl = b.u8(p);
  const int erster = b.u8(p + 1 + std::uint64_t{anzahl} * 2);
  for (unsigned i = 0; i < anzahl; ++i) {
    const std::uint8_t kennung = b.u8(p + 1 + std::uint64_t{i} * 2);
    const auto k = std::find_if(alle.begin(), alle.end(), [&](const Bedarf& x) { return x.kennung == kennung; });
    if (k == alle.end() || erster <= k->letzter) return true;
  }
  return false;
}

// Pieces that follow each other become one.
void haenge_an(std::vector<QByteArrayView>& stuecke, QByteArrayView stueck) {
  if (!stuecke.empty() && stuecke.back().end() == stueck.begin())
    stuecke.back() = QByteArrayView(stuecke.back().begin(), stueck.end());
  else
    stuecke.push_back(stueck);
}

}  // namespace

std::vector<QByteArrayView> noetige_Stuecke(QByteArrayView bytes, QSize ziel) {
  const Bytesicht b(bytes);
  Jpegmarken marken(bytes);
  std::vector<QByteArrayView> stuecke;
  std::vector<Bedarf> alle;
  int scans = 0;
  qsizetype fertig = 0;
  bool weglassen = false;
  // A piece reaches from one segment to the next, so that it takes a scan's data with it.
  const auto schliesse = [&](qsizetype ende) {
    if (!weglassen) haenge_an(stuecke, bytes.sliced(fertig, ende - fertig));
    fertig = ende;
    weglassen = false;
  };
  while (const auto segment = marken.naechstes()) {
    schliesse(segment->anfang);
    if (ist_SOF(segment->marke)) {
      const auto rahmen = lies_Rahmen(bytes, *segment);
      if (rahmen && rahmen->breite != 0 && rahmen->hoehe != 0) alle = bedarf(*rahmen, ziel);
    }
    if (segment->marke != Jpegmarken::SOS) continue;
    if (scans == Hoechstens) return stuecke;
    weglassen = !ist_noetig(b, *segment, alle);
    if (!weglassen) ++scans;
  }
  schliesse(bytes.size());
  return stuecke;
}

int massstab(QSize groesse, QSize ziel) noexcept {
  if (ziel.isEmpty()) return 8;
  const auto reicht = [](int seite, int wunsch, int num) { return (std::int64_t{seite} * num + 7) / 8 >= wunsch; };
  for (int num = 1; num < 8; ++num)
    if (reicht(groesse.width(), ziel.width(), num) && reicht(groesse.height(), ziel.height(), num)) return num;
  return 8;
}

QSize dekodierte_Groesse(QSize groesse, QSize ziel) noexcept {
  const int num = massstab(groesse, ziel);
  const auto seite = [num](int lang) { return static_cast<int>((std::int64_t{lang} * num + 7) / 8); };
  return {seite(groesse.width()), seite(groesse.height())};
}

namespace {

// Two bytes for each sample of each component.
qint64 alle_Koeffizienten(const Jpegrahmen& rahmen) {
  int hoechste = 1;
  int summe = 0;
  for (int i = 0; i < rahmen.anzahl; ++i) {
    const auto& k = rahmen.komponenten[static_cast<std::size_t>(i)];
    hoechste = std::max(hoechste, k.waagrecht * k.senkrecht);
    summe += k.waagrecht * k.senkrecht;
  }
  return qint64{2} * rahmen.breite * rahmen.hoehe * summe / hoechste;
}

}  // namespace

qint64 Koeffizienten_im_Speicher(QByteArrayView bytes) {
  Jpegmarken marken(bytes);
  std::optional<Jpegrahmen> rahmen;
  while (const auto segment = marken.naechstes()) {
    if (ist_SOF(segment->marke)) rahmen = lies_Rahmen(bytes, *segment);
    if (segment->marke != Jpegmarken::SOS) continue;
    if (!rahmen) return 0;
    const bool fortschreitend = rahmen->marke == 0xc2 || rahmen->marke == 0xca;
    const bool einzeln = Bytesicht(bytes).u8(static_cast<std::uint64_t>(segment->inhalt)) < rahmen->anzahl;
    return fortschreitend || einzeln ? alle_Koeffizienten(*rahmen) : 0;
  }
  return 0;
}

}  // namespace jpegdekoder
