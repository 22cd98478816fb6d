#include "host/bericht/ausgabe/Pngtexte.h"

#include <zlib.h>

#include <QtEndian>
#include <algorithm>
#include <array>

#include "host/bericht/ausgabe/Xmpblock.h"

namespace {

constexpr QByteArrayView Signatur("\x89PNG\r\n\x1a\n", 8);
/// Optional, private, and to be copied by whoever does not know it.
constexpr QByteArrayView Leere_Art("leEr");
constexpr QByteArrayView Rohes_Profil("Raw profile type ");
constexpr qsizetype Kopf = 8;
constexpr qsizetype Summe = 4;
/// No text that tells a place is longer once it is unpacked.
constexpr qsizetype Laengster_Text = 16 << 20;

/// From its kind on: where its data begin and end.
struct Chunk {
  qsizetype anfang = 0;
  qsizetype ende = 0;
  QByteArrayView art(QByteArrayView png) const { return png.sliced(anfang - 4, 4); }
  QByteArrayView daten(QByteArrayView png) const { return png.sliced(anfang, ende - anfang); }
};

/// The chunks in their order; a last one that was cut off is as long as it is.
template <class Tat>
void fuer_jeden_Chunk(QByteArrayView png, Tat&& tun) {
  for (qsizetype ort = Signatur.size(); png.size() - ort >= Kopf;) {
    const qsizetype laenge = qFromBigEndian<quint32>(png.data() + ort);
    const Chunk chunk{ort + Kopf, ort + Kopf + std::min(laenge, png.size() - ort - Kopf)};
    tun(chunk);
    ort = chunk.ende + Summe;
  }
}

/// As much as can be unpacked.
QByteArray entpackt(QByteArrayView gepackt) {
  z_stream strom{};
  if (::inflateInit(&strom) != Z_OK) return {};
  QByteArray text;
  std::array<char, 1 << 15> teil{};
  // zlib's interface does not know const, but never writes there.
  strom.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(gepackt.data()));
  strom.avail_in = static_cast<uInt>(gepackt.size());
  int stand = Z_OK;
  while (stand == Z_OK && text.size() < Laengster_Text) {
    strom.next_out = reinterpret_cast<Bytef*>(teil.data());
    strom.avail_out = static_cast<uInt>(teil.size());
    stand = ::inflate(&strom, Z_NO_FLUSH);
    text.append(teil.data(), static_cast<qsizetype>(teil.size() - strom.avail_out));
  }
  ::inflateEnd(&strom);
  return text;
}

QByteArray gelesener_Text(QByteArrayView art, QByteArrayView daten) {
  if (art == "tEXt") return daten.toByteArray();
  if (art == "zTXt") return entpackt(daten.sliced(std::min<qsizetype>(1, daten.size())));
  if (daten.size() < 2 || daten[0] == '\0') return daten.toByteArray();
  // Language and translated key word stand before the text.
  const qsizetype sprache = daten.indexOf('\0', 2);
  const qsizetype wort = sprache < 0 ? -1 : daten.indexOf('\0', sprache + 1);
  return wort < 0 ? QByteArray() : entpackt(daten.sliced(wort + 1));
}

/// The bytes of a block that a program has written as text: its name, its length and its bytes in hexadecimal digits,
/// each on lines of their own.
QByteArray rohes_Profil(const QByteArray& text) {
  const qsizetype name = text.indexOf('\n', 1);
  const qsizetype laenge = name < 0 ? -1 : text.indexOf('\n', name + 1);
  return laenge < 0 ? QByteArray() : QByteArray::fromHex(text.mid(laenge + 1));
}

bool nennt_Ort(QByteArrayView art, QByteArrayView daten, const std::function<bool(QByteArray)>& ort_im_Block) {
  const qsizetype ende = daten.indexOf('\0');
  if (ende < 0) return xmpblock::nennt_Ort(daten);
  const QByteArrayView schluesselwort = daten.first(ende);
  const QByteArray text = gelesener_Text(art, daten.sliced(ende + 1));
  if (schluesselwort.startsWith(Rohes_Profil) && ort_im_Block(rohes_Profil(text))) return true;
  return xmpblock::nennt_Ort(schluesselwort) || xmpblock::nennt_Ort(text);
}

}  // namespace

bool pngtexte::ist_Png(QByteArrayView bytes) {
  return bytes.startsWith(Signatur);
}

bool pngtexte::entferne_Ort(QByteArray& png, const std::function<bool(QByteArray block)>& ort_im_Block) {
  bool etwas = false;
  const QByteArray vorher = png;
  fuer_jeden_Chunk(vorher, [&](const Chunk& chunk) {
    const QByteArrayView art = chunk.art(vorher);
    if (art != "tEXt" && art != "zTXt" && art != "iTXt") return;
    if (!nennt_Ort(art, chunk.daten(vorher), ort_im_Block)) return;
    std::copy(Leere_Art.begin(), Leere_Art.end(), png.begin() + chunk.anfang - Leere_Art.size());
    std::fill(png.begin() + chunk.anfang, png.begin() + chunk.ende, '\0');
    etwas = true;
  });
  return etwas;
}

void pngtexte::erneuere_Pruefsummen(QByteArray& png, QByteArrayView vorher) {
  fuer_jeden_Chunk(vorher, [&](const Chunk& chunk) {
    const QByteArrayView neu = QByteArrayView(png).sliced(chunk.anfang - 4, chunk.ende - chunk.anfang + 4);
    if (neu == vorher.sliced(chunk.anfang - 4, neu.size()) || png.size() - chunk.ende < Summe) return;
    const uLong summe = ::crc32(0, reinterpret_cast<const Bytef*>(neu.data()), static_cast<uInt>(neu.size()));
    qToBigEndian(static_cast<quint32>(summe), png.data() + chunk.ende);
  });
}
