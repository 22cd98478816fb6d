#include "platform/gdiplus/bild/Bildkopf.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/basic/Bytesicht.h"
#include "platform/basic/Nachschlagen.h"

namespace {

constexpr QByteArrayView Pngsignatur("\x89PNG\r\n\x1a\n", 8);

// Check sum of a PNG chunk (W3C PNG, annex D), bit by bit: it only runs over the 17 bytes of the header chunk.
std::uint32_t png_Pruefsumme(const Bytesicht& bytes, std::uint64_t anfang, std::uint64_t anzahl) noexcept {
  std::uint32_t summe = 0xffffffffU;
  for (std::uint64_t i = anfang; i < anfang + anzahl; ++i) {
    summe ^= bytes.u8(i);
    for (int bit = 0; bit < 8; ++bit) summe = summe >> 1 ^ (summe & 1U ? 0xedb88320U : 0U);
  }
  return ~summe;
}

// The allowed pairs of colour type and bit depth (W3C PNG, table 11.1), a bit for each depth.
bool png_Farbart_erlaubt(unsigned art, unsigned tiefe) noexcept {
  static constexpr std::array<unsigned, 7> Tiefen{1 | 2 | 4 | 8 | 16, 0, 8 | 16, 1 | 2 | 4 | 8, 8 | 16, 0, 8 | 16};
  return art < Tiefen.size() && (tiefe & (tiefe - 1)) == 0 && (Tiefen[art] & tiefe) != 0;
}

struct BmpMasse {
  std::int64_t breite = 0;
  std::int64_t hoehe = 0;
  unsigned bits = 0;
  std::uint32_t kompression = 0;
};

// OS/2 1.x has a header of 12 bytes with 16-bit sides; all later ones begin like the Windows header.
BmpMasse bmp_Masse(const Bytesicht& b, std::uint64_t dib) {
  if (b.u32_tief(dib) == 12) return {b.u16_tief(dib + 4), b.u16_tief(dib + 6), b.u16_tief(dib + 10), 0};
  const auto seite = [&](std::uint64_t p) { return std::int64_t{static_cast<std::int32_t>(b.u32_tief(p))}; };
  return {seite(dib + 4), seite(dib + 8), b.u16_tief(dib + 14), b.u32_tief(dib + 16)};
}

// Windows: none, RLE8, RLE4, bit fields, bit fields with alpha.
bool bmp_Kodierung_erlaubt(const BmpMasse& m) noexcept {
  constexpr std::pair<std::uint32_t, unsigned> Erlaubt[] = {
      {0, 1}, {0, 4}, {0, 8}, {0, 16}, {0, 24}, {0, 32}, {1, 8}, {2, 4}, {3, 16}, {3, 32}, {6, 16}, {6, 32}};
  return std::ranges::count(Erlaubt, std::pair(m.kompression, m.bits)) > 0;
}

// Size of one picture of an icon file: a PNG, or a bitmap header whose height counts the mask too.
QSize ico_Groesse(QByteArrayView bytes, std::uint64_t stelle, std::uint64_t laenge) {
  const Bytesicht b(bytes);
  if (laenge == 0 || !b.hat(stelle, laenge)) return {};
  const QByteArrayView inhalt = bytes.sliced(static_cast<qsizetype>(stelle), static_cast<qsizetype>(laenge));
  if (inhalt.startsWith(Pngsignatur)) return bildkopf::png(inhalt).groesse;
  const std::uint32_t kopf = b.u32_tief(stelle);
  if (laenge < 40 || kopf < 40 || kopf > laenge) return {};
  const auto breite = static_cast<std::int32_t>(b.u32_tief(stelle + 4));
  const auto hoehe = static_cast<std::int32_t>(b.u32_tief(stelle + 8));
  return breite > 0 && breite <= 0x7fff && hoehe > 1 && hoehe <= 0xffff ? QSize(breite, hoehe / 2) : QSize();
}

}  // namespace

bool ist_haltbar(QSize groesse) noexcept {
  return flaeche(groesse) <= std::numeric_limits<std::int32_t>::max() / 4;
}

Bildformat erkenne_Bildformat(QByteArrayView anfang) {
  const Bytesicht b(anfang);
  if (b.beginnt("\xff\xd8")) return Bildformat::Jpeg;
  if (b.beginnt(Pngsignatur)) return Bildformat::Png;
  if (b.beginnt("GIF87a") || b.beginnt("GIF89a")) return Bildformat::Gif;
  if (b.beginnt("BM")) return Bildformat::Bmp;
  if (b.beginnt({"II*\0", 4}) || b.beginnt({"MM\0*", 4}) || b.beginnt({"II+\0", 4}) || b.beginnt({"MM\0+", 4}))
    return Bildformat::Tiff;
  if (b.beginnt({"\0\0\1\0", 4})) return Bildformat::Ico;
  return Bildformat::Unbekannt;
}

