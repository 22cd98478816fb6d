#include "host/bericht/ausgabe/Xmpblock.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "host/bericht/ausgabe/Bytesuche.h"

namespace {

constexpr QByteArrayView Anfang("<rdf:RDF");
constexpr QByteArrayView Schluss("</rdf:RDF>");
/// A piece of a packet that does not fit one segment; its identity, whole length and offset follow.
constexpr QByteArrayView Erweiterung("http://ns.adobe.com/xmp/extension/\0", 35);
constexpr qsizetype Kennung = 32;
constexpr qsizetype Erweiterungskopf = 40;

/// In lower case.
constexpr std::array<QByteArrayView, 13> Ortsworte{":gps", "latitude", "longitude", "iso6709", "geo:lat", "geo:long",
    "photoshop:city", "photoshop:state", "photoshop:country", "iptc4xmpcore:location", "iptc4xmpcore:countrycode",
    "iptc4xmpext:locat", "iptc4xmpext:sublocation"};

struct Stueck {
  qsizetype anfang = 0;
  qsizetype ende = 0;
};

void ueberschreibe(QByteArray& bytes, Stueck stueck) {
  std::fill(bytes.begin() + stueck.anfang, bytes.begin() + stueck.ende, ' ');
}

/// What is text from there on: a packet has neither of the two bytes that end it.
qsizetype textende(QByteArrayView bytes, qsizetype anfang) {
  const auto ende = std::find_if(bytes.begin() + anfang, bytes.end(), [](char c) { return c == '\0' || c == '\xff'; });
  return ende - bytes.begin();
}

Stueck erweiterung_bei(QByteArrayView bytes, qsizetype ort) {
  const qsizetype anfang = ort + Erweiterung.size() + Erweiterungskopf;
  if (ort < 4 || bytes[ort - 4] != '\xff' || bytes[ort - 3] != '\xe1' || anfang > bytes.size()) return {};
  const qsizetype ende = ort - 2 + qFromBigEndian<quint16>(bytes.data() + ort - 2);
  return {anfang, std::max(anfang, std::min(ende, bytes.size()))};
}

bool entferne_Erweiterungen(QByteArray& bytes) {
  std::map<QByteArray, std::pair<QByteArray, std::vector<Stueck>>> pakete;
  for (qsizetype ort = bytesuche::erste(bytes, Erweiterung); ort >= 0;
       ort = bytesuche::erste(bytes, Erweiterung, ort + 1)) {
    const Stueck stueck = erweiterung_bei(bytes, ort);
    auto& [text, stuecke] = pakete[bytes.mid(ort + Erweiterung.size(), Kennung)];
    text += bytes.mid(stueck.anfang, stueck.ende - stueck.anfang);
    stuecke.push_back(stueck);
  }
  bool etwas = false;
  for (const auto& [kennung, paket] : pakete) {
    if (!xmpblock::nennt_Ort(paket.first)) continue;
    for (const Stueck& stueck : paket.second) ueberschreibe(bytes, stueck);
    etwas = true;
  }
  return etwas;
}

bool entferne_Pakete(QByteArray& bytes) {
  bool etwas = false;
  for (qsizetype ort = bytesuche::erste(bytes, Anfang); ort >= 0; ort = bytesuche::erste(bytes, Anfang, ort + 1)) {
    qsizetype ende = textende(bytes, ort);
    const qsizetype schluss = bytesuche::erste(QByteArrayView(bytes).first(ende), Schluss, ort);
    if (schluss >= 0) ende = schluss + Schluss.size();
    if (!xmpblock::nennt_Ort(QByteArrayView(bytes).sliced(ort, ende - ort))) continue;
    ueberschreibe(bytes, {ort, ende});
    etwas = true;
  }
  return etwas;
}

}  // namespace

bool xmpblock::nennt_Ort(QByteArrayView text) {
  const QByteArray klein = text.toByteArray().toLower();
  return std::any_of(
      Ortsworte.begin(), Ortsworte.end(), [&](QByteArrayView wort) { return bytesuche::erste(klein, wort) >= 0; });
}

bool xmpblock::entferne_Ort(QByteArray& bytes) {
  // The pieces first: one of them may look like a packet that was cut off.
  const bool erweiterung = entferne_Erweiterungen(bytes);
  return entferne_Pakete(bytes) || erweiterung;
}
