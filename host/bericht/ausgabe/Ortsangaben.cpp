#include "host/bericht/ausgabe/Ortsangaben.h"

#include <QByteArrayView>
#include <QtEndian>
#include <algorithm>
#include <array>

#include "host/bericht/ausgabe/Bytesuche.h"
#include "host/bericht/ausgabe/Pngtexte.h"
#include "host/bericht/ausgabe/Tiffblock.h"
#include "host/bericht/ausgabe/Xmpblock.h"

namespace ortsangaben {
namespace {

constexpr QByteArrayView Exif("Exif\0\0", 6);

/// A whole file that is such a structure begins so; those of raw formats that have signs of their own too.
constexpr std::array<QByteArrayView, 6> Dateikoepfe{QByteArrayView("II*\0", 4), QByteArrayView("MM\0*", 4),
    QByteArrayView("IIU\0", 4), QByteArrayView("IIRO"), QByteArrayView("IIRS"), QByteArrayView("MMOR")};

bool ist_Tiff(QByteArrayView bytes) {
  return std::any_of(
      Dateikoepfe.begin(), Dateikoepfe.end(), [&](QByteArrayView kopf) { return bytes.startsWith(kopf); });
}

bool ist_Kastendatei(QByteArrayView bytes) {
  return bytes.size() > 8 && bytes.sliced(4, 4) == "ftyp";
}

/// The bytes stand there.
bool steht(QByteArrayView bytes, qsizetype ort, QByteArrayView was) {
  return ort >= 0 && was.size() <= bytes.size() - ort && bytes.sliced(ort, was.size()) == was;
}

/// Where the block ends whose TIFF header stands there, as what is around it tells: the segment of a JPEG (ITU T.81),
/// the chunk of a PNG or that of a WebP. -1 where nothing tells it.
qsizetype blockende(QByteArrayView bytes, qsizetype kopf) {
  const bool exif = steht(bytes, kopf - Exif.size(), Exif);
  const qsizetype inhalt = exif ? kopf - Exif.size() : kopf;
  if (exif && steht(bytes, inhalt - 4, QByteArrayView("\xff\xe1", 2)))
    return inhalt - 2 + qFromBigEndian<quint16>(bytes.data() + inhalt - 2);
  if (steht(bytes, kopf - 4, "eXIf") && kopf >= 8)
    return kopf + static_cast<qsizetype>(qFromBigEndian<quint32>(bytes.data() + kopf - 8));
  if (steht(bytes, inhalt - 8, "EXIF"))
    return inhalt + static_cast<qsizetype>(qFromLittleEndian<quint32>(bytes.data() + inhalt - 4));
  return -1;
}

struct Blockbefund {
  bool etwas = false;
  /// Blocks that can be read, with place data or without.
  int lesbare = 0;
};

/// All TIFF structures of the file, found by their headers: so none is missed behind the end of the picture or in a
/// container that nobody has told us of.
Blockbefund entferne_aus_Bloecken(QByteArray& bytes) {
  Blockbefund befund;
  const auto nimm = [&](qsizetype ort) {
    const qsizetype ende = blockende(bytes, ort);
    Tiffblock block(
        bytes, ort, ende < 0 ? bytes.size() : ende, ende < 0 ? Tiffblock::Rand::Geraten : Tiffblock::Rand::Bekannt);
    if (!block.lesbar()) return;
    ++befund.lesbare;
    if (block.entferne_Ort()) befund.etwas = true;
  };
  if (ist_Tiff(bytes)) nimm(0);
  for (const QByteArrayView kopf : {QByteArrayView("II*\0", 4), QByteArrayView("MM\0*", 4)})
    for (qsizetype ort = bytesuche::erste(bytes, kopf); ort >= 0; ort = bytesuche::erste(bytes, kopf, ort + 1))
      nimm(ort);
  return befund;
}

/// Length of a place in the form of ISO 6709, as "+48.1374+011.5755/", or 0: latitude, longitude and perhaps a height.
qsizetype laenge_des_Ortes(QByteArrayView bytes, qsizetype ort) {
  const qsizetype anfang = ort;
  int brueche = 0;
  while (ort < bytes.size() && (bytes[ort] == '+' || bytes[ort] == '-')) {
    const qsizetype zahl = ++ort;
    while (ort < bytes.size() && ((bytes[ort] >= '0' && bytes[ort] <= '9') || bytes[ort] == '.')) ++ort;
    if (bytes.sliced(zahl, ort - zahl).indexOf('.') > 0) ++brueche;
  }
  return brueche >= 2 ? ort - anfang : 0;
}

/// The film of a phone's moving picture has its own place.
bool entferne_aus_Film(QByteArray& bytes) {
  if (bytesuche::erste(bytes, QByteArrayView("\xa9xyz")) < 0 && bytesuche::erste(bytes, "ISO6709") < 0) return false;
  bool etwas = false;
  for (qsizetype ort = bytesuche::erste(bytes, "ftyp"); ort >= 0 && ort < bytes.size(); ++ort) {
    const qsizetype laenge = laenge_des_Ortes(bytes, ort);
    if (laenge == 0) continue;
    std::fill_n(bytes.begin() + ort, laenge, '\0');
    etwas = true;
  }
  return etwas;
}

/// The container has an item that is an Exif block (ISO/IEC 14496-12, the entry of an item with 16 or 32 bits of name).
bool nennt_Exif(QByteArrayView bytes) {
  for (qsizetype ort = bytesuche::erste(bytes, "infe"); ort >= 0; ort = bytesuche::erste(bytes, "infe", ort + 1))
    if (steht(bytes, ort + 12, "Exif") || steht(bytes, ort + 14, "Exif")) return true;
  return false;
}

/// The large form of TIFF (BigTIFF, with its own widths) has an entry that points to place data.
bool nennt_Ort_gross(QByteArrayView bytes) {
  const bool gross = bytes.startsWith(QByteArrayView("MM\0+", 4));
  if (!gross && !bytes.startsWith(QByteArrayView("II+\0", 4))) return false;
  for (const char typ : {'\x04', '\x0d', '\x10', '\x12'}) {
    QByteArray eintrag = QByteArray("\x88\x25\0", 3) + typ + QByteArray("\0\0\0\0\0\0\0\1", 8);
    if (!gross) eintrag = QByteArray("\x25\x88", 2) + typ + QByteArray("\0\1\0\0\0\0\0\0\0", 9);
    if (bytesuche::erste(bytes, eintrag) >= 0) return true;
  }
  return false;
}

/// Whether bytes that nobody has read look as if they held a place.
bool sieht_nach_Ort_aus(QByteArrayView bytes, int lesbare_Bloecke) {
  for (const QByteArrayView rest : {QByteArrayView("GPSLatitude"), QByteArrayView("G\0P\0S\0L\0a\0t\0", 12)})
    if (bytesuche::erste(bytes, rest) >= 0) return true;
  if (ist_Kastendatei(bytes) && lesbare_Bloecke == 0 && nennt_Exif(bytes)) return true;
  if (steht(bytes, 4, "JXL "))
    return bytesuche::erste(bytes, "brobExif") >= 0 || bytesuche::erste(bytes, "brobxml ") >= 0;
  return nennt_Ort_gross(bytes);
}

}  // namespace

Befund entferne(QByteArray& bytes) {
  const QByteArray vorher = bytes;
  const bool png = pngtexte::ist_Png(bytes);
  bool etwas = png && pngtexte::entferne_Ort(bytes, [](QByteArray block) { return entferne(block) != Befund::Keine; });
  const Blockbefund bloecke = entferne_aus_Bloecken(bytes);
  etwas = bloecke.etwas || etwas;
  etwas = xmpblock::entferne_Ort(bytes) || etwas;
  etwas = entferne_aus_Film(bytes) || etwas;
  if (sieht_nach_Ort_aus(bytes, bloecke.lesbare)) return Befund::Nicht_zu_entfernen;
  if (etwas && png) pngtexte::erneuere_Pruefsummen(bytes, vorher);
  return etwas ? Befund::Entfernt : Befund::Keine;
}

}  // namespace ortsangaben
