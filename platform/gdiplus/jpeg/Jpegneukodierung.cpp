#include "platform/gdiplus/jpeg/Jpegneukodierung.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "platform/basic/Laufzeitfehler.h"

using jpegkoeffizienten::Blockspeicher;
using jpegkoeffizienten::Inhalt;
using jpegkoeffizienten::Komponente;
using jpegkoeffizienten::Quantisierung;

namespace jpegneukodierung {
namespace {

// Samples of eight rows and columns, without the shift by 128.
using Feld = std::array<std::array<float, DCTSIZE>, DCTSIZE>;

// The base of the transform (ITU T.81 A.3.3): frequency u at sample x.
const Feld& basis() {
  static const Feld Tabelle = [] {
    Feld t{};
    for (std::size_t u = 0; u < DCTSIZE; ++u)
      for (std::size_t x = 0; x < DCTSIZE; ++x)
        t[u][x] = static_cast<float>((u == 0 ? std::sqrt(0.125) : 0.5) *
            std::cos((2.0 * static_cast<double>(x) + 1) * static_cast<double>(u) * M_PI / 16));
    return t;
  }();
  return Tabelle;
}

Feld transponiert(const Feld& a) noexcept {
  Feld t;
  for (std::size_t i = 0; i < DCTSIZE; ++i)
    for (std::size_t j = 0; j < DCTSIZE; ++j) t[j][i] = a[i][j];
  return t;
}

void multipliziere(const Feld& a, const Feld& b, Feld& produkt) noexcept {
  for (std::size_t i = 0; i < DCTSIZE; ++i) {
    std::array<float, DCTSIZE> zeile{};
    for (std::size_t k = 0; k < DCTSIZE; ++k)
      for (std::size_t j = 0; j < DCTSIZE; ++j) zeile[j] += a[i][k] * b[k][j];
    produkt[i] = zeile;
  }
}

// The samples of a component, with those that only fill its last blocks, in sixteenths.
class Ebene {
 public:
  explicit Ebene(const Komponente& k)
      : breite_(static_cast<std::size_t>(k.bloecke.width()) * DCTSIZE),
        hoehe_(static_cast<std::size_t>(k.bloecke.height()) * DCTSIZE),
        proben_(breite_ * hoehe_) {
    const Feld& c = basis();
    const Feld ct = transponiert(c);
    for (std::size_t y = 0; y < hoehe_ / DCTSIZE; ++y)
      for (std::size_t x = 0; x < breite_ / DCTSIZE; ++x)
        setze(x, y, dekodiert(k.speicher.zeile(y)[x], k.quantisierung, c, ct));
  }

  std::size_t breite() const noexcept { return breite_; }
  std::size_t hoehe() const noexcept { return hoehe_; }
  float probe(std::size_t x, std::size_t y) const noexcept {
    return static_cast<float>(proben_[y * breite_ + x]) * (1.0F / Teile);
  }

  /// Moves the samples of each row (or column) towards the end, by `1 - anteil` of a sample. Only the first `anzahl`
  /// belong to the picture; the first is repeated in front, the last behind.
  void verschiebe(bool spalten, std::size_t anzahl, std::span<const float> filter) {
    const std::size_t zeilen = spalten ? breite_ : hoehe_;
    const std::size_t schritt = spalten ? breite_ : 1;
    const std::size_t sprung = spalten ? 1 : breite_;
    const auto halb = static_cast<std::ptrdiff_t>(filter.size() / 2);
    const auto letzter = static_cast<std::ptrdiff_t>(anzahl) - 1;
    std::vector<float> alt(anzahl + filter.size());
    for (std::size_t z = 0; z < zeilen; ++z) {
      std::int16_t* const p = proben_.data() + z * sprung;
      for (std::size_t i = 0; i < alt.size(); ++i)
        alt[i] =
            p[static_cast<std::size_t>(std::clamp(static_cast<std::ptrdiff_t>(i) - halb, std::ptrdiff_t{0}, letzter)) *
                schritt];
      for (std::size_t i = 0; i < anzahl; ++i) {
        float summe = 0;
        for (std::size_t j = 0; j < filter.size(); ++j) summe += filter[j] * alt[i + j];
        p[i * schritt] = gerundet(summe);
      }
    }
  }

 private:
  static constexpr float Teile = 16;

  static std::int16_t gerundet(float wert) noexcept {
    return static_cast<std::int16_t>(std::lrint(std::clamp(wert, -32768.0F, 32767.0F)));
  }

  static Feld dekodiert(const JCOEF* block, const Quantisierung& tabelle, const Feld& c, const Feld& ct) noexcept {
    Feld f;
    for (std::size_t i = 0; i < DCTSIZE2; ++i)
      f[i / DCTSIZE][i % DCTSIZE] = static_cast<float>(block[i]) * static_cast<float>(tabelle[i]) * Teile;
    Feld g;
    multipliziere(ct, f, g);
    multipliziere(g, c, f);
    return f;
  }

  void setze(std::size_t x, std::size_t y, const Feld& f) noexcept {
    for (std::size_t j = 0; j < DCTSIZE; ++j)
      for (std::size_t i = 0; i < DCTSIZE; ++i)
        proben_[(y * DCTSIZE + j) * breite_ + x * DCTSIZE + i] = gerundet(f[j][i]);
  }

