#include "host/betrieb/aufnahme/Umwandlung.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QScopeGuard>
#include <QtEndian>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/aufnahme/Heifleser.h"
#include "imaging/Aufrichtung.h"

using namespace Qt::Literals::StringLiterals;

namespace umwandlung {
namespace {

constexpr int Guete = 92;
constexpr int Groesste_Seite = 65500;
/// An APP1 segment holds 65,533 bytes, six of them its name.
constexpr qsizetype Groesster_Exifblock = 65527;

Abbruch unlesbar(const QString& grund) {
  return {Ausgang::Datei, grund};
}

bool ist_Heif(QByteArrayView anfang) {
  if (anfang.size() < 12 || anfang.sliced(4, 4) != "ftyp") return false;
  const qsizetype laenge = qBound<qsizetype>(12, qFromBigEndian<quint32>(anfang.data()), anfang.size());
  // The main brand and those it is compatible with; between them stands a version.
  for (qsizetype ort = 8; ort + 4 <= laenge; ort += 4) {
    const QByteArrayView marke = anfang.sliced(ort, 4);
    for (const QByteArrayView eine : {"heic", "heix", "heim", "heis", "hevc", "hevx", "mif1", "msf1", "avif", "avis"})
      if (ort != 12 && marke == eine) return true;
  }
  return false;
}

/// The chunk of that name in a RIFF file, or nothing.
QByteArray stueck(const QByteArray& riff, QByteArrayView name) {
  for (qsizetype ort = 12; ort + 8 <= riff.size();) {
    const qsizetype laenge = qFromLittleEndian<quint32>(riff.constData() + ort + 4);
    if (QByteArrayView(riff).sliced(ort, 4) == name) return riff.mid(ort + 8, laenge);
    ort += 8 + laenge + laenge % 2;
  }
  return {};
}

QByteArray ohne_Kennung(const QByteArray& exif) {
  const QByteArray kennung("Exif\0\0", 6);
  return exif.startsWith(kennung) ? exif.mid(kennung.size()) : exif;
}

struct Pixel {
  QImage bild;
  /// The TIFF structure of the Exif block, or nothing.
  QByteArray exif;
};

Pixel lies_Webp(const QByteArray& bytes) {
  if (!QImageReader::supportedImageFormats().contains("webp"))
    throw unlesbar(u"WebP-Bilder sind hier nicht zu lesen; es fehlt das Paket „qt6-image-formats-plugins“."_s);
  QByteArray inhalt = bytes;
  QBuffer puffer(&inhalt);
  QImageReader leser(&puffer, "webp");
  const QSize groesse = leser.size();
  if (groesse.width() > Groesste_Seite || groesse.height() > Groesste_Seite)
    throw unlesbar(u"Das Bild ist größer, als ein JPEG sein kann."_s);
  // The reader's own bound is for readers of foreign pages; a large photograph is no attack here.
  const auto danach =
      qScopeGuard([vorher = QImageReader::allocationLimit()] { QImageReader::setAllocationLimit(vorher); });
  QImageReader::setAllocationLimit(2048);
  const QImage bild = leser.read();
  if (bild.isNull()) throw unlesbar(u"Das WebP-Bild ist beschädigt."_s);
  return {bild, ohne_Kennung(stueck(bytes, "EXIF"))};
}

QByteArray mit_Exif(const QByteArray& jpeg, const QByteArray& tiff) {
  const QByteArray inhalt = QByteArray("Exif\0\0", 6) + tiff;
  QByteArray kopf("\xFF\xE1\0\0", 4);
  qToBigEndian(static_cast<quint16>(inhalt.size() + 2), kopf.data() + 2);
  return jpeg.left(2) + kopf + inhalt + jpeg.mid(2);
}

/// Opaque, in sRGB.
QImage fuer_Jpeg(QImage bild) {
  if (bild.colorSpace().isValid() && bild.colorSpace() != QColorSpace(QColorSpace::SRgb))
    bild.convertToColorSpace(QColorSpace::SRgb);
  QImage blatt(bild.size(), QImage::Format_RGB32);
  if (blatt.isNull()) throw unlesbar(u"Der Speicher reicht nicht."_s);
  blatt.fill(Qt::white);
  QPainter maler(&blatt);
  maler.setCompositionMode(QPainter::CompositionMode_SourceOver);
  bild.setDevicePixelRatio(1);
  maler.drawImage(0, 0, bild);
  return blatt;
}

}  // namespace

Format erkenne(QByteArrayView anfang) {
  if (ist_Heif(anfang)) return Format::Heif;
  const bool webp = anfang.size() >= 12 && anfang.startsWith("RIFF") && anfang.sliced(8, 4) == "WEBP";
  return webp ? Format::Webp : Format::Keines;
}

QByteArray in_Jpeg(const QImage& pixel) {
  if (pixel.isNull()) throw unlesbar(u"Die Zwischenablage enthält kein Bild."_s);
  if (pixel.width() > Groesste_Seite || pixel.height() > Groesste_Seite)
    throw unlesbar(u"Das Bild ist größer, als ein JPEG sein kann."_s);
  QByteArray jpeg;
  QBuffer puffer(&jpeg);
  QImageWriter schreiber(&puffer, "jpeg");
  schreiber.setQuality(Guete);
  if (!schreiber.write(fuer_Jpeg(pixel))) throw unlesbar(u"Das Bild ist nicht als JPEG zu schreiben."_s);
  return jpeg;
}

Ergebnis in_Jpeg(const QByteArray& bytes, Format format) {
  Pixel pixel;
  if (format == Format::Heif) {
    heifleser::Bild bild = heifleser::lies(bytes);
    pixel = {std::move(bild.pixel), ohne_Kennung(bild.exif)};
  } else {
    pixel = lies_Webp(bytes);
  }
  Ergebnis ergebnis{in_Jpeg(pixel.bild), {}};
  if (pixel.exif.isEmpty()) return ergebnis;
  if (pixel.exif.size() > Groesster_Exifblock) {
    ergebnis.hinweis = u"Die Exif-Angaben sind zu groß für ein JPEG und fehlen in der Kopie."_s;
    return ergebnis;
  }
  ergebnis.jpeg = mit_Exif(ergebnis.jpeg, pixel.exif);
  if (format == Format::Heif) ergebnis.jpeg = aufrichtung::mit_aufrechter_Marke(ergebnis.jpeg);
  return ergebnis;
}

}  // namespace umwandlung
