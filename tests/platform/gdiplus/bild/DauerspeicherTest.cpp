#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <limits>

#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;
using bildlader::NurKopf;

namespace {

constexpr QSize Klein{92, 92};

std::int64_t morgen() {
  return std::numeric_limits<std::int64_t>::max();
}

/// With an Exif block that has nothing but the Orientation (Exif 2.32, little endian).
QByteArray mit_Marke(const QByteArray& jpeg, char marke) {
  QByteArray block(
      "\xff\xe1\0\x22"
      "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0",
      28);
  block.append(marke).append(7, '\0');
  return QByteArray(jpeg).insert(2, block);
}

/// Files count as old, and the desktop's cache is a folder of the test's own.
class DauerspeicherTest : public Bilder {
 protected:
  DauerspeicherTest() {
    EXPECT_TRUE(QDir().mkpath(ordner.pfad(u"cache"_s)));
    Miniaturablage::aktuell().cacheheim(QFile::encodeName(ordner.pfad(u"cache"_s)));
    Miniaturablage::aktuell().uhr(morgen);
    Miniaturablage::aktuell().an(true);
  }
  ~DauerspeicherTest() override {
    Rechenwerk::aktuell().warte();
    Miniaturablage::aktuell().uhr(nullptr);
    Miniaturablage::aktuell().cacheheim({});
  }

  /// What is left of a program when the next one starts.
  static void starte_neu() {
    Rechenwerk::aktuell().warte();
    Bildspeicher::aktuell().leere();
  }
  static Bitmap oeffne_Kopf(const QString& pfad) {
    const NurKopf nur_Kopf;
    Bitmap bild;
    GdipCreateBitmapFromFile(pfad, bild);
    return bild;
  }
  static std::int32_t status_nur_Kopf(const QString& pfad) {
    const NurKopf nur_Kopf;
    return status_von(pfad);
  }
  QStringList eintraege(const QString& unter = {}) const {
    QStringList alle;
    for (QDirIterator i(ordner.pfad(u"cache/"_s + unter), {u"*.png"_s}, QDir::Files, QDirIterator::Subdirectories);
         i.hasNext();)
      alle.append(QDir(ordner.pfad(u"cache"_s)).relativeFilePath(i.next()));
    return alle;
  }
  QString lege(const QString& name, QSize groesse = {1600, 1200}) const {
    return ordner.schreibe(name, vorlagen::jpeg(vorlagen::foto(groesse)));
  }
  /// As without the desktop's cache.
  static QImage ohne(const QString& pfad, QSize ziel) {
    Miniaturablage::aktuell().an(false);
    Bildspeicher::aktuell().leere();
    const QImage pixel = oeffne_Kopf(pfad)->bild(ziel);
    Bildspeicher::aktuell().leere();
    Miniaturablage::aktuell().an(true);
    return pixel;
  }
};

}  // namespace

TEST_F(DauerspeicherTest, AfterARestartAPictureIsShownWithoutItsContent) {
  const QString pfad = lege(u"a.jpg"_s);
  const QImage soll = ohne(pfad, Klein);
  EXPECT_EQ(oeffne_Kopf(pfad)->bild(Klein), soll) << "the first showing is that of the file itself";
  starte_neu();
  ASSERT_EQ(eintraege().size(), 1);
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(bild);
  EXPECT_EQ(bild->groesse(), QSize(1600, 1200));
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_GT(vorlagen::psnr(bild->bild(Klein), soll), 35);
}

TEST_F(DauerspeicherTest, ALoopAheadUsesAndFillsItToo) {
  const QString pfad = lege(u"a.jpg"_s);
  const QImage soll = ohne(pfad, Klein);
  const auto lies_voraus = [&] {
    bildvorlauf::Vorlauf vorlauf;
    vorlauf.datei(pfad, [](QSize) { return Klein; });
    Rechenwerk::aktuell().warte();
  };
  lies_voraus();
  EXPECT_EQ(eintraege().size(), 1);
  starte_neu();
  lies_voraus();
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_GT(vorlagen::psnr(bild->bild(Klein), soll), 35);
}

TEST_F(DauerspeicherTest, ALargerSizeIsReadFromTheFileAndKeptBesideIt) {
  const QString pfad = lege(u"a.jpg"_s, {4000, 3000});
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  constexpr QSize Gross{700, 525};
  const QImage soll = ohne(pfad, Gross);
  EXPECT_EQ(oeffne_Kopf(pfad)->bild(Gross), soll);
  starte_neu();
  EXPECT_EQ(eintraege().size(), 2);
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_GT(vorlagen::psnr(bild->bild(Gross), soll), 35);
}

TEST_F(DauerspeicherTest, AProgressivePictureIsKeptWithAllItsScans) {
  const QString pfad = ordner.schreibe(u"a.jpg"_s, vorlagen::jpeg(vorlagen::foto({1600, 1200}), {.progressiv = true}));
  const QImage soll = ohne(pfad, Klein);
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  ASSERT_EQ(eintraege().size(), 1);
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_GT(vorlagen::psnr(bild->bild(Klein), soll), 35);
}

