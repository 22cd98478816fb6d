#include "platform/gdiplus/bild/Bilddekoder.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

#include "platform/basic/Bytesicht.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Nachschlagen.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"

namespace bilddekoder {
namespace {

QImage geprueft(QImage bild) {
  if (bild.isNull()) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return bild;
}

const char* qt_Format(Bildformat format) noexcept {
  constexpr std::pair<Bildformat, const char*> Namen[] = {{Bildformat::Png, "png"}, {Bildformat::Gif, "gif"},
      {Bildformat::Bmp, "bmp"}, {Bildformat::Tiff, "tiff"}, {Bildformat::Ico, "ico"}};
  return nachgeschlagen(Namen, format, "");
}

// Readers leave the rest of a truncated picture as it was, so they are handed zeros. Memory from calloc stays untouched
// where nothing is decoded: a small file with a large claim then costs nothing.
QImage leer(QSize groesse, QImage::Format format) {
  const int tiefe = QImage::toPixelFormat(format).bitsPerPixel();
  const std::int64_t zeile = (std::int64_t{groesse.width()} * tiefe + 31) / 32 * 4;
  // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): the image frees it
  void* const speicher = std::calloc(static_cast<std::size_t>(groesse.height()), static_cast<std::size_t>(zeile));
  if (speicher == nullptr) throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  return {static_cast<uchar*>(speicher), groesse.width(), groesse.height(), zeile, format, std::free, speicher};
}

// Qt's reader knows the bitmap headers of 12, 40, 64, 108 and 124 bytes. Those of 52 and 56 bytes are the one of 40
// with the colour masks moved into the header: with masks only the length differs, without them they are cut out.
QByteArray mit_bekanntem_Kopf(const QByteArray& bytes) {
  const Bytesicht b(bytes);
  const std::uint32_t kopf = b.u32_tief(14);
  if (kopf != 52 && kopf != 56) return bytes;
  QByteArray neu = bytes;
  neu[14] = 40;
  if (b.u32_tief(30) == 3 || b.u32_tief(30) == 6) return neu;
  const std::uint32_t daten = b.u32_tief(10) - (kopf - 40);
  for (unsigned i = 0; i < 4; ++i) neu[10 + static_cast<qsizetype>(i)] = static_cast<char>(daten >> 8 * i & 0xff);
  return neu.remove(14 + 40, static_cast<qsizetype>(kopf) - 40);
}

bool ist_unberuehrt(const QImage& bild) {
  const uchar* const anfang = bild.constBits();
  return std::all_of(anfang, anfang + bild.sizeInBytes(), [](uchar byte) { return byte == 0; });
}

// Qt refuses pictures over 128 MB unless the limit is lifted. It belongs to the whole process: the host gets its own
// value back when the last of the threads is done that read at once.
class Ohne_Grenze {
 public:
  Ohne_Grenze() {
    const std::scoped_lock halten(Schutz);
    if (lesende++ > 0) return;
    vorher = QImageReader::allocationLimit();
    QImageReader::setAllocationLimit(0);
  }
  ~Ohne_Grenze() {
    const std::scoped_lock halten(Schutz);
    if (--lesende == 0) QImageReader::setAllocationLimit(vorher);
  }
  Q_DISABLE_COPY_MOVE(Ohne_Grenze)

 private:
  static inline std::mutex Schutz;
  static inline int lesende = 0;
  static inline int vorher = 0;
};

/// Null where the file gives nothing.
QImage mit_Qt(const Bildkopf& kopf, const QByteArray& datei) {
  const Ohne_Grenze ohne_Grenze;
  QByteArray bytes = kopf.format == Bildformat::Bmp ? mit_bekanntem_Kopf(datei) : datei;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::ReadOnly);
  QImageReader leser(&puffer, qt_Format(kopf.format));
  leser.setAutoDetectImageFormat(false);
  leser.setAutoTransform(false);
  if (kopf.nummer > 0) leser.jumpToImage(kopf.nummer);
  QImage bild;
  const QImage::Format format = leser.imageFormat();
  if (format != QImage::Format_Invalid && leser.size() == kopf.groesse) bild = leer(kopf.groesse, format);
  // A failure leaves what was read until then.
  if (!leser.read(&bild) && ist_unberuehrt(bild)) return {};
  return bild;
}

// The reader's own idea of the size may differ from the header's (a GIF whose frame is not its screen).
QImage auf_Flaeche(const QImage& bild, QSize groesse) {
  if (bild.size() == groesse) return bild;
  QImage flaeche = schwarz(groesse);
  const QSize gemeinsam = bild.size().boundedTo(groesse);
  for (int y = 0; y < gemeinsam.height(); ++y)
    std::memcpy(flaeche.scanLine(y), bild.constScanLine(y), static_cast<std::size_t>(gemeinsam.width()) * sizeof(QRgb));
  return flaeche;
}

}  // namespace

QImage schwarz(QSize groesse) {
  QImage bild = geprueft(QImage(groesse, QImage::Format_RGB32));
  bild.fill(qRgb(0, 0, 0));
  return bild;
}

QImage undurchsichtig(QImage bild, QRgb hintergrund) {
  if (!bild.hasAlphaChannel()) return geprueft(std::move(bild).convertToFormat(QImage::Format_RGB32));
  QImage ziel = geprueft(std::move(bild).convertToFormat(QImage::Format_ARGB32_Premultiplied));
  for (int y = 0; y < ziel.height(); ++y) {
    auto* const zeile = reinterpret_cast<QRgb*>(ziel.scanLine(y));
    for (int x = 0; x < ziel.width(); ++x) {
      const int fehlt = 255 - qAlpha(zeile[x]);
      const auto farbe = [fehlt](int vorn, int hinten) { return std::min(255, vorn + (hinten * fehlt + 127) / 255); };
      zeile[x] = qRgb(farbe(qRed(zeile[x]), qRed(hintergrund)), farbe(qGreen(zeile[x]), qGreen(hintergrund)),
          farbe(qBlue(zeile[x]), qBlue(hintergrund)));
    }
  }
  ziel.reinterpretAsFormat(QImage::Format_RGB32);
  return ziel;
}

QImage auf_Groesse(const QImage& bild, QSize ziel) {
  if (bild.isNull() || bild.size() == ziel) return bild;
  return geprueft(bild.scaled(ziel, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

qint64 speicherbedarf(const Bildkopf& kopf, const QByteArray& bytes, QSize ziel) {
  constexpr qint64 Pixel = sizeof(QRgb);
  // Qt's reader gives the whole picture, and its form without transparency stands beside it for a moment.
  if (kopf.format != Bildformat::Jpeg) return 2 * Pixel * flaeche(kopf.groesse);
  return Pixel * flaeche(jpegdekoder::dekodierte_Groesse(kopf.groesse, ziel)) +
      jpegdekoder::Koeffizienten_im_Speicher(bytes);
}

QImage entpacke(const Bildkopf& kopf, const QByteArray& bytes, QSize ziel, QRgb hintergrund) {
  if (kopf.format == Bildformat::Jpeg) return jpegdekoder::dekodiere(bytes, ziel);
  QImage bild = mit_Qt(kopf, bytes);
  if (bild.isNull()) return bild;
  return auf_Flaeche(undurchsichtig(std::move(bild), hintergrund), kopf.groesse);
}

QImage lies(const Bildkopf& kopf, const QByteArray& bytes, QSize ziel, QRgb hintergrund) {
  return auf_Groesse(entpacke(kopf, bytes, ziel, hintergrund), ziel);
}

}  // namespace bilddekoder
