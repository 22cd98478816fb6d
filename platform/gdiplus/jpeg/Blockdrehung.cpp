#include "platform/gdiplus/jpeg/Blockdrehung.h"

#include <algorithm>
#include <cstring>

#include "platform/basic/Laufzeitfehler.h"

using jpegkoeffizienten::Komponente;

namespace blockdrehung {
namespace {

// Eight coefficients of a row at once; the compiler makes of it what the processor has.
using Reihe = JCOEF __attribute__((vector_size(16)));
struct Block {
  Reihe reihe[DCTSIZE];
};

constexpr Reihe Nichts{};
constexpr Reihe Ungerade{0, -1, 0, -1, 0, -1, 0, -1};
constexpr Reihe Alle{-1, -1, -1, -1, -1, -1, -1, -1};

// Rows i and i + 4, element by element in turns; done three times this exchanges rows and columns.
void verschraenke(const Block& von, Block& nach) noexcept {
  for (int i = 0; i < 4; ++i) {
    nach.reihe[2 * i] = __builtin_shufflevector(von.reihe[i], von.reihe[i + 4], 0, 8, 1, 9, 2, 10, 3, 11);
    nach.reihe[2 * i + 1] = __builtin_shufflevector(von.reihe[i], von.reihe[i + 4], 4, 12, 5, 13, 6, 14, 7, 15);
  }
}

void begrenze(JCOEF* block) noexcept {
  constexpr JCOEF Grenze = 1023;
  block[0] = std::clamp<JCOEF>(block[0], -Grenze - 1, Grenze);
  for (int i = 1; i < DCTSIZE2; ++i) block[i] = std::clamp<JCOEF>(block[i], -Grenze, Grenze);
}

// The highest magnitude bits of all coefficients; exact enough to tell that none can be out of range.
bool ist_zu_pruefen(Reihe bits) noexcept {
  JCOEF einzeln[DCTSIZE];
  std::memcpy(einzeln, &bits, sizeof bits);
  return std::any_of(std::begin(einzeln), std::end(einzeln), [](JCOEF b) { return b >= 1023; });
}

}  // namespace

// In the frequencies mirroring changes the sign of every odd one along its axis.
void drehe(const JCOEF* von, JCOEF* nach, const Drehung& drehung) noexcept {
  Block b;
  std::memcpy(&b, von, sizeof b);
  if (drehung.tausche) {
    Block zwischen;
    verschraenke(b, zwischen);
    verschraenke(zwischen, b);
    verschraenke(b, zwischen);
    b = zwischen;
  }
  const Reihe gerade_Zeile = drehung.spiegle_x ? Ungerade : Nichts;
  const Reihe ungerade_Zeile = drehung.spiegle_y ? gerade_Zeile ^ Alle : gerade_Zeile;
  Reihe bits = Nichts;
  for (int i = 0; i < DCTSIZE; ++i) {
    const Reihe vorzeichen = i % 2 == 0 ? gerade_Zeile : ungerade_Zeile;
    b.reihe[i] = (b.reihe[i] ^ vorzeichen) - vorzeichen;
    bits |= b.reihe[i] ^ (b.reihe[i] >> 15);
  }
  std::memcpy(nach, &b, sizeof b);
  if (ist_zu_pruefen(bits)) begrenze(nach);
}

// Neighbouring columns of the source lie together in memory, so several rows of the result are turned at a time.
Gedreht::Gedreht(const Komponente& quelle, const Drehung& drehung, int je_Zugriff)
    : quelle_(quelle),
      drehung_(drehung),
      bloecke_(drehung.auf(quelle.bloecke)),
      hoehe_(static_cast<std::size_t>(je_Zugriff) * 4) {
  if (!band_.reserviere(hoehe_, static_cast<std::size_t>(bloecke_.width())))
    throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
}

JBLOCKARRAY Gedreht::zeilen(JDIMENSION anfang) noexcept {
  if (!gefuellt_ || anfang < anfang_ || anfang >= anfang_ + hoehe_) {
    anfang_ = anfang / hoehe_ * hoehe_;
    gefuellt_ = true;
    fuelle(anfang_, std::min(hoehe_, static_cast<std::size_t>(bloecke_.height()) - anfang_));
  }
  return band_.zeilen(anfang - anfang_);
}

void Gedreht::fuelle(std::size_t anfang, std::size_t anzahl) noexcept {
  const auto breite = static_cast<std::size_t>(bloecke_.width());
  const auto hoehe = static_cast<std::size_t>(bloecke_.height());
  for (std::size_t i = 0; i < breite; ++i) {
    const std::size_t x = drehung_.spiegle_x ? breite - 1 - i : i;
    for (std::size_t j = 0; j < anzahl; ++j) {
      const std::size_t y = drehung_.spiegle_y ? hoehe - 1 - anfang - j : anfang + j;
      const JCOEF* const von = drehung_.tausche ? quelle_.speicher.zeile(x)[y] : quelle_.speicher.zeile(y)[x];
      drehe(von, band_.zeile(j)[i], drehung_);
    }
  }
}

}  // namespace blockdrehung