  std::size_t breite_;
  std::size_t hoehe_;
  std::vector<std::int16_t> proben_;
};

// What one axis of the source needs.
struct Achse {
  bool gespiegelt = false;
  std::size_t anzahl = 0;  ///< samples that belong to the picture
  std::size_t alle = 0;    ///< with those that fill the last block

  /// The sample of the source that comes to lie at `stelle`.
  std::size_t quelle(std::size_t stelle) const noexcept {
    if (!gespiegelt) return std::min(stelle, alle - 1);
    return stelle < anzahl ? anzahl - 1 - stelle : 0;
  }
};

// Half a sample, for a component of half the resolution. Decoders draw such components with the weights 3/4 and 1/4 of
// the two nearest samples; these eight are the least squares answer to that, so that the turned picture is drawn as the
// source was.
constexpr std::array<float, 8> Halbe{-0.0166F, 0.0498F, -0.1494F, 0.6162F, 0.6162F, -0.1494F, 0.0498F, -0.0166F};

// Where a side is no multiple of what a sample covers, the samples of the mirrored picture lie between the old ones.
void verschiebe(Ebene& ebene, bool spalten, int laenge, int abtastung, int hoechste, std::size_t anzahl) {
  const int rest = laenge * abtastung % hoechste;
  if (rest == 0) return;
  if (2 * abtastung == hoechste) return ebene.verschiebe(spalten, anzahl, Halbe);
  const float anteil = static_cast<float>(rest) / static_cast<float>(hoechste);
  ebene.verschiebe(spalten, anzahl, std::array<float, 2>{1 - anteil, anteil});
}

// A block of the result from the samples that come to lie there.
Feld lies_Block(const Ebene& ebene, const Achse& x, const Achse& y, bool tausche, std::size_t bx, std::size_t by) {
  Feld f;
  for (std::size_t j = 0; j < DCTSIZE; ++j)
    for (std::size_t i = 0; i < DCTSIZE; ++i) {
      const std::size_t zx = bx * DCTSIZE + i;
      const std::size_t zy = by * DCTSIZE + j;
      f[j][i] = tausche ? ebene.probe(x.quelle(zy), y.quelle(zx)) : ebene.probe(x.quelle(zx), y.quelle(zy));
    }
  return f;
}

// The reciprocals of the table's steps: multiplying is cheaper than dividing.
Feld kehrwerte(const Quantisierung& tabelle) noexcept {
  Feld f;
  for (std::size_t i = 0; i < DCTSIZE2; ++i) f[i / DCTSIZE][i % DCTSIZE] = 1.0F / static_cast<float>(tabelle[i]);
  return f;
}

void quantisiere(const Feld& frequenzen, const Feld& kehrwert, JCOEF* block) noexcept {
  for (std::size_t i = 0; i < DCTSIZE2; ++i) {
    const float wert = frequenzen[i / DCTSIZE][i % DCTSIZE] * kehrwert[i / DCTSIZE][i % DCTSIZE];
    block[i] = static_cast<JCOEF>(std::lrint(std::clamp(wert, i == 0 ? -1024.0F : -1023.0F, 1023.0F)));
  }
}

Blockspeicher kodiere(const Ebene& ebene, const Achse& x, const Achse& y, bool tausche, const Quantisierung& tabelle) {
  const Feld& c = basis();
  const Feld ct = transponiert(c);
  const Feld kehrwert = kehrwerte(tabelle);
  const std::size_t breite = (tausche ? ebene.hoehe() : ebene.breite()) / DCTSIZE;
  const std::size_t hoehe = (tausche ? ebene.breite() : ebene.hoehe()) / DCTSIZE;
  Blockspeicher ziel;
  if (!ziel.reserviere(hoehe, breite)) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  for (std::size_t by = 0; by < hoehe; ++by)
    for (std::size_t bx = 0; bx < breite; ++bx) {
      const Feld proben = lies_Block(ebene, x, y, tausche, bx, by);
      Feld g;
      Feld frequenzen;
      multipliziere(c, proben, g);
      multipliziere(g, ct, frequenzen);
      quantisiere(frequenzen, kehrwert, ziel.zeile(by)[bx]);
    }
  return ziel;
}

}  // namespace

bool bleibt_ganz(int laenge, int abtastung, int hoechste) noexcept {
  return static_cast<std::int64_t>(laenge) * abtastung % (DCTSIZE * hoechste) == 0;
}

Blockspeicher drehe(
    const Komponente& quelle, const Inhalt& bild, const Drehung& drehung, const Quantisierung& tabelle) {
  Ebene ebene(quelle);
  const Achse x{drehung.quelle_x(), static_cast<std::size_t>(quelle.proben.width()), ebene.breite()};
  const Achse y{drehung.quelle_y(), static_cast<std::size_t>(quelle.proben.height()), ebene.hoehe()};
  if (x.gespiegelt) verschiebe(ebene, false, bild.groesse.width(), quelle.waagrecht, bild.waagrecht, x.anzahl);
  if (y.gespiegelt) verschiebe(ebene, true, bild.groesse.height(), quelle.senkrecht, bild.senkrecht, y.anzahl);
  return kodiere(ebene, x, y, drehung.tausche, tabelle);
}

}  // namespace jpegneukodierung