TEST_F(DauerspeicherTest, APictureWithATurningMarkIsNotThereForFileManagers) {
  const QString pfad = ordner.schreibe(u"a.jpg"_s, mit_Marke(vorlagen::jpeg(vorlagen::foto({1600, 1200})), 6));
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  EXPECT_TRUE(eintraege(u"thumbnails"_s).isEmpty());
  ASSERT_EQ(eintraege().size(), 1);
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_FALSE(bildlader::eigene_Pixel(*bild, Klein).isNull());
}

TEST_F(DauerspeicherTest, AFileThatIsForgottenHasNoEntryAndGetsANewOne) {
  const QString pfad = lege(u"a.jpg"_s);
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  ASSERT_EQ(eintraege().size(), 1);
  dauerspeicher::vergiss(pfad);
  EXPECT_TRUE(eintraege().isEmpty());
}

TEST_F(DauerspeicherTest, AFileThatChangedIsReadAnew) {
  const QString pfad = lege(u"a.jpg"_s);
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  ASSERT_EQ(eintraege().size(), 1);
  QImage rot({800, 600}, QImage::Format_RGB32);
  rot.fill(Qt::red);
  ordner.schreibe(u"a.jpg"_s, vorlagen::jpeg(rot));
  const Bitmap bild = oeffne_Kopf(pfad);
  EXPECT_EQ(bild->groesse(), QSize(800, 600));
  EXPECT_GT(qRed(bild->bild(Klein).pixel(40, 40)), 240);
}

TEST_F(DauerspeicherTest, ABrokenFileHasTheSameStatusAfterARestart) {
  const QByteArray jpeg = vorlagen::jpeg(vorlagen::foto({640, 480}));
  const QString abgeschnitten = ordner.schreibe(u"kopf.jpg"_s, jpeg.first(100));
  const QString kein_Bild = ordner.schreibe(u"text.jpg"_s, "no picture at all, only some words");
  for (int runde = 0; runde < 2; ++runde) {
    EXPECT_EQ(status_nur_Kopf(abgeschnitten), InvalidParameter) << runde;
    EXPECT_EQ(status_nur_Kopf(kein_Bild), UnknownImageFormat) << runde;
    starte_neu();
    EXPECT_EQ(eintraege(u"thumbnails/fail"_s).size(), 2) << runde;
    EXPECT_EQ(status_von(abgeschnitten), InvalidParameter) << runde;
    EXPECT_EQ(status_von(kein_Bild), UnknownImageFormat) << runde;
  }
  EXPECT_EQ(status_von(ordner.pfad(u"fehlt.jpg"_s)), FileNotFound);
}

TEST_F(DauerspeicherTest, ABodyThatGivesNothingIsNotReadAgainAfterARestart) {
  QByteArray jpeg = vorlagen::jpeg(vorlagen::foto({1600, 1200}));
  const qsizetype scan = jpeg.indexOf("\xff\xda") + 14;
  jpeg.replace(scan, jpeg.size() - scan, QByteArray(2000, '\xff'));
  const QString pfad = ordner.schreibe(u"leib.jpg"_s, jpeg);
  EXPECT_TRUE(bildlader::eigene_Pixel(*oeffne_Kopf(pfad), Klein).isNull());
  starte_neu();
  EXPECT_EQ(eintraege(u"thumbnails/fail"_s).size(), 1);
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(bild);
  EXPECT_EQ(bild->groesse(), QSize(1600, 1200));
  EXPECT_TRUE(bildlader::eigene_Pixel(*bild, Klein).isNull());
}

TEST_F(DauerspeicherTest, SwitchedOffNothingIsReadAndNothingWritten) {
  const QString pfad = lege(u"a.jpg"_s);
  Miniaturablage::aktuell().an(false);
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  EXPECT_TRUE(eintraege().isEmpty());
}

TEST_F(DauerspeicherTest, WhatLiesInTheCacheItselfGetsNoEntry) {
  ASSERT_TRUE(QDir().mkpath(ordner.pfad(u"cache/thumbnails/large"_s)));
  const QString pfad = lege(u"cache/thumbnails/large/fremd.jpg"_s);
  oeffne_Kopf(pfad)->bild(Klein);
  starte_neu();
  EXPECT_TRUE(eintraege().isEmpty());
}

TEST_F(DauerspeicherTest, MoreThanThereIsRoomToWaitForIsKeptAllTheSame) {
  const Speicherplatz::Anteil voll = *Rechenwerk::aktuell().aufgehobenes.versuche(Rechenwerk::Aufhebegrenze);
  const Speicherplatz::Anteil auch_voll = *Rechenwerk::aktuell().ungeschrumpftes.versuche(Rechenwerk::Ungeschrumpft);
  const QString voraus = lege(u"voraus.jpg"_s);
  const QString eilig = lege(u"eilig.jpg"_s);
  bildvorlauf::Vorlauf vorlauf;
  vorlauf.datei(voraus, [](QSize) { return Klein; });
  Rechenwerk::aktuell().warte();
  EXPECT_EQ(eintraege().size(), 1) << "a thread that nobody waits for writes it itself";
  oeffne_Kopf(eilig)->bild(Klein);
  starte_neu();
  EXPECT_EQ(eintraege().size(), 1) << "whoever has a user waiting does without";
}
