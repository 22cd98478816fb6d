#include "host/bericht/ausgabe/Tiffblock.h"

#include <algorithm>
#include <array>

namespace {

enum Tag : std::uint16_t { Unterbilder = 0x014a, Exif = 0x8769, Ort = 0x8825, Austausch = 0xa005 };
enum Typ : std::uint16_t { Long = 4, Verzeichnistyp = 13 };

/// Bytes of one value by its type. One that nobody knows counts as bytes.
constexpr std::array<std::uint8_t, 14> Breiten{1, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};

constexpr std::uint32_t Kopf = 8;
constexpr std::uint32_t Feld = 12;
/// More directories than any camera writes; a chain that leads in a circle ends by itself.
constexpr std::size_t Hoechstens_Verzeichnisse = 64;
constexpr std::uint16_t Letzter_Ortstag = 0x1f;
constexpr std::uint64_t Laengster_Ortswert = 0x10000;

}  // namespace

Tiffblock::Tiffblock(QByteArray& bytes, qsizetype anfang, qsizetype ende, Rand rand)
    : bytes_(bytes),
      anfang_(anfang),
      laenge_(static_cast<std::uint64_t>(std::max<qsizetype>(0, std::min(ende, bytes.size()) - anfang))),
      geraten_(rand == Rand::Geraten),
      gross_(QByteArrayView(bytes).sliced(anfang).startsWith('M')) {}

std::uint64_t Tiffblock::Eintrag::laenge() const {
  return std::uint64_t{typ < Breiten.size() ? Breiten.at(typ) : std::uint8_t{1}} * anzahl;
}

bool Tiffblock::hat(std::uint64_t stelle, std::uint64_t anzahl) const {
  return stelle <= laenge_ && anzahl <= laenge_ - stelle;
}

std::uint32_t Tiffblock::zahl(std::uint64_t stelle, unsigned breite) const {
  std::uint32_t wert = 0;
  for (unsigned i = 0; i < breite; ++i) {
    const auto ort = anfang_ + static_cast<qsizetype>(stelle + (gross_ ? i : breite - 1 - i));
    wert = wert << 8U | static_cast<std::uint8_t>(bytes_.at(ort));
  }
  return wert;
}

void Tiffblock::setze(std::uint64_t stelle, unsigned breite, std::uint32_t wert) {
  for (unsigned i = 0; i < breite; ++i)
    bytes_[anfang_ + static_cast<qsizetype>(stelle + i)] =
        static_cast<char>(wert >> 8U * (gross_ ? breite - 1 - i : i));
}

bool Tiffblock::lesbar() const {
  return hat(0, Kopf) && zahl(4, 4) >= Kopf && hat(zahl(4, 4), 2 + Feld);
}

/// As many of the directory's entries as lie in the block.
std::vector<Tiffblock::Eintrag> Tiffblock::eintraege(std::uint32_t stelle) const {
  std::vector<Eintrag> alle;
  if (!hat(stelle, 2)) return alle;
  const std::uint32_t anzahl = zahl(stelle, 2);
  for (std::uint64_t ort = std::uint64_t{stelle} + 2; alle.size() < anzahl && hat(ort, Feld); ort += Feld)
    alle.push_back({static_cast<std::uint16_t>(zahl(ort, 2)), static_cast<std::uint16_t>(zahl(ort + 2, 2)),
        zahl(ort + 4, 4), zahl(ort + 8, 4)});
  return alle;
}

bool Tiffblock::zeigt_auf_Ort(const Eintrag& eintrag) const {
  if (eintrag.tag != Ort) return false;
  return !geraten_ || ((eintrag.typ == Long || eintrag.typ == Verzeichnistyp) && eintrag.anzahl == 1);
}

/// The directories that a directory leads to.
void Tiffblock::folge(
    std::uint32_t stelle, const std::vector<Eintrag>& alle, std::vector<std::uint32_t>& offene) const {
  for (const Eintrag& eintrag : alle) {
    if (eintrag.tag == Exif || eintrag.tag == Austausch) offene.push_back(eintrag.wert);
    if (eintrag.tag != Unterbilder) continue;
    if (eintrag.anzahl == 1) offene.push_back(eintrag.wert);
    for (std::uint64_t i = 0; eintrag.anzahl > 1 && i < std::min<std::uint64_t>(eintrag.anzahl, 16); ++i)
      if (hat(eintrag.wert + 4 * i, 4)) offene.push_back(zahl(eintrag.wert + 4 * i, 4));
  }
  const std::uint64_t naechstes = std::uint64_t{stelle} + 2 + Feld * std::uint64_t{zahl(stelle, 2)};
  if (hat(naechstes, 4)) offene.push_back(zahl(naechstes, 4));
}

