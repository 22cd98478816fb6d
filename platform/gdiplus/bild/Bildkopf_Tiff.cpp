#include <optional>

#include "platform/basic/Bytesicht.h"
#include "platform/basic/Nachschlagen.h"
#include "platform/gdiplus/bild/Bildkopf.h"

// TIFF 6.0 and BigTIFF (libtiff's "BigTIFF design"): only the first directory counts.
namespace {

constexpr std::uint16_t ImageWidth = 256;
constexpr std::uint16_t ImageLength = 257;

struct Verzeichnis {
  std::uint64_t erster_Eintrag = 0;
  std::uint64_t anzahl = 0;
  unsigned eintrag = 12;  ///< bytes of an entry
  unsigned wert = 8;      ///< position of the value in it
  bool hohes_zuerst = false;
};

bool ist_hohes_zuerst(const Bytesicht& b) noexcept {
  return b.u8(0) == 'M';
}

bool ist_gross(const Bytesicht& b) noexcept {
  return b.zahl(2, 2, ist_hohes_zuerst(b)) == 43;
}

// Where the header says that the first directory stands; it can't stand in the header.
std::optional<std::uint64_t> stelle_im_Kopf(const Bytesicht& b) {
  const bool hoch = ist_hohes_zuerst(b);
  const bool gross = ist_gross(b);
  if (gross && (b.zahl(4, 2, hoch) != 8 || !b.hat(0, 16))) return std::nullopt;
  if (!b.hat(0, 8)) return std::nullopt;
  const std::uint64_t stelle = gross ? b.zahl(8, 8, hoch) : b.zahl(4, 4, hoch);
  return stelle < 8 ? std::nullopt : std::optional(stelle);
}

std::optional<Verzeichnis> erstes_Verzeichnis(const Bytesicht& b) {
  Verzeichnis v;
  v.hohes_zuerst = ist_hohes_zuerst(b);
  const bool gross = ist_gross(b);
  const auto stelle = stelle_im_Kopf(b);
  const unsigned zaehler = gross ? 8 : 2;
  if (!stelle || !b.hat(*stelle, zaehler)) return std::nullopt;
  v.anzahl = b.zahl(*stelle, zaehler, v.hohes_zuerst);
  v.erster_Eintrag = *stelle + zaehler;
  if (gross) {
    v.eintrag = 20;
    v.wert = 12;
  }
  // No directory has more entries than there are tags.
  if (v.anzahl == 0 || v.anzahl > 0xffff || !b.hat(v.erster_Eintrag, v.anzahl * v.eintrag)) return std::nullopt;
  return v;
}

// Sides come as BYTE, SHORT, LONG or LONG8; any other type is none.
std::uint64_t ganzzahl(const Bytesicht& b, const Verzeichnis& v, std::uint64_t eintrag) {
  constexpr std::pair<std::uint64_t, unsigned> Breiten[] = {{1, 1}, {3, 2}, {4, 4}, {16, 8}};
  const unsigned breite = nachgeschlagen(Breiten, b.zahl(eintrag + 2, 2, v.hohes_zuerst), 0U);
  return breite == 8 && v.eintrag != 20 ? 0 : b.zahl(eintrag + v.wert, breite, v.hohes_zuerst);
}

}  // namespace

std::optional<std::uint64_t> bildkopf::tiff_Verzeichnis(QByteArrayView anfang) {
  return stelle_im_Kopf(Bytesicht(anfang));
}

QByteArray bildkopf::tiff_gekuerzt(QByteArrayView anfang, QByteArrayView verzeichnis) {
  const Bytesicht b(anfang);
  QByteArray kurz = anfang.toByteArray();
  const qsizetype feld = ist_gross(b) ? 8 : 4;  // its position and its length as well
  kurz.replace(feld, feld, QByteArray(feld, 0));
  kurz[ist_hohes_zuerst(b) ? 2 * feld - 1 : feld] = static_cast<char>(Signaturlaenge);
  return kurz + verzeichnis.toByteArray();
}

Bildkopf bildkopf::tiff(QByteArrayView bytes) {
  const Bytesicht b(bytes);
  const auto v = erstes_Verzeichnis(b);
  if (!v) return defekt(Bildformat::Tiff);
  std::uint64_t breite = 0;
  std::uint64_t hoehe = 0;
  for (std::uint64_t i = 0; i < v->anzahl; ++i) {
    const std::uint64_t eintrag = v->erster_Eintrag + i * v->eintrag;
    const auto marke = b.zahl(eintrag, 2, v->hohes_zuerst);
    if (marke == ImageWidth && breite == 0) breite = ganzzahl(b, *v, eintrag);
    if (marke == ImageLength && hoehe == 0) hoehe = ganzzahl(b, *v, eintrag);
  }
  return gelesen(Bildformat::Tiff, breite, hoehe);
}
