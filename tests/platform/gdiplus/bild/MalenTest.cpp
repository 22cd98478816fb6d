#include <malloc.h>

#include <QImageReader>
#include <functional>

#include "platform/gdiplus/bild/Bildlader.h"
#include "tests/platform/gdiplus/Vorlagen.h"
#include "tests/support/Fehler.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

namespace {

class Malen : public Bilder {
 protected:
  const QImage bild = vorlagen::foto({120, 90});
};

// What a picture shows must not depend on what lay in memory before.
QImage zweimal_gleich(const std::function<QImage()>& male) {
  ::mallopt(M_PERTURB, 0x11);
  const QImage a = male();
  ::mallopt(M_PERTURB, 0xee);
  const QImage b = male();
  ::mallopt(M_PERTURB, 0);
  EXPECT_EQ(a, b);
  return a;
}

TEST_F(Malen, WithoutATargetThePictureComesInItsSize) {
  EXPECT_EQ(lade(u"a"_s, vorlagen::kodiert(bild, "png"))->bild(), bild);
  EXPECT_EQ(lade(u"b"_s, vorlagen::kodiert(bild, "bmp"))->bild({0, 5}), bild);
  EXPECT_EQ(lade(u"c"_s, vorlagen::kodiert(bild, "tiff"))->bild({-1, -1}), bild);
}

TEST_F(Malen, TheResultHasExactlyTheSizeAskedFor) {
  for (const QByteArray& inhalt : {vorlagen::kodiert(bild, "png"), vorlagen::jpeg(bild), vorlagen::gif({120, 90}, 3)})
    for (const QSize ziel :
        {QSize(1, 1), QSize(100, 75), QSize(7, 80), QSize(119, 89), QSize(121, 5), QSize(333, 777)}) {
      const QImage gemalt = lade(u"a"_s, inhalt)->bild(ziel);
      EXPECT_EQ(gemalt.size(), ziel);
      EXPECT_EQ(gemalt.format(), QImage::Format_RGB32);
    }
}

TEST_F(Malen, ASizeAskedForThatNobodyHoldsIsError7) {
  const Bitmap b = lade(u"a"_s, vorlagen::jpeg(bild));
  EXPECT_EQ(Fehlernummer_von([&] { b->bild({60000, 60000}); }), fehlernummer::SpeicherErschoepft);
  EXPECT_EQ(Fehlernummer_von([&] {
    bildlader::aus_Pixeln(bild)->bild({60000, 60000});
  }),
      fehlernummer::SpeicherErschoepft);
}

TEST_F(Malen, WhatIsTransparentComesBlack) {
  QImage halb(10, 10, QImage::Format_ARGB32);
  halb.fill(qRgba(200, 100, 50, 128));
  halb.setPixel(0, 0, qRgba(255, 255, 255, 0));
  for (const char* format : {"png", "tiff"}) {
    const QImage gemalt = lade(u"a"_s, vorlagen::kodiert(halb, format))->bild();
    EXPECT_EQ(gemalt.pixel(0, 0), qRgb(0, 0, 0)) << format;
    EXPECT_NEAR(qRed(gemalt.pixel(5, 5)), 100, 1) << format;
    EXPECT_NEAR(qBlue(gemalt.pixel(5, 5)), 25, 1) << format;
  }
  const QImage gif = lade(u"b"_s, vorlagen::gif({8, 8}, 77, true))->bild();
  EXPECT_EQ(gif.pixel(4, 4), qRgb(0, 0, 0));
}

TEST_F(Malen, AnotherBackgroundShowsThrough) {
  QImage leer(6, 6, QImage::Format_ARGB32);
  leer.fill(Qt::transparent);
  const Bitmap b = lade(u"a"_s, vorlagen::kodiert(leer, "png"));
  Bitmap weiss;
  ASSERT_EQ(GdipCreateHBITMAPFromBitmap(b, weiss, 0xffffff), Ok);
  EXPECT_EQ(weiss->bild().pixel(3, 3), qRgb(255, 255, 255));
  EXPECT_EQ(weiss->bild({2, 2}).pixel(1, 1), qRgb(255, 255, 255));
  EXPECT_EQ(b->bild({2, 2}).pixel(1, 1), qRgb(0, 0, 0));
}

TEST_F(Malen, TheHandleLivesOnWhenTheBitmapIsReleased) {
  Bitmap b = lade(u"a"_s, vorlagen::kodiert(bild, "png"));
  Bitmap handle;
  ASSERT_EQ(GdipCreateHBITMAPFromBitmap(b, handle, 0), Ok);
  ASSERT_EQ(GdipDisposeImage(b), Ok);
  EXPECT_EQ(b, nullptr);
  EXPECT_EQ(handle->bild(), bild);
}

TEST_F(Malen, APictureOutlivesTheDeletionOfItsFile) {
  const Bitmap b = lade(u"a"_s, vorlagen::kodiert(bild, "png"));
  ASSERT_TRUE(QFile::remove(ordner.pfad(u"a"_s)));
  EXPECT_EQ(b->bild(), bild);
}

TEST_F(Malen, ATruncatedPictureShowsWhatItHoldsAndOtherwiseSomethingDefinite) {
  const QImage gross = vorlagen::foto({320, 240});
  for (const char* format : {"png", "bmp", "jpg"}) {
    const QByteArray ganz = vorlagen::kodiert(gross, format);
    const QString name = QString::fromLatin1(format);
    const Bitmap halb = lade(name, ganz.first(ganz.size() * 6 / 10));
    const QImage gemalt = zweimal_gleich([&] { return halb->bild(); });
    // A bitmap's rows stand upside down, so its lower part is what came first.
    const QRect gut = name == u"bmp"_s ? QRect(0, 120, 320, 120) : QRect(0, 0, 320, 100);
    EXPECT_GT(vorlagen::psnr(gemalt.copy(gut), gross.copy(gut)), 30) << format;
    zweimal_gleich([&] { return halb->bild({50, 40}); });
  }
}

TEST_F(Malen, ATruncatedGifOrTiffIsDefinite) {
  const QByteArray gif = vorlagen::gif({200, 100}, 99);
  const Bitmap halb = lade(u"g"_s, gif.first(gif.size() / 2));
  EXPECT_EQ(zweimal_gleich([&] { return halb->bild(); }).pixel(10, 2), qRgb(198, 198, 198));
  // Without its strips a file shows nothing: the directory stands in front.
  QByteArray tiff("II*\0\x08\0\0\0\2\0", 10);
  tiff += QByteArray("\0\x01\3\0\1\0\0\0\x40\0\0\0\x01\x01\3\0\1\0\0\0\x30\0\0\0\0\0\0\0", 28);
  const Bitmap ohne = lade(u"t"_s, tiff);
  EXPECT_EQ(zweimal_gleich([&] { return ohne->bild(); }).pixel(5, 5), qRgb(0, 0, 0));
}

// 64 x 48 grey pixels of 200 in six strips of 8 rows; the directory stands in front of them.
QByteArray tiff_in_Streifen() {
  QByteArray b("II*\0\x08\0\0\0", 8);
  const auto zahl = [&](unsigned wert, int breite) {
    for (int i = 0; i < breite; ++i) b.append(static_cast<char>(wert >> 8 * i & 0xff));
  };
  const auto eintrag = [&](unsigned marke, unsigned typ, unsigned anzahl, unsigned wert) {
    zahl(marke, 2);
    zahl(typ, 2);
    zahl(anzahl, 4);
    zahl(wert, 4);
  };
  zahl(9, 2);
  eintrag(256, 3, 1, 64);
  eintrag(257, 3, 1, 48);
  eintrag(258, 3, 1, 8);
  eintrag(259, 3, 1, 1);
  eintrag(262, 3, 1, 1);
  eintrag(273, 4, 6, 122);
  eintrag(277, 3, 1, 1);
  eintrag(278, 3, 1, 8);
  eintrag(279, 4, 6, 146);
  zahl(0, 4);
  for (unsigned i = 0; i < 6; ++i) zahl(170 + i * 512, 4);
  for (int i = 0; i < 6; ++i) zahl(512, 4);
  return b + QByteArray(6 * 512, '\xc8');
}

TEST_F(Malen, ATruncatedTiffShowsItsFirstStrips) {
  EXPECT_EQ(lade(u"ganz"_s, tiff_in_Streifen())->bild().pixel(63, 47), qRgb(200, 200, 200));
  const Bitmap halb = lade(u"halb"_s, tiff_in_Streifen().first(170 + 3 * 512 + 100));
  const QImage gemalt = zweimal_gleich([&] { return halb->bild(); });
  EXPECT_EQ(gemalt.pixel(63, 23), qRgb(200, 200, 200));
  EXPECT_EQ(gemalt.pixel(63, 47), qRgb(0, 0, 0));
}

TEST_F(Malen, DamagedContentBehindAnIntactHeaderIsBlack) {
  const QByteArray png = vorlagen::kodiert(bild, "png");
  EXPECT_EQ(lade(u"a"_s, png.first(33) + QByteArray(500, 'x'))->bild().pixel(9, 9), qRgb(0, 0, 0));
}

TEST_F(Malen, BmpHeadersOf52And56BytesAreRead) {
  const QByteArray bmp = vorlagen::kodiert(bild, "bmp");
  ASSERT_EQ(bmp[14], 40);
  for (const int laenge : {52, 56}) {
    QByteArray neu = bmp;
    neu[14] = static_cast<char>(laenge);
    neu[10] = static_cast<char>(14 + laenge);
    neu.insert(54, QByteArray(laenge - 40, 0));
    EXPECT_EQ(lade(u"a.bmp"_s, neu)->bild(), bild) << laenge;
  }
}

TEST_F(Malen, ABmpWithColourMasksInAHeaderOf56BytesIsRead) {
  QByteArray bmp("BM\0\0\0\0\0\0\0\0\x46\0\0\0\x38\0\0\0\2\0\0\0\1\0\0\0\1\0\x20\0\3\0\0\0", 34);
  bmp += QByteArray(20, 0) + QByteArray("\xff\0\0\0\0\xff\0\0\0\0\xff\0\0\0\0\0", 16);  // red in the lowest byte
  bmp += QByteArray("\xfe\x10\x20\0\1\2\3\0", 8);
  const QImage gemalt = lade(u"a.bmp"_s, bmp)->bild();
  EXPECT_EQ(gemalt.pixel(0, 0), qRgb(0xfe, 0x10, 0x20));
  EXPECT_EQ(gemalt.pixel(1, 0), qRgb(1, 2, 3));
}

TEST_F(Malen, TheHostsMemoryLimitStaysAsItWas) {
  QImageReader::setAllocationLimit(77);
  lade(u"a"_s, vorlagen::kodiert(bild, "png"))->bild();
  EXPECT_EQ(QImageReader::allocationLimit(), 77);
  QImageReader::setAllocationLimit(128);
}

TEST_F(Malen, PicturesBeyondQtsLimitOf128MbAreRead) {
  QImage gross(8193, 4096, QImage::Format_RGB32);
  gross.fill(qRgb(10, 200, 30));
  for (const char* format : {"png", "tiff", "bmp"}) {
    const Bitmap b = lade(u"gross"_s, vorlagen::kodiert(gross, format));
    EXPECT_EQ(b->groesse(), gross.size());
    EXPECT_EQ(b->bild({100, 50}).pixel(99, 49), qRgb(10, 200, 30)) << format;
  }
  EXPECT_EQ(lade(u"gif"_s, vorlagen::gif({8193, 4096}, 100))->bild({100, 50}).pixel(99, 49), qRgb(200, 200, 200));
}

TEST_F(Malen, PixelsBecomeAPictureObject) {
  EXPECT_EQ(bildlader::aus_Pixeln(QImage()), nullptr);
  const auto b = bildlader::aus_Pixeln(bild);
  EXPECT_EQ(b->groesse(), bild.size());
  EXPECT_EQ(b->bild(), bild);
  EXPECT_EQ(b->bild({30, 20}).size(), QSize(30, 20));
}

}  // namespace
