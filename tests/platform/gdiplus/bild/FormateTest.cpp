#include <QImageReader>
#include <algorithm>

#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

// Outside pictures: every format in its variants, whole, truncated and with false claims.
namespace {

struct Fall {
  const char* datei;
  std::int32_t status;
  QSize groesse{240, 160};
  /// Qt's own decode serves as reference; not where the file is truncated or Qt can't.
  bool vergleichen = true;
};

void PrintTo(const Fall& fall, std::ostream* os) {
  *os << fall.datei;
}

class Formate : public Bilder, public ::testing::WithParamInterface<Fall> {};

QImage auf_Schwarz(const QImage& bild) {
  QImage schwarz(bild.size(), QImage::Format_RGB32);
  const QImage vorn = bild.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < bild.height(); ++y)
    for (int x = 0; x < bild.width(); ++x)
      schwarz.setPixel(x, y, 0xff000000U | *(reinterpret_cast<const QRgb*>(vorn.constScanLine(y)) + x));
  return schwarz;
}

TEST_P(Formate, HaveStatusSizeAndPixelsAsTheTableSays) {
  BRAUCHT_TESTDATEN();
  const Fall& fall = GetParam();
  const QString pfad = testdaten(u"bilder/formate/"_s + QString::fromLatin1(fall.datei));
  ASSERT_FALSE(pfad.isEmpty());
  ASSERT_EQ(status_von(pfad), fall.status);
  if (fall.status != Ok) return;
  const Bitmap b = oeffne(pfad);
  ASSERT_EQ(b->groesse(), fall.groesse);
  const QImage gemalt = b->bild();
  EXPECT_EQ(gemalt, b->bild());
  EXPECT_EQ(gemalt.size(), fall.groesse);
  EXPECT_EQ(b->bild({60, 40}).size(), QSize(60, 40));
  if (!fall.vergleichen) return;
  QImageReader leser(pfad);
  leser.setDecideFormatFromContent(true);
  const QImage voll = auf_Schwarz(leser.read());
  EXPECT_GT(vorlagen::psnr(gemalt, voll), 50);
  const QSize klein = fall.groesse / 3;
  const QImage verkleinert = voll.scaled(klein, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  EXPECT_GT(vorlagen::psnr(b->bild(klein), verkleinert), 28);
}

constexpr Fall Faelle[] = {
    {"avif.avif", UnknownImageFormat},
    {"heic.heic", UnknownImageFormat},
    {"jp2.jp2", UnknownImageFormat},
    {"pcx.pcx", UnknownImageFormat},
    {"ppm.ppm", UnknownImageFormat},
    {"psd.psd", UnknownImageFormat},
    {"t2.tga", UnknownImageFormat},
    {"t2r.tga", UnknownImageFormat},
    {"tga.tga", UnknownImageFormat},
    {"webp.webp", UnknownImageFormat},
    {"webp_ll.webp", UnknownImageFormat},
    {"jpg_empty.jpg", UnknownImageFormat},
    {"jpg_text.jpg", UnknownImageFormat},
    {"jpg_claims_65535.jpg", OutOfMemory},
    {"bmp_claims_60000.bmp", OutOfMemory},
    {"jpg_height0_dnl.jpg", InvalidParameter},
    {"jpg_prec12_header.jpg", InvalidParameter},
    {"jpg_sof3_lossless_header.jpg", InvalidParameter},
    {"jpg_trunc_hdr.jpg", InvalidParameter},
    {"tif_trunc.tif", InvalidParameter},
    {"bmp_1.bmp", Ok},
    {"bmp_24.bmp", Ok},
    {"bmp_32a.bmp", Ok},
    {"bmp_565.bmp", Ok},
    {"bmp_os2.bmp", Ok},
    {"bmp_pal4.bmp", Ok},
    {"bmp_rle8.bmp", Ok},
    {"bmp_rle8_trunc.bmp", Ok, {240, 160}, false},
    {"bmp_trunc.bmp", Ok, {240, 160}, false},
    {"gif_anim.gif", Ok},
    {"gif_inter.gif", Ok},
    {"gif_static.gif", Ok},
    {"gif_transp.gif", Ok, {100, 80}},
    {"gif_trunc.gif", Ok, {240, 160}, false},
    {"ico.ico", Ok, {64, 43}},
    {"jpg_arith.jpg", Ok, {413, 301}},
    {"jpg_arith_prog.jpg", Ok, {413, 301}},
    {"jpg_cmyk.jpg", Ok},
    {"jpg_cmyk_noadobe.jpg", Ok, {240, 160}, false},
    {"jpg_cmyk_pil.jpg", Ok},
    {"jpg_gray.jpg", Ok},
    {"jpg_named.png", Ok},
    {"jpg_noeoi.jpg", Ok},
    {"jpg_noext", Ok},
    {"jpg_prog.jpg", Ok},
    {"jpg_prog_half.jpg", Ok, {240, 160}, false},
    {"jpg_rgb.jpg", Ok},
    {"jpg_rgbcs.jpg", Ok, {413, 301}},
    {"jpg_trunc_half.jpg", Ok, {240, 160}, false},
    {"png48.png", Ok},
    {"png_16.png", Ok},
    {"png_inter.png", Ok},
    {"png_named.jpg", Ok},
    {"tif_Fax.tif", Ok},
    {"tif_Group4.tif", Ok},
    {"tif_JPEG.tif", Ok},
    {"tif_LZMA.tif", Ok},
    {"tif_LZW.tif", Ok},
    {"tif_None.tif", Ok},
    {"tif_RLE.tif", Ok},
    {"tif_WebP.tif", Ok},
    {"tif_ZSTD.tif", Ok},
    {"tif_Zip.tif", Ok},
    {"tif_alpha.tif", Ok},
    {"tif_bigtiff.tif", Ok},
    {"tif_cmyk.tif", Ok},
    {"tif_cmyk16.tif", Ok, {240, 160}, false},  // no reader for four colours of 16 bits: black
    {"tif_float16.tif", Ok},
    {"tif_float32.tif", Ok},
    {"tif_gray16.tif", Ok},
    {"tif_gray8.tif", Ok},
    {"tif_jpegrgb.tif", Ok, {240, 160}, false},  // its strips are missing
    {"tif_lab.tif", Ok},
    {"tif_lzw_pred2.tif", Ok},
    {"tif_mono.tif", Ok},
    {"tif_msb.tif", Ok},
    {"tif_multi3.tif", Ok},
    {"tif_named.jpg", Ok},
    {"tif_orient6.tif", Ok},
    {"tif_pal.tif", Ok},
    {"tif_pil_jpeg.tif", Ok},
    {"tif_planar.tif", Ok},
    {"tif_rgb16.tif", Ok},
    {"tif_rgb16_pred2.tif", Ok},
    {"tif_separate.tif", Ok},
    {"tif_tiled_lzw.tif", Ok},
};

std::string name_von(const ::testing::TestParamInfo<Fall>& info) {
  std::string name = info.param.datei;
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Testdaten, Formate, ::testing::ValuesIn(Faelle), name_von);

class Testbilder : public Bilder {
 protected:
  static QStringList namen(const QString& ordnername) {
    return QDir(testdaten(u"bilder/"_s + ordnername)).entryList(QDir::Files, QDir::Name);
  }
};

TEST_F(Testbilder, EveryFileOfTheFormatsIsInTheTable) {
  BRAUCHT_TESTDATEN();
  EXPECT_EQ(namen(u"formate"_s).size(), std::ssize(Faelle));
}

TEST_F(Testbilder, EverySpecialFormOfJpegMatchesTheFullDecoding) {
  BRAUCHT_TESTDATEN();
  for (const QString& name : namen(u"sonderfaelle"_s)) {
    const QString pfad = testdaten(u"bilder/sonderfaelle/"_s + name);
    const Bitmap b = oeffne(pfad);
    ASSERT_NE(b, nullptr) << qPrintable(name);
    const QImage voll = QImageReader(pfad, "jpeg").read().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(b->groesse(), voll.size()) << qPrintable(name);
    EXPECT_GT(vorlagen::psnr(b->bild(), voll), 50) << qPrintable(name);
    const QSize klein(50, 36);
    EXPECT_GT(vorlagen::psnr(b->bild(klein), voll.scaled(klein, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), 28)
        << qPrintable(name);
  }
}

// The camera pictures whose names are check sums were damaged on purpose.
bool ist_beschaedigt(const QString& name) {
  return name.size() == 36 && !name.contains(u' ');
}

TEST_F(Testbilder, EveryCameraPictureIsLoadedAndScaledDownMatchesTheWholeOne) {
  BRAUCHT_TESTDATEN();
  for (const QString& name : namen(u"kameras"_s)) {
    if (ist_beschaedigt(name)) continue;
    const QString pfad = testdaten(u"bilder/kameras/"_s + name);
    const Bitmap b = oeffne(pfad);
    ASSERT_NE(b, nullptr) << qPrintable(name);
    if (name == u"beach.jpg"_s) {
      // Qt's reader refuses it: its height stands behind the only scan.
      EXPECT_EQ(b->groesse().height(), 200);
      EXPECT_NE(b->bild().pixel(b->groesse().width() / 2, 190), qRgb(0, 0, 0));
      continue;
    }
    const QImage voll = QImageReader(pfad, "jpeg").read().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(b->groesse(), voll.size()) << qPrintable(name);
    // Drawn graphics with hard edges lose most by being scaled twice; a wrong picture stays far below.
    const QSize klein(100, 75);
    EXPECT_GT(vorlagen::psnr(b->bild(klein), voll.scaled(klein, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), 19)
        << qPrintable(name);
  }
}

TEST_F(Testbilder, DamagedCameraPicturesHaveAStatusAndAreAlwaysPaintedTheSame) {
  BRAUCHT_TESTDATEN();
  for (const QString& name : namen(u"kameras"_s)) {
    if (!ist_beschaedigt(name)) continue;
    const QString pfad = testdaten(u"bilder/kameras/"_s + name);
    const std::int32_t status = status_von(pfad);
    EXPECT_TRUE(status == Ok || status == InvalidParameter || status == OutOfMemory) << qPrintable(name) << status;
    if (status != Ok) continue;
    const Bitmap b = oeffne(pfad);
    EXPECT_EQ(b->bild({31, 17}).size(), QSize(31, 17)) << qPrintable(name);
    EXPECT_EQ(b->bild(), b->bild()) << qPrintable(name);
  }
}

TEST_F(Testbilder, HugePicturesAreLoadedAndPainted) {
  BRAUCHT_TESTDATEN();
  for (const QString& name : namen(u"riesig"_s)) {
    const Bitmap b = oeffne(testdaten(u"bilder/riesig/"_s + name));
    ASSERT_NE(b, nullptr) << qPrintable(name);
    const QSize erwartet = name.contains(u"108"_s) ? QSize(12000, 9000)
        : name.contains(u"20mp"_s)                 ? QSize(5000, 4000)
                                                   : QImageReader(testdaten(u"bilder/riesig/"_s + name)).size();
    EXPECT_EQ(b->groesse(), erwartet) << qPrintable(name);
    EXPECT_EQ(b->bild({100, 75}).size(), QSize(100, 75)) << qPrintable(name);
  }
}

}  // namespace