std::vector<Tiffblock::Zeiger> Tiffblock::sammle(std::vector<std::uint32_t>& verzeichnisse) const {
  std::vector<Zeiger> gefundene;
  std::vector<std::uint32_t> offene{zahl(4, 4)};
  while (!offene.empty() && verzeichnisse.size() < Hoechstens_Verzeichnisse) {
    const std::uint32_t stelle = offene.back();
    offene.pop_back();
    const bool gesehen = std::find(verzeichnisse.begin(), verzeichnisse.end(), stelle) != verzeichnisse.end();
    if (stelle < Kopf || gesehen || !hat(stelle, 2)) continue;
    verzeichnisse.push_back(stelle);
    const std::vector<Eintrag> alle = eintraege(stelle);
    for (std::uint32_t i = 0; i < alle.size(); ++i)
      if (zeigt_auf_Ort(alle[i])) gefundene.push_back({stelle, i, alle[i].wert});
    folge(stelle, alle, offene);
  }
  return gefundene;
}

bool Tiffblock::ist_Ortsverzeichnis(const std::vector<Eintrag>& alle) const {
  return std::all_of(alle.begin(), alle.end(), [](const Eintrag& e) {
    return e.tag <= Letzter_Ortstag && e.typ >= 1 && e.typ < Breiten.size() && e.laenge() <= Laengster_Ortswert;
  });
}

/// As much of it as lies in the block: of a file that was cut off, what is left goes too.
void Tiffblock::nulle(std::uint64_t stelle, std::uint64_t anzahl) {
  if (!hat(stelle, 0)) return;
  const auto von = bytes_.begin() + anfang_ + static_cast<qsizetype>(stelle);
  std::fill_n(von, static_cast<qsizetype>(std::min(anzahl, laenge_ - stelle)), '\0');
}

void Tiffblock::nulle_Verzeichnis(std::uint32_t stelle) {
  const std::vector<Eintrag> alle = eintraege(stelle);
  if (geraten_ && !ist_Ortsverzeichnis(alle)) return;
  for (const Eintrag& eintrag : alle)
    if (eintrag.laenge() > 4) nulle(eintrag.wert, eintrag.laenge());
  // A last entry that was cut off too.
  nulle(stelle, 2 + Feld * std::min<std::uint64_t>(alle.size() + 1, zahl(stelle, 2)));
}

/// The entries behind it and the position of the next directory move up.
void Tiffblock::streiche(const Zeiger& zeiger) {
  const std::uint32_t anzahl = zahl(zeiger.verzeichnis, 2);
  const std::uint64_t ende =
      std::min(laenge_, std::uint64_t{zeiger.verzeichnis} + 2 + Feld * std::uint64_t{anzahl} + 4);
  const std::uint64_t ort = std::uint64_t{zeiger.verzeichnis} + 2 + Feld * std::uint64_t{zeiger.nummer};
  const auto byte = [&](std::uint64_t stelle) { return bytes_.begin() + anfang_ + static_cast<qsizetype>(stelle); };
  std::copy(byte(ort + Feld), byte(ende), byte(ort));
  std::fill(byte(ende - Feld), byte(ende), '\0');
  setze(zeiger.verzeichnis, 2, anzahl - 1);
}

bool Tiffblock::entferne_Ort() {
  if (!lesbar()) return false;
  std::vector<std::uint32_t> verzeichnisse;
  std::vector<Zeiger> gefundene = sammle(verzeichnisse);
  for (const Zeiger& zeiger : gefundene) {
    // A pointer that leads back to a directory of the picture tells no place.
    const bool anderes = std::find(verzeichnisse.begin(), verzeichnisse.end(), zeiger.ziel) != verzeichnisse.end();
    if (!anderes && zeiger.ziel >= Kopf && hat(zeiger.ziel, 2)) nulle_Verzeichnis(zeiger.ziel);
  }
  // From the last entry on, so that what moves up is none that is still to go.
  std::reverse(gefundene.begin(), gefundene.end());
  for (const Zeiger& zeiger : gefundene)
    if (zahl(zeiger.verzeichnis, 2) > zeiger.nummer) streiche(zeiger);
  return !gefundene.empty();
}
