#include "tests/dauer/Urbilder.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageWriter>
#include <utility>

#include "tests/exif/ExifBauer.h"
#include "tests/platform/gdiplus/Vorlagen.h"
#include "tests/platform/gdiplus/jpeg/Drehbauer.h"
#include "tests/support/Handyfoto.h"
#include "tests/support/Heifbild.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A bigger one takes its time whole and in each piece, and shows nothing that a smaller one does not.
constexpr qsizetype Groesste_Datei = 130'000;

using Sammlung = std::vector<Urbild>;

void lege_bei(Sammlung& alle, const QString& name, const QString& ext, QByteArray bytes) {
  if (!bytes.isEmpty()) alle.push_back({name, ext, std::move(bytes)});
}

QByteArray gepackt(const QImage& bild, const char* format, int packart, int guete = -1) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  QImageWriter schreiber(&puffer, format);
  schreiber.setCompression(packart);
  schreiber.setQuality(guete);
  return schreiber.write(bild) ? bytes : QByteArray();
}

/// One picture, as a PNG: newer programs write their big sizes so.
QByteArray ico_aus_Png(const QByteArray& png, QSize groesse) {
  QByteArray ico("\0\0\1\0\1\0", 6);
  ico.append(static_cast<char>(groesse.width())).append(static_cast<char>(groesse.height()));
  ico.append("\0\0\1\0\x20\0", 6);
  for (int i = 0; i < 4; ++i) ico.append(static_cast<char>(png.size() >> (8 * i) & 0xff));
  return ico.append("\x16\0\0\0", 4) + png;
}

void lege_Jpegs_bei(Sammlung& alle, const QImage& bild) {
  using drehvorlagen::Machart;
  lege_bei(alle, u"jpeg"_s, u"jpg"_s, vorlagen::jpeg(bild));
  lege_bei(alle, u"jpeg_progressiv"_s, u"jpg"_s, vorlagen::jpeg(bild, {.progressiv = true}));
  lege_bei(alle, u"jpeg_arithmetisch"_s, u"jpg"_s,
      vorlagen::jpeg(bild, {.arithmetisch = true, .waagrecht = 1, .senkrecht = 4}));
  lege_bei(alle, u"jpeg_cmyk"_s, u"jpg"_s, vorlagen::jpeg_Cmyk({20, 20}, 0x11223344, true));
  const std::vector<std::pair<QString, Machart>> arten{{u"grau"_s, {.raum = JCS_GRAYSCALE, .abtastung = {{2, 2}}}},
      {u"neustart"_s, {.neustart = 2}}, {u"grob"_s, {.qualitaet = 3}},
      {u"abtastung"_s, {.abtastung = {{4, 4}, {2, 1}, {1, 1}}}},
      {u"ycck"_s, {.raum = JCS_YCCK, .abtastung = {{2, 2}, {1, 1}, {1, 1}, {2, 2}}}},
      {u"beides"_s, {.progressiv = true, .arithmetisch = true}}};
  for (const auto& [name, art] : arten) lege_bei(alle, u"jpeg_"_s + name, u"jpg"_s, drehvorlagen::jpeg({41, 27}, art));
}

/// With an Exif block, and marks that ask for a turn at the attaching.
void lege_Fotos_bei(Sammlung& alle) {
  using exifschreiber::Bytefolge;
  for (const int marke : {2, 3, 5, 6, 8})
    lege_bei(alle, u"foto_marke_%1"_s.arg(marke), u"jpg"_s,
        handyfoto::foto(
            marke == 6 ? QSize(48, 32) : QSize(45, 31), marke, marke == 8 ? Bytefolge::Gross : Bytefolge::Klein));
  lege_bei(alle, u"kamera_intel"_s, u"jpg"_s, kamerabild(Folge::Intel));
  lege_bei(alle, u"kamera_motorola"_s, u"jpg"_s, kamerabild(Folge::Motorola));
}

