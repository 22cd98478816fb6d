#include <QImageReader>

#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

namespace {

class Jpeg : public Bilder {
 protected:
  static QSize bei(QSize ganz, int num) { return {(ganz.width() * num + 7) / 8, (ganz.height() * num + 7) / 8}; }
  const QSize ganz{803, 601};
  const QImage bild = vorlagen::foto(ganz);
};

TEST_F(Jpeg, TheScaleIsTheSmallestThatSuffices) {
  using jpegdekoder::massstab;
  EXPECT_EQ(massstab({800, 600}, {100, 75}), 1);
  EXPECT_EQ(massstab({800, 600}, {101, 75}), 2);
  EXPECT_EQ(massstab({800, 600}, {100, 76}), 2);
  EXPECT_EQ(massstab({800, 600}, {800, 600}), 8);
  EXPECT_EQ(massstab({800, 600}, {701, 10}), 8);
  EXPECT_EQ(massstab({800, 600}, {700, 10}), 7);
  EXPECT_EQ(massstab({800, 600}, {9000, 9000}), 8);
  EXPECT_EQ(massstab({800, 600}, {}), 8);
  EXPECT_EQ(massstab({801, 601}, {101, 76}), 1);
}

TEST_F(Jpeg, AtEveryEighthThePixelsComeFromLibjpeg) {
  const QByteArray inhalt = vorlagen::jpeg(bild);
  const Bitmap b = lade(u"a"_s, inhalt);
  for (int num = 1; num <= 8; ++num) EXPECT_EQ(b->bild(bei(ganz, num)), vorlagen::libjpeg_Massstab(inhalt, num)) << num;
}

TEST_F(Jpeg, AScaledDownPictureMatchesTheOneDecodedWholeAndScaledDown) {
  const QByteArray inhalt = vorlagen::jpeg(bild);
  const Bitmap b = lade(u"a"_s, inhalt);
  const QImage voll = vorlagen::libjpeg_Massstab(inhalt, 8);
  for (const QSize ziel :
      {QSize(40, 30), QSize(100, 75), QSize(160, 120), QSize(333, 200), QSize(600, 450), QSize(20, 300)})
    EXPECT_GT(vorlagen::psnr(b->bild(ziel), voll.scaled(ziel, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), 30)
        << ziel.width();
}

TEST_F(Jpeg, AProgressiveOneAtOneEighthIsExactlyTheOneReadWhole) {
  for (const auto& [w, s] : {std::pair{1, 1}, std::pair{2, 1}, std::pair{2, 2}}) {
    const QByteArray inhalt = vorlagen::jpeg(bild, {.progressiv = true, .waagrecht = w, .senkrecht = s});
    EXPECT_EQ(lade(u"a"_s, inhalt)->bild(bei(ganz, 1)), vorlagen::libjpeg_Massstab(inhalt, 1)) << w << "x" << s;
  }
}

TEST_F(Jpeg, AProgressiveOneMatchesTheOneReadWholeAtEveryScale) {
  const QByteArray inhalt = vorlagen::jpeg(bild, {.progressiv = true});
  const Bitmap b = lade(u"a"_s, inhalt);
  for (int num = 1; num <= 8; ++num)
    EXPECT_GT(vorlagen::psnr(b->bild(bei(ganz, num)), vorlagen::libjpeg_Massstab(inhalt, num)), 36) << num;
  EXPECT_EQ(b->bild(), vorlagen::libjpeg_Massstab(inhalt, 8));
}

TEST_F(Jpeg, ScaledFarDownAProgressiveOneMatchesThePlainOne) {
  const QImage einfach = lade(u"a"_s, vorlagen::jpeg(bild))->bild({40, 30});
  const QImage progressiv = lade(u"b"_s, vorlagen::jpeg(bild, {.progressiv = true}))->bild({40, 30});
  EXPECT_GT(vorlagen::psnr(einfach, progressiv), 40);
}

qsizetype bytes_von(const QByteArray& inhalt, QSize ziel) {
  qsizetype summe = 0;
  for (const QByteArrayView stueck : jpegdekoder::noetige_Stuecke(inhalt, ziel)) summe += stueck.size();
  return summe;
}

TEST_F(Jpeg, TheSmallerTheTargetTheFewerScansAreRead) {
  const QByteArray inhalt = vorlagen::jpeg(bild, {.progressiv = true});
  EXPECT_LT(bytes_von(inhalt, {40, 30}), inhalt.size() / 4);
  EXPECT_LT(bytes_von(inhalt, {40, 30}), bytes_von(inhalt, bei(ganz, 4)));
  EXPECT_EQ(bytes_von(inhalt, ganz), inhalt.size());
  EXPECT_EQ(bytes_von(inhalt, {}), inhalt.size());
}

TEST_F(Jpeg, MoreThanAHundredScansAreNotRead) {
  const QByteArray inhalt = vorlagen::jpeg(vorlagen::foto({64, 64}), {.progressiv = true});
  const qsizetype letzter = inhalt.lastIndexOf("\xff\xda");
  const QByteArray scan = inhalt.sliced(letzter, inhalt.size() - 2 - letzter);
  const QByteArray bombe = inhalt.first(inhalt.size() - 2) + scan.repeated(5000) + "\xff\xd9";
  EXPECT_LT(bytes_von(bombe, {}), inhalt.size() + 100 * scan.size());
  EXPECT_EQ(lade(u"a"_s, bombe)->bild().size(), QSize(64, 64));
}

TEST_F(Jpeg, HalfAProgressiveOneShowsWhatItHolds) {
  const QByteArray inhalt = vorlagen::jpeg(bild, {.progressiv = true});
  const Bitmap b = lade(u"a"_s, inhalt.first(inhalt.size() / 2));
  EXPECT_GT(vorlagen::psnr(b->bild(), bild), 20);
  EXPECT_EQ(b->bild({40, 30}), lade(u"b"_s, inhalt)->bild({40, 30})) << "the first scans were whole";
}

TEST_F(Jpeg, APictureOf108MegapixelsIsPaintedSmall) {
  for (const bool progressiv : {false, true}) {
    const Bitmap b = lade(u"a"_s, vorlagen::jpeg_einfarbig({12000, 9000}, qRgb(40, 160, 220), progressiv));
    EXPECT_EQ(b->groesse(), QSize(12000, 9000));
    const QRgb ecke = b->bild({100, 75}).pixel(99, 74);
    EXPECT_NEAR(qRed(ecke), 40, 3);
    EXPECT_NEAR(qGreen(ecke), 160, 3);
    EXPECT_NEAR(qBlue(ecke), 220, 3);
  }
}

TEST_F(Jpeg, ArithmeticCodingIsRead) {
  for (const bool progressiv : {false, true}) {
    const QByteArray inhalt = vorlagen::jpeg(bild, {.progressiv = progressiv, .arithmetisch = true});
    const Bitmap b = lade(u"a"_s, inhalt);
    EXPECT_EQ(b->bild(), vorlagen::libjpeg_Massstab(inhalt, 8));
    EXPECT_EQ(b->bild(bei(ganz, 1)), vorlagen::libjpeg_Massstab(inhalt, 1));
  }
}

TEST_F(Jpeg, SamplingsThatTurboJpegRefusesAreRead) {
  for (const auto& [w, s] : {std::pair{1, 4}, std::pair{3, 1}, std::pair{4, 2}, std::pair{4, 1}, std::pair{1, 2}}) {
    const QByteArray inhalt = vorlagen::jpeg(bild, {.waagrecht = w, .senkrecht = s});
    const Bitmap b = lade(u"a"_s, inhalt);
    EXPECT_EQ(b->bild(), vorlagen::libjpeg_Massstab(inhalt, 8)) << w << "x" << s;
    EXPECT_GT(
        vorlagen::psnr(b->bild({100, 75}), bild.scaled(100, 75, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), 26)
        << w << "x" << s;
  }
}

TEST_F(Jpeg, CmykWithAnAdobeMarkerIsStoredInverted) {
  // Stored inverted: 255 is no ink. Full cyan (0 stored), no magenta, half yellow, no black.
  const QImage b = lade(u"a"_s, vorlagen::jpeg_Cmyk({16, 16}, 0x00ff80ff, true))->bild();
  EXPECT_NEAR(qRed(b.pixel(8, 8)), 0, 2);
  EXPECT_NEAR(qGreen(b.pixel(8, 8)), 255, 2);
  EXPECT_NEAR(qBlue(b.pixel(8, 8)), 128, 2);
}

TEST_F(Jpeg, CmykWithoutAnAdobeMarkerIsStoredAsPrinted) {
  // 255 is full ink: full cyan, no magenta, half yellow, half black.
  const QImage b = lade(u"a"_s, vorlagen::jpeg_Cmyk({16, 16}, 0xff008080, false))->bild({4, 4});
  EXPECT_NEAR(qRed(b.pixel(2, 2)), 0, 2);
  EXPECT_NEAR(qGreen(b.pixel(2, 2)), 127, 2);
  EXPECT_NEAR(qBlue(b.pixel(2, 2)), 64, 2);
}

TEST_F(Jpeg, ATurnedPhotoIsNotSetUpright) {
  // Exif with nothing but an orientation of 6 (quarter turn).
  const QByteArray tiff("II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\6\0\0\0\0\0\0\0", 26);
  const QByteArray exif = QByteArray("\xff\xe1\0\x22", 4) + QByteArray("Exif\0\0", 6) + tiff;
  const QByteArray inhalt = vorlagen::jpeg(bild).insert(2, exif);
  const Bitmap b = lade(u"a"_s, inhalt);
  EXPECT_EQ(b->groesse(), ganz);
  EXPECT_EQ(b->bild(), vorlagen::libjpeg_Massstab(inhalt, 8));
}

TEST_F(Jpeg, ATruncatedOneShowsItsBeginningAtEveryScale) {
  const QByteArray inhalt = vorlagen::jpeg(bild);
  const Bitmap b = lade(u"a"_s, inhalt.first(inhalt.size() / 2));
  for (int num = 1; num <= 8; ++num) {
    const QImage gemalt = b->bild(bei(ganz, num));
    const QRect oben(0, 0, gemalt.width(), gemalt.height() * 2 / 5);
    EXPECT_EQ(gemalt.copy(oben), vorlagen::libjpeg_Massstab(inhalt, num).copy(oben)) << num;
  }
}

TEST_F(Jpeg, AFailureInTheMiddleOfThePictureLeavesWhatWasDecoded) {
  // A second frame header behind half of the progressive scans ends libjpeg's work.
  const QByteArray inhalt = vorlagen::jpeg(bild, {.progressiv = true});
  const qsizetype sof = inhalt.indexOf("\xff\xc2");
  const QByteArray rahmen = inhalt.mid(sof, 19);
  const qsizetype scan = inhalt.indexOf("\xff\xda", inhalt.size() / 2);
  ASSERT_GT(scan, 0);
  const Bitmap b = lade(u"a"_s, QByteArray(inhalt).insert(scan, rahmen));
  EXPECT_EQ(b->bild().size(), ganz);
  EXPECT_EQ(b->bild().pixel(0, 0) >> 24, 0xffU);
}

}  // namespace