Bildkopf lies_Bildkopf(QByteArrayView bytes) {
  using Leser = Bildkopf (*)(QByteArrayView);
  constexpr std::pair<Bildformat, Leser> Alle[] = {{Bildformat::Jpeg, bildkopf::jpeg}, {Bildformat::Png, bildkopf::png},
      {Bildformat::Gif, bildkopf::gif}, {Bildformat::Bmp, bildkopf::bmp}, {Bildformat::Tiff, bildkopf::tiff},
      {Bildformat::Ico, bildkopf::ico}};
  const Leser leser = nachgeschlagen<Bildformat, Leser>(Alle, erkenne_Bildformat(bytes), nullptr);
  return leser ? leser(bytes) : Bildkopf();
}

namespace bildkopf {

Bildkopf defekt(Bildformat format) noexcept {
  return {format, Kopfbefund::Defekt, {}, 0};
}

Bildkopf gelesen(Bildformat format, std::uint64_t breite, std::uint64_t hoehe, std::uint64_t groesste_Seite) {
  if (breite == 0 || hoehe == 0) return defekt(format);
  const auto grenze = std::min<std::uint64_t>(groesste_Seite, 0x7fffffff);
  const QSize groesse(static_cast<int>(std::min(breite, grenze)), static_cast<int>(std::min(hoehe, grenze)));
  const bool passt = breite <= grenze && hoehe <= grenze && ist_haltbar(groesse);
  return {format, passt ? Kopfbefund::Ok : Kopfbefund::ZuGross, groesse, 0};
}

Bildkopf png(QByteArrayView bytes) {
  const Bytesicht b(bytes);
  const bool rahmen = b.hat(8, 25) && b.u32_hoch(8) == 13 && b.beginnt("IHDR", 12);
  if (!rahmen || png_Pruefsumme(b, 12, 17) != b.u32_hoch(29)) return defekt(Bildformat::Png);
  const bool verfahren = b.u8(26) == 0 && b.u8(27) == 0 && b.u8(28) <= 1;
  const std::uint32_t breite = b.u32_hoch(16);
  const std::uint32_t hoehe = b.u32_hoch(20);
  if (!verfahren || !png_Farbart_erlaubt(b.u8(25), b.u8(24)) || breite > 0x7fffffff || hoehe > 0x7fffffff)
    return defekt(Bildformat::Png);
  return gelesen(Bildformat::Png, breite, hoehe, 1'000'000);  // libpng's own limit for a side
}

Bildkopf gif(QByteArrayView bytes) {
  const Bytesicht b(bytes);
  if (!b.hat(0, 13)) return defekt(Bildformat::Gif);
  return gelesen(Bildformat::Gif, b.u16_tief(6), b.u16_tief(8));
}

Bildkopf bmp(QByteArrayView bytes) {
  const Bytesicht b(bytes);
  const std::uint32_t kopf = b.u32_tief(14);
  const bool bekannt = kopf == 12 || kopf == 40 || kopf == 52 || kopf == 56 || kopf == 64 || kopf == 108 || kopf == 124;
  if (!bekannt || !b.hat(14, kopf)) return defekt(Bildformat::Bmp);
  const BmpMasse m = bmp_Masse(b, 14);
  const std::uint32_t daten = b.u32_tief(10);
  if (m.breite <= 0 || !bmp_Kodierung_erlaubt(m) || daten < 14 + kopf || !b.hat(daten, 0))
    return defekt(Bildformat::Bmp);
  // A negative height means that the rows stand from top to bottom.
  return gelesen(Bildformat::Bmp, static_cast<std::uint64_t>(m.breite),
      static_cast<std::uint64_t>(m.hoehe < 0 ? -m.hoehe : m.hoehe));
}

Bildkopf ico(QByteArrayView bytes) {
  const Bytesicht b(bytes);
  const unsigned anzahl = b.u16_tief(4);
  if (!b.hat(6, std::uint64_t{anzahl} * 16)) return defekt(Bildformat::Ico);
  Bildkopf bester = defekt(Bildformat::Ico);
  for (unsigned i = 0; i < anzahl; ++i) {
    const std::uint64_t eintrag = 6 + std::uint64_t{i} * 16;
    const QSize groesse = ico_Groesse(bytes, b.u32_tief(eintrag + 12), b.u32_tief(eintrag + 8));
    if (groesse.isEmpty() || flaeche(groesse) <= flaeche(bester.groesse)) continue;
    bester = gelesen(
        Bildformat::Ico, static_cast<std::uint64_t>(groesse.width()), static_cast<std::uint64_t>(groesse.height()));
    bester.nummer = static_cast<int>(i);
  }
  return bester;
}

}  // namespace bildkopf