void lege_Qts_bei(Sammlung& alle, const QImage& bild) {
  QImage durchsichtig = bild.convertToFormat(QImage::Format_ARGB32);
  durchsichtig.setPixel(3, 3, 0);
  const QByteArray png = vorlagen::kodiert(durchsichtig, "png");
  lege_bei(alle, u"png"_s, u"png"_s, vorlagen::kodiert(bild, "png"));
  lege_bei(alle, u"png_durchsichtig"_s, u"png"_s, png);
  lege_bei(alle, u"png_palette"_s, u"png"_s, vorlagen::kodiert(bild.convertToFormat(QImage::Format_Indexed8), "png"));
  lege_bei(alle, u"png_16"_s, u"png"_s, vorlagen::kodiert(bild.convertToFormat(QImage::Format_RGBX64), "png"));
  lege_bei(alle, u"bmp"_s, u"bmp"_s, vorlagen::kodiert(bild, "bmp"));
  lege_bei(alle, u"bmp_palette"_s, u"bmp"_s, vorlagen::kodiert(bild.convertToFormat(QImage::Format_Indexed8), "bmp"));
  lege_bei(alle, u"bmp_mono"_s, u"bmp"_s, vorlagen::kodiert(bild.convertToFormat(QImage::Format_Mono), "bmp"));
  lege_bei(alle, u"tiff"_s, u"tif"_s, gepackt(bild, "tiff", 0));
  lege_bei(alle, u"tiff_lzw"_s, u"tif"_s, gepackt(bild, "tiff", 1));
  lege_bei(alle, u"tiff_mono"_s, u"tif"_s, gepackt(bild.convertToFormat(QImage::Format_Mono), "tiff", 0));
  lege_bei(alle, u"ico"_s, u"ico"_s, vorlagen::kodiert(bild, "ico"));
  lege_bei(alle, u"ico_png"_s, u"ico"_s, ico_aus_Png(png, durchsichtig.size()));
  lege_bei(alle, u"gif"_s, u"gif"_s, vorlagen::gif({48, 33}, 20));
  lege_bei(alle, u"gif_durchsichtig"_s, u"gif"_s, vorlagen::gif({48, 33}, 20, true));
  lege_bei(alle, u"webp"_s, u"webp"_s, gepackt(bild, "webp", 0, 60));
  lege_bei(alle, u"webp_verlustfrei"_s, u"webp"_s, gepackt(durchsichtig, "webp", 0, 100));
}

void lege_Heif_bei(Sammlung& alle, const QImage& bild) {
  using heifbild::Art;
  const QByteArray exif = ExifBauer(Folge::Motorola).verzeichnis().zahl(274, 3, 1, 6 << 16).tiff();
  lege_bei(alle, u"heic"_s, u"heic"_s, heifbild::schreibe(bild, Art::Heic, 6, exif));
  lege_bei(alle, u"avif"_s, u"avif"_s, heifbild::schreibe(bild, Art::Avif));
}

void lege_Fremde_bei(Sammlung& alle) {
  const QString ort = testdaten(u"bilder/formate"_s);
  if (ort.isEmpty()) return;
  for (const QFileInfo& info : QDir(ort).entryInfoList(QDir::Files, QDir::Name)) {
    QFile datei(info.filePath());
    if (info.size() > Groesste_Datei || !datei.open(QIODevice::ReadOnly)) continue;
    // Without an ending no picture can be attached, whatever it holds.
    const QString ext = info.suffix().isEmpty() ? u"jpg"_s : info.suffix();
    lege_bei(alle, u"fremd_"_s + info.completeBaseName(), ext, datei.readAll());
  }
}

}  // namespace

std::vector<Urbild> urbilder() {
  const QImage bild = vorlagen::foto({48, 33});
  Sammlung alle;
  lege_Jpegs_bei(alle, bild);
  lege_Fotos_bei(alle);
  lege_Qts_bei(alle, bild);
  lege_Heif_bei(alle, bild);
  lege_Fremde_bei(alle);
  return alle;
}
