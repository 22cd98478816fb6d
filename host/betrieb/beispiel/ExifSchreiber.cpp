#include "host/betrieb/beispiel/ExifSchreiber.h"

#include <QList>
#include <QtEndian>

#include "platform/basic/Windows1252.h"

using namespace Qt::Literals::StringLiterals;

namespace exifschreiber {
namespace {

/// Field types of TIFF 6.0.
enum Feldtyp : std::uint16_t { Ascii = 2, Short = 3, Long = 4, Rational = 5, Undefined = 7 };

constexpr qsizetype Kopf = 8;
constexpr qsizetype Feldlaenge = 12;

class Schreiber {
 public:
  explicit Schreiber(Bytefolge folge) : gross_(folge == Bytefolge::Gross) {}

  template <class Zahl>
  QByteArray zahl(Zahl wert) const {
    QByteArray ziel(sizeof(Zahl), '\0');
    if (gross_)
      qToBigEndian(wert, ziel.data());
    else
      qToLittleEndian(wert, ziel.data());
    return ziel;
  }
  QByteArray zahl(Bruch bruch) const { return zahl(bruch.zaehler) + zahl(bruch.nenner); }

 private:
  bool gross_;
};

/// One image file directory: its fields, and behind them the values that do not fit a field.
class Verzeichnis {
 public:
  explicit Verzeichnis(const Schreiber& schreiber) : schreiber_(schreiber) {}

  void text(std::uint16_t tag, const QString& wert) {
    const QByteArray bytes = windows1252::encode(wert) + '\0';
    felder_.append({tag, Ascii, static_cast<std::uint32_t>(bytes.size()), bytes});
  }
  void kurz(std::uint16_t tag, std::uint16_t wert) { felder_.append({tag, Short, 1, schreiber_.zahl(wert)}); }
  void lang(std::uint16_t tag, std::uint32_t wert) { felder_.append({tag, Long, 1, schreiber_.zahl(wert)}); }
  void bruch(std::uint16_t tag, Bruch wert) { felder_.append({tag, Rational, 1, schreiber_.zahl(wert)}); }
  void roh(std::uint16_t tag, const QByteArray& wert) {
    felder_.append({tag, Undefined, static_cast<std::uint32_t>(wert.size()), wert});
  }

  /// Length in bytes with all values.
  qsizetype laenge() const {
    qsizetype summe = feste_Laenge();
    for (const Feld& feld : felder_)
      if (feld.wert.size() > 4) summe += gerade(feld.wert.size());
    return summe;
  }
  /// The directory's bytes when it begins at `ort`, counted from the TIFF header; no directory follows in its chain.
  QByteArray bytes(qsizetype ort) const {
    QByteArray felder = schreiber_.zahl(static_cast<std::uint16_t>(felder_.size()));
    QByteArray werte;
    for (const Feld& feld : felder_) {
      felder += schreiber_.zahl(feld.tag) + schreiber_.zahl<std::uint16_t>(feld.typ) + schreiber_.zahl(feld.anzahl);
      if (feld.wert.size() <= 4) {
        felder += feld.wert.leftJustified(4, '\0');
        continue;
      }
      felder += schreiber_.zahl(static_cast<std::uint32_t>(ort + feste_Laenge() + werte.size()));
      werte += feld.wert.leftJustified(gerade(feld.wert.size()), '\0');
    }
    return felder + schreiber_.zahl<std::uint32_t>(0) + werte;
  }

 private:
  struct Feld {
    std::uint16_t tag;
    Feldtyp typ;
    std::uint32_t anzahl;
    QByteArray wert;
  };
  static qsizetype gerade(qsizetype n) { return n + n % 2; }
  qsizetype feste_Laenge() const { return 2 + felder_.size() * Feldlaenge + 4; }

  const Schreiber& schreiber_;
  QList<Feld> felder_;
};

QString zeittext(const QDateTime& zeit) {
  return zeit.toString(u"yyyy:MM:dd HH:mm:ss"_s);
}

/// The fields of the picture itself. They stand in the order of their tags, as TIFF asks.
void fuelle_Hauptverzeichnis(Verzeichnis& haupt, const Aufnahme& a) {
  haupt.text(270, a.beschreibung);
  haupt.text(271, a.hersteller);
  haupt.text(272, a.modell);
  haupt.kurz(274, a.ausrichtung);
  haupt.bruch(282, {72, 1});
  haupt.bruch(283, {72, 1});
  haupt.kurz(296, 2);
  haupt.text(306, zeittext(a.zeit));
}

/// The fields of the shot.
void fuelle_Aufnahme(Verzeichnis& exif, const Aufnahme& a) {
  exif.bruch(33434, a.belichtung);
  exif.bruch(33437, a.blende);
  exif.kurz(34855, a.iso);
  exif.roh(36864, "0220");
  exif.text(36867, zeittext(a.zeit));
  exif.bruch(37386, a.brennweite);
  exif.lang(40962, static_cast<std::uint32_t>(a.groesse.width()));
  exif.lang(40963, static_cast<std::uint32_t>(a.groesse.height()));
}

}  // namespace

QByteArray mit_Exif(const QByteArray& jpeg, const Aufnahme& aufnahme, Bytefolge folge) {
  const Schreiber schreiber(folge);
  Verzeichnis haupt(schreiber);
  fuelle_Hauptverzeichnis(haupt, aufnahme);
  // The pointer's own field counts in the length, so it takes part with any value first.
  Verzeichnis mit_Zeiger = haupt;
  mit_Zeiger.lang(34665, 0);
  const qsizetype ort_Exif = Kopf + mit_Zeiger.laenge();
  haupt.lang(34665, static_cast<std::uint32_t>(ort_Exif));
  Verzeichnis exif(schreiber);
  fuelle_Aufnahme(exif, aufnahme);

  const QByteArray tiff = QByteArray(folge == Bytefolge::Gross ? "MM" : "II") + schreiber.zahl<std::uint16_t>(42) +
      schreiber.zahl<std::uint32_t>(Kopf) + haupt.bytes(Kopf) + exif.bytes(ort_Exif);
  const QByteArray inhalt = QByteArray("Exif\0\0", 6) + tiff;
  const QByteArray laenge = Schreiber(Bytefolge::Gross).zahl(static_cast<std::uint16_t>(inhalt.size() + 2));
  return jpeg.left(2) + "\xFF\xE1" + laenge + inhalt + jpeg.mid(2);
}

}  // namespace exifschreiber
