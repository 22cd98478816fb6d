#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QtEndian>

/// Pictures that tell a place, made byte by byte, and an independent look at what is left of it.
namespace ortsbild {

/// Order of the bytes in a number.
enum class Folge { Klein, Gross };

/// What stands in the files and must not be found afterwards: the date of the satellites and the seconds of the
/// latitude.
inline const QByteArray Datum = "2024:05:17";
inline constexpr quint32 Sekunden = 0x5afec0de;

inline QByteArray zahl(quint32 wert, int breite, Folge folge) {
  QByteArray bytes;
  for (int i = 0; i < breite; ++i)
    bytes.append(static_cast<char>(wert >> (8 * (folge == Folge::Gross ? breite - 1 - i : i))));
  return bytes;
}

/// One entry of a directory; a value of more than four bytes lies elsewhere.
struct Feld {
  quint16 tag;
  quint16 typ;
  quint32 anzahl;
  QByteArray wert;
};

/// A directory at `ort`, its values behind it.
inline QByteArray verzeichnis(const QList<Feld>& felder, quint32 ort, quint32 naechstes, Folge folge) {
  QByteArray kopf = zahl(static_cast<quint32>(felder.size()), 2, folge);
  QByteArray werte;
  const quint32 ende = ort + 2 + 12 * static_cast<quint32>(felder.size()) + 4;
  for (const Feld& f : felder) {
    kopf += zahl(f.tag, 2, folge) + zahl(f.typ, 2, folge) + zahl(f.anzahl, 4, folge);
    if (f.wert.size() <= 4) {
      kopf += f.wert.leftJustified(4, '\0');
      continue;
    }
    kopf += zahl(ende + static_cast<quint32>(werte.size()), 4, folge);
    werte += f.wert;
  }
  return kopf + zahl(naechstes, 4, folge) + werte;
}

inline QByteArray bruch(quint32 zaehler, quint32 nenner, Folge folge) {
  return zahl(zaehler, 4, folge) + zahl(nenner, 4, folge);
}

inline QByteArray ortsverzeichnis(quint32 ort, Folge folge) {
  const QByteArray breite = bruch(48, 1, folge) + bruch(8, 1, folge) + bruch(Sekunden, 100, folge);
  const QByteArray laenge = bruch(11, 1, folge) + bruch(34, 1, folge) + bruch(Sekunden, 100, folge);
  return verzeichnis({{0, 1, 4, QByteArray("\2\3\0\0", 4)}, {1, 2, 2, "N"}, {2, 5, 3, breite}, {3, 2, 2, "E"},
                         {4, 5, 3, laenge}, {29, 2, 11, Datum + '\0'}},
      ort, 0, folge);
}

/// The structure of an Exif block: maker, orientation, the shot, the place, one entry behind it, and a second
/// directory.
inline QByteArray tiff(Folge folge, bool mit_Ort = true) {
  const auto zeiger = [&](quint32 wert) { return zahl(wert, 4, folge); };
  const auto haupt = [&](quint32 exif, quint32 ort, quint32 zweites) {
    QList<Feld> felder{{0x010f, 2, 11, QByteArray("Fernsprech\0", 11)}, {0x0112, 3, 1, zahl(6, 2, folge)},
        {0x8769, 4, 1, zeiger(exif)}};
    if (mit_Ort) felder.append({0x8825, 4, 1, zeiger(ort)});
    felder.append({0xc4a5, 7, 8, "PrintIM\0"});
    return verzeichnis(felder, 8, zweites, folge);
  };
  const auto laenge_Haupt = static_cast<quint32>(haupt(0, 0, 0).size());
  const QByteArray exif =
      verzeichnis({{0x9003, 2, 20, QByteArray("2019:01:02 03:04:05\0", 20)}}, 8 + laenge_Haupt, 0, folge);
  const quint32 ort = 8 + laenge_Haupt + static_cast<quint32>(exif.size());
  const QByteArray ortsteil = mit_Ort ? ortsverzeichnis(ort, folge) : QByteArray();
  const quint32 zweites = ort + static_cast<quint32>(ortsteil.size());
  return QByteArray(folge == Folge::Gross ? "MM" : "II") + zahl(42, 2, folge) + zahl(8, 4, folge) +
      haupt(8 + laenge_Haupt, ort, zweites) + exif + ortsteil +
      verzeichnis({{0x0103, 3, 1, zahl(6, 2, folge)}}, zweites, 0, folge);
}

inline QByteArray segment(char marke, const QByteArray& inhalt) {
  return QByteArray("\xff") + marke + zahl(static_cast<quint32>(inhalt.size() + 2), 2, Folge::Gross) + inhalt;
}
inline QByteArray exif_Segment(const QByteArray& block) {
  return segment('\xe1', QByteArray("Exif\0\0", 6) + block);
}
/// A JPEG with segments behind its first marker.
inline QByteArray mit(const QByteArray& jpeg, const QByteArray& segmente) {
  return jpeg.left(2) + segmente + jpeg.mid(2);
}

inline QByteArray xmp(const QByteArray& eigenschaften) {
  return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0\"?><x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
         "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" " +
      eigenschaften + "/></rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";
}
inline const QByteArray Ortseigenschaft = "exif:GPSLatitude=\"48,8.1440N\" exif:GPSLongitude=\"11,34.5N\"";

/// The directories of a structure in their chain: each one's tags with type, number and the bytes of the value, read
/// apart from the product.
inline QList<QMap<quint16, QByteArray>> gelesen(const QByteArray& tiff) {
  const bool gross = tiff.startsWith('M');
  const auto lies = [&](quint32 ort, int breite) {
    quint32 wert = 0;
    for (int i = 0; i < breite; ++i)
      wert = wert << 8 | static_cast<quint8>(tiff.at(static_cast<qsizetype>(ort) + (gross ? i : breite - 1 - i)));
    return wert;
  };
  QList<QMap<quint16, QByteArray>> alle;
  for (quint32 ort = lies(4, 4); ort != 0;) {
    const quint32 anzahl = lies(ort, 2);
    QMap<quint16, QByteArray> felder;
    for (quint32 i = 0; i < anzahl; ++i) {
      const quint32 feld = ort + 2 + 12 * i;
      const quint32 typ = lies(feld + 2, 2);
      const quint32 laenge = lies(feld + 4, 4) * (typ == 3 ? 2 : typ == 4 ? 4 : 1);
      felder[static_cast<quint16>(lies(feld, 2))] = tiff.mid(laenge > 4 ? lies(feld + 8, 4) : feld + 8, laenge);
    }
    alle.append(felder);
    ort = lies(ort + 2 + 12 * anzahl, 4);
  }
  return alle;
}

inline bool nennt_Ort(const QByteArray& bytes) {
  return bytes.contains(Datum) || bytes.contains(zahl(Sekunden, 4, Folge::Klein)) ||
      bytes.contains(zahl(Sekunden, 4, Folge::Gross));
}

}  // namespace ortsbild
