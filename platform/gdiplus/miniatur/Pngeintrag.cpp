#include "platform/gdiplus/miniatur/Pngeintrag.h"

#include <zlib.h>

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <algorithm>
#include <array>

#include "platform/basic/Bytesicht.h"

namespace miniatur {
namespace {

constexpr QByteArrayView Signatur("\x89PNG\r\n\x1a\n", 8);
constexpr qsizetype Kopfende = 8 + 12 + 13;  // the signature and IHDR, a chunk of 13 bytes
constexpr qsizetype Rahmen = 12;             // length, kind and check sum of a chunk
constexpr std::uint32_t Groesste_Seite = 1024;
constexpr std::uint32_t Laengster_Text = 16 * 1024;
constexpr int Meiste_Texte = 32;

std::uint32_t pruefsumme(QByteArrayView bytes) noexcept {
  return static_cast<std::uint32_t>(
      crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

// 8 bits, three colours, no interlacing: depth, colour type, compression, filter, interlace.
bool ist_Kopf(const Bytesicht& b) noexcept {
  return b.beginnt(Signatur) && b.u32_hoch(8) == 13 && b.beginnt("IHDR", 12) && b.beginnt({"\x08\x02\0\0\0", 5}, 24);
}

bool seite_erlaubt(std::uint32_t seite) noexcept {
  return seite >= 1 && seite <= Groesste_Seite;
}

/// A whole chunk's check sum, over all but its length, is right.
bool stimmt(QByteArrayView stueck) noexcept {
  return Bytesicht(stueck).u32_hoch(static_cast<std::uint64_t>(stueck.size() - 4)) ==
      pruefsumme(stueck.sliced(4, stueck.size() - 8));
}

/// A sound tEXt chunk becomes a text; each key comes once.
bool nimm_Text(QByteArrayView stueck, Texte& texte) {
  if (!stimmt(stueck)) return false;
  const QByteArrayView inhalt = stueck.sliced(8, stueck.size() - Rahmen);
  const qsizetype trenner = inhalt.indexOf('\0');
  if (trenner < 1 || trenner > 79 || texte.size() == Meiste_Texte) return false;
  QByteArray schluessel = inhalt.first(trenner).toByteArray();
  if (std::any_of(texte.begin(), texte.end(), [&](const auto& t) { return t.first == schluessel; })) return false;
  texte.append({std::move(schluessel), inhalt.sliced(trenner + 1).toByteArray()});
  return true;
}

/// Only whole and sound chunks with pixels, then the end and nothing behind it. The decoder would see that too, but it
/// writes what it finds wrong to the standard error.
bool ist_ganz(const QByteArray& alle, qsizetype stelle) {
  const Bytesicht b(alle);
  while (b.beginnt("IDAT", stelle + 4)) {
    const qsizetype ganz = Rahmen + static_cast<qsizetype>(b.u32_hoch(static_cast<std::uint64_t>(stelle)));
    if (ganz > alle.size() - stelle || !stimmt(QByteArrayView(alle).sliced(stelle, ganz))) return false;
    stelle += ganz;
  }
  return stelle == alle.size() - Rahmen && b.beginnt({"\0\0\0\0IEND", 8}, stelle);
}

QByteArray stueck(QByteArrayView art, const QByteArray& inhalt) {
  const auto hohes_zuerst = [](std::uint32_t zahl) {
    QByteArray bytes(4, '\0');
    for (qsizetype i = 3; i >= 0; --i, zahl >>= 8) bytes[i] = static_cast<char>(zahl & 0xff);
    return bytes;
  };
  const QByteArray geprueft = art.toByteArray() + inhalt;
  return hohes_zuerst(static_cast<std::uint32_t>(inhalt.size())) + geprueft + hohes_zuerst(pruefsumme(geprueft));
}

QByteArray mit_Qt_geschrieben(const QImage& pixel) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  QImageWriter schreiber(&puffer, "png");
  // Stored as they are: packed, the grain of a photo takes half of the room and three times as long to read.
  schreiber.setCompression(0);
  return schreiber.write(pixel) ? bytes : QByteArray();
}

}  // namespace

Lesestand lies_Pngkopf(QByteArrayView anfang, Pngkopf& kopf) {
  const Bytesicht b(anfang);
  if (!b.hat(0, Kopfende)) return Lesestand::ZuKurz;
  const std::uint32_t breite = b.u32_hoch(16);
  const std::uint32_t hoehe = b.u32_hoch(20);
  if (!ist_Kopf(b) || b.u32_hoch(29) != pruefsumme(anfang.sliced(12, 17)) || !seite_erlaubt(breite) ||
      !seite_erlaubt(hoehe))
    return Lesestand::Kaputt;
  kopf = {{static_cast<int>(breite), static_cast<int>(hoehe)}, {}, Kopfende};
  while (true) {
    const auto stelle = static_cast<std::uint64_t>(kopf.pixel_ab);
    if (!b.hat(stelle, 8)) return Lesestand::ZuKurz;
    if (b.beginnt("IDAT", kopf.pixel_ab + 4)) return Lesestand::Ok;
    const std::uint32_t laenge = b.u32_hoch(stelle);
    if (!b.beginnt("tEXt", kopf.pixel_ab + 4) || laenge > Laengster_Text) return Lesestand::Kaputt;
    const qsizetype ganz = Rahmen + static_cast<qsizetype>(laenge);
    if (!b.hat(stelle, static_cast<std::uint64_t>(ganz))) return Lesestand::ZuKurz;
    if (!nimm_Text(anfang.sliced(kopf.pixel_ab, ganz), kopf.texte)) return Lesestand::Kaputt;
    kopf.pixel_ab += ganz;
  }
}

QImage lies_Pixel(const QByteArray& alle, const Pngkopf& kopf) {
  if (!ist_ganz(alle, kopf.pixel_ab)) return {};
  // The decoder gets the header and the pixels: no text of a file gets into its hands.
  QByteArray nur_Pixel = alle.first(Kopfende) + alle.sliced(kopf.pixel_ab);
  QBuffer puffer(&nur_Pixel);
  puffer.open(QIODevice::ReadOnly);
  QImageReader leser(&puffer, "png");
  leser.setAutoDetectImageFormat(false);
  QImage bild;
  if (!leser.read(&bild) || bild.size() != kopf.groesse) return {};
  return std::move(bild).convertToFormat(QImage::Format_RGB32);
}

QByteArray als_Png(const QImage& pixel, const Texte& texte) {
  const QByteArray roh = mit_Qt_geschrieben(pixel.convertToFormat(QImage::Format_RGB888));
  const Bytesicht b(roh);
  if (!ist_Kopf(b)) return {};
  QByteArray datei = roh.first(Kopfende);
  for (const auto& [schluessel, text] : texte) datei += stueck("tEXt", schluessel + '\0' + text);
  // Of the rest the chunks with pixels and the end; resolution and the like say nothing here.
  for (std::uint64_t stelle = Kopfende; b.hat(stelle, Rahmen);) {
    const std::uint64_t ganz = Rahmen + std::uint64_t{b.u32_hoch(stelle)};
    if (!b.hat(stelle, ganz)) return {};
    const auto p = static_cast<qsizetype>(stelle);
    if (b.beginnt("IDAT", p + 4) || b.beginnt("IEND", p + 4)) datei += roh.sliced(p, static_cast<qsizetype>(ganz));
    stelle += ganz;
  }
  return datei;
}

}  // namespace miniatur
