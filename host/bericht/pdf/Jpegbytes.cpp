#include "host/bericht/pdf/Jpegbytes.h"

#include <QtEndian>
#include <array>

namespace jpegbytes {
namespace {

enum Marke : quint8 {
  SOF0 = 0xc0,
  SOF2 = 0xc2,
  DHT = 0xc4,
  JPG = 0xc8,
  DAC = 0xcc,
  SOF15 = 0xcf,
  RST0 = 0xd0,
  RST7 = 0xd7,
  SOI = 0xd8,
  EOI = 0xd9,
  SOS = 0xda,
  APP0 = 0xe0,
  APP14 = 0xee,
  APP15 = 0xef,
  COM = 0xfe
};

/// A marker with the bytes that belong to it, its own two included.
struct Abschnitt {
  quint8 marke = 0;
  QByteArrayView bytes;
  /// Behind the marker and its length.
  QByteArrayView inhalt() const { return bytes.size() > 4 ? bytes.sliced(4) : QByteArrayView(); }
};

quint8 byte(QByteArrayView bytes, qsizetype ort) {
  return static_cast<quint8>(bytes[ort]);
}

/// Walks from marker to marker; coded data belongs to the scan's header in front of it.
class Gang {
 public:
  explicit Gang(QByteArrayView bytes) : bytes_(bytes) {}

  std::optional<Abschnitt> naechster() {
    while (ort_ + 1 < bytes_.size() && byte(bytes_, ort_) == 0xff && byte(bytes_, ort_ + 1) == 0xff) ++ort_;
    if (ort_ + 2 > bytes_.size() || byte(bytes_, ort_) != 0xff) return std::nullopt;
    const quint8 marke = byte(bytes_, ort_ + 1);
    if (marke == SOI || marke == EOI) return nimm(marke, 2);
    if (ort_ + 4 > bytes_.size()) return std::nullopt;
    qsizetype laenge = 2 + qFromBigEndian<quint16>(bytes_.data() + ort_ + 2);
    if (laenge < 4 || ort_ + laenge > bytes_.size()) return std::nullopt;
    if (marke == SOS) laenge = hinter_den_Daten(ort_ + laenge) - ort_;
    return nimm(marke, laenge);
  }

 private:
  Abschnitt nimm(quint8 marke, qsizetype laenge) {
    const Abschnitt abschnitt{marke, bytes_.sliced(ort_, laenge)};
    ort_ += laenge;
    return abschnitt;
  }

  /// Where the next marker stands that is no part of the coded data.
  qsizetype hinter_den_Daten(qsizetype ort) const {
    for (;;) {
      ort = bytes_.indexOf('\xff', ort);
      if (ort < 0 || ort + 1 >= bytes_.size()) return bytes_.size();
      const quint8 danach = byte(bytes_, ort + 1);
      if (danach != 0 && danach != 0xff && (danach < RST0 || danach > RST7)) return ort;
      ort += danach == 0xff ? 1 : 2;
    }
  }

  QByteArrayView bytes_;
  qsizetype ort_ = 0;
};

bool ist_Rahmenkopf(quint8 marke) {
  return marke >= SOF0 && marke <= SOF15 && marke != DHT && marke != JPG && marke != DAC;
}

bool ist_Adobe(const Abschnitt& abschnitt) {
  return abschnitt.marke == APP14 && abschnitt.inhalt().startsWith("Adobe");
}

/// Without any other word, libjpeg takes components of these names for red, green and blue; a PDF reader does not.
bool heissen_RGB(QByteArrayView inhalt) {
  constexpr std::array<char, 3> Namen{'R', 'G', 'B'};
  for (qsizetype i = 0; i < 3; ++i)
    if (inhalt.size() <= 6 + 3 * i || inhalt[6 + 3 * i] != Namen.at(static_cast<std::size_t>(i))) return false;
  return true;
}

}  // namespace

std::optional<Kopf> lies_Kopf(QByteArrayView bytes) {
  if (bytes.size() < 4 || byte(bytes, 0) != 0xff || byte(bytes, 1) != SOI) return std::nullopt;
  bool gekennzeichnet = false;
  Gang gang(bytes);
  while (const std::optional<Abschnitt> abschnitt = gang.naechster()) {
    if (abschnitt->marke == SOS || abschnitt->marke == EOI) return std::nullopt;
    gekennzeichnet = gekennzeichnet || ist_Adobe(*abschnitt) || abschnitt->marke == APP0;
    if (!ist_Rahmenkopf(abschnitt->marke)) continue;
    const QByteArrayView inhalt = abschnitt->inhalt();
    if (abschnitt->marke > SOF2 || inhalt.size() < 9 || inhalt[0] != 8) return std::nullopt;
    const Kopf kopf{
        {qFromBigEndian<quint16>(inhalt.data() + 3), qFromBigEndian<quint16>(inhalt.data() + 1)}, byte(inhalt, 5)};
    if (kopf.groesse.isEmpty() || (kopf.farben != 1 && kopf.farben != 3)) return std::nullopt;
    if (!gekennzeichnet && heissen_RGB(inhalt)) return std::nullopt;
    return kopf;
  }
  return std::nullopt;
}

QByteArray ohne_Beiwerk(QByteArrayView bytes) {
  QByteArray rein;
  rein.reserve(bytes.size());
  Gang gang(bytes);
  while (const std::optional<Abschnitt> abschnitt = gang.naechster()) {
    const bool beiwerk = abschnitt->marke == COM || (abschnitt->marke >= APP0 && abschnitt->marke <= APP15);
    const bool noetig = ist_Adobe(*abschnitt) || (abschnitt->marke == APP0 && abschnitt->inhalt().startsWith("JFIF"));
    if (beiwerk && !noetig) continue;
    rein.append(abschnitt->bytes);
    if (abschnitt->marke == EOI) return rein;
  }
  // Cut short: its readers show what there is, but want an end.
  return rein.append("\xff\xd9", 2);
}

}  // namespace jpegbytes
