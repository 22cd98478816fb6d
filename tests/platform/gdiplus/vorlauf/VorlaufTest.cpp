#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <latch>
#include <limits>
#include <thread>

#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/gdiplus/vorlauf/Inarbeit.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;
using bildlader::NurKopf;
using bildvorlauf::Vorlauf;

namespace {

constexpr QSize Klein{92, 92};

QSize immer_klein(QSize /*groesse*/) {
  return Klein;
}

class VorlaufTest : public Bilder {
 protected:
  ~VorlaufTest() override {
    Rechenwerk::aktuell().warte();
    bildvorlauf::an(true);
  }

  static Bitmap oeffne_Kopf(const QString& pfad) {
    const NurKopf nur_Kopf;
    Bitmap bild;
    GdipCreateBitmapFromFile(pfad, bild);
    return bild;
  }
  static QImage ohne(const QString& pfad, const QList<QSize>& groessen) {
    Bildspeicher::aktuell().leere();
    const Bitmap bild = oeffne_Kopf(pfad);
    QImage letztes;
    for (const QSize ziel : groessen) letztes = bild ? bild->bild(ziel) : QImage();
    return letztes;
  }
  static QList<QImage> gemerkte(const QString& pfad) {
    const auto schluessel = Bildspeicher::aktuell().schluessel(pfad);
    const auto eintrag = schluessel ? Bildspeicher::aktuell().suche(*schluessel) : std::nullopt;
    return eintrag ? eintrag->reduzierte : QList<QImage>();
  }
  static bool Kopf_bekannt(const QString& pfad) {
    return Bildspeicher::aktuell().suche(*Bildspeicher::aktuell().schluessel(pfad)).has_value();
  }
  /// All of the room for what is read, so that nothing is begun.
  static Speicherplatz::Anteil halte_auf() {
    static const std::atomic<bool> Nie = false;
    return *Rechenwerk::aktuell().gelesenes.warte(Rechenwerk::Lesegrenze, Nie);
  }
  QString lege(const QString& name, QSize groesse = {640, 480}) const {
    return ordner.schreibe(name, vorlagen::jpeg(vorlagen::foto(groesse)));
  }
};

}  // namespace

TEST_F(VorlaufTest, PixelsOfAllFormatsAreThoseThatAreMadeWithoutIt) {
  const QImage bild = vorlagen::foto({640, 480});
  int nummer = 0;
  for (const QByteArray& inhalt :
      {vorlagen::jpeg(bild), vorlagen::jpeg(bild, {.progressiv = true}), vorlagen::jpeg(bild, {.arithmetisch = true}),
          vorlagen::kodiert(bild, "png"), vorlagen::kodiert(bild, "bmp"), vorlagen::kodiert(bild, "tiff"),
          vorlagen::gif({640, 480}, 20, true), vorlagen::jpeg_Cmyk({640, 480}, 0x11223344, true)}) {
    const QString pfad = ordner.schreibe(u"bild%1"_s.arg(++nummer), inhalt);
    const QImage soll = ohne(pfad, {Klein});
    Bildspeicher::aktuell().leere();
    Vorlauf vorlauf;
    vorlauf.datei(pfad, immer_klein);
    Rechenwerk::aktuell().warte();
    ASSERT_EQ(gemerkte(pfad).size(), 1) << nummer;
    EXPECT_EQ(gemerkte(pfad).first(), soll) << nummer;
    EXPECT_EQ(oeffne_Kopf(pfad)->bild(Klein), soll) << nummer;
  }
}

TEST_F(VorlaufTest, WhatIsReadyIsNotReadAgain) {
  const QString pfad = lege(u"a.jpg"_s);
  const QImage soll = ohne(pfad, {Klein});
  Bildspeicher::aktuell().leere();
  Vorlauf vorlauf;
  vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  EXPECT_EQ(bild->bild(Klein), soll);
}

TEST_F(VorlaufTest, WithoutASizeOnlyTheHeaderIsRead) {
  const QString pfad = lege(u"a.jpg"_s);
  Vorlauf vorlauf;
  vorlauf.datei(pfad);
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(Kopf_bekannt(pfad));
  EXPECT_TRUE(gemerkte(pfad).isEmpty());
}

TEST_F(VorlaufTest, TheSizeMayHangOnThePictures) {
  const QString gross = lege(u"gross.jpg"_s, {640, 480});
  const QString klein = lege(u"klein.jpg"_s, {64, 48});
  Vorlauf vorlauf;
  const auto halb = [](QSize groesse) { return groesse.width() > 100 ? groesse / 2 : QSize(); };
  vorlauf.datei(gross, halb);
  vorlauf.datei(klein, halb);
  Rechenwerk::aktuell().warte();
  ASSERT_EQ(gemerkte(gross).size(), 1);
  EXPECT_EQ(gemerkte(gross).first().size(), QSize(320, 240));
  EXPECT_TRUE(gemerkte(klein).isEmpty());
}

// What stands there is read anew by whoever asks: so the failure comes to him, and not before.
TEST_F(VorlaufTest, ABrokenOrMissingFileHasItsStatusWhenItIsOpened) {
  const QByteArray jpeg = vorlagen::jpeg(vorlagen::foto({640, 480}));
  const QString abgeschnitten = ordner.schreibe(u"kopf.jpg"_s, jpeg.first(100));
  const QString kein_Bild = ordner.schreibe(u"text.jpg"_s, "no picture at all, only some words");
  const QString fehlt = ordner.pfad(u"fehlt.jpg"_s);
  Vorlauf vorlauf;
  for (const QString& pfad : {abgeschnitten, kein_Bild, fehlt, u"Z:\\nirgends.jpg"_s}) vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  const NurKopf nur_Kopf;
  EXPECT_EQ(status_von(abgeschnitten), InvalidParameter);
  EXPECT_EQ(status_von(kein_Bild), UnknownImageFormat);
  EXPECT_EQ(status_von(fehlt), FileNotFound);
}

TEST_F(VorlaufTest, ABodyThatGivesNothingIsMetByWhoeverPaintsIt) {
  QByteArray jpeg = vorlagen::jpeg(vorlagen::foto({640, 480}));
  const qsizetype scan = jpeg.indexOf("\xff\xda") + 14;
  jpeg.replace(scan, jpeg.size() - scan, QByteArray(2000, '\xff'));
  const QString pfad = ordner.schreibe(u"leib.jpg"_s, jpeg);
  Vorlauf vorlauf;
  vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(gemerkte(pfad).isEmpty());
  const Bitmap bild = oeffne_Kopf(pfad);
  ASSERT_TRUE(bild);
  EXPECT_TRUE(bildlader::eigene_Pixel(*bild, Klein).isNull());
}

TEST_F(VorlaufTest, WhatIsGivenUpIsNotBegun) {
  QStringList pfade;
  for (int i = 0; i < 30; ++i) pfade.append(lege(u"bild%1.jpg"_s.arg(i)));
  {
    const auto alles = halte_auf();
    Vorlauf vorlauf;
    for (const QString& pfad : pfade) vorlauf.datei(pfad, immer_klein);
    vorlauf.gib_auf();
    // Nobody waits for room any more, though none came free.
    Rechenwerk::aktuell().warte();
  }
  for (const QString& pfad : pfade) EXPECT_FALSE(Kopf_bekannt(pfad)) << qPrintable(pfad);
}

TEST_F(VorlaufTest, TheEndOfItsLifeGivesUpAndALaterOneWorks) {
  const QString pfad = lege(u"a.jpg"_s);
  {
    const auto alles = halte_auf();
    {
      Vorlauf vorlauf;
      vorlauf.datei(pfad, immer_klein);
    }
    Rechenwerk::aktuell().warte();
  }
  EXPECT_FALSE(Kopf_bekannt(pfad));
  Vorlauf vorlauf;
  vorlauf.gib_auf();
  vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(Kopf_bekannt(pfad));
}

TEST_F(VorlaufTest, SwitchedOffItDoesNothing) {
  const QString pfad = lege(u"a.jpg"_s);
  bildvorlauf::an(false);
  Vorlauf vorlauf;
  vorlauf.datei(pfad, immer_klein);
  vorlauf.bilder({{oeffne_Kopf(pfad), Klein}});
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(gemerkte(pfad).isEmpty());
}

TEST_F(VorlaufTest, FilesChangedJustNowAreLeftToTheLoop) {
  Bildspeicher::aktuell().uhr(nullptr);
  const QString pfad = lege(u"a.jpg"_s);
  Vorlauf vorlauf;
  vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  Bildspeicher::aktuell().uhr([] { return std::numeric_limits<std::int64_t>::max(); });
  EXPECT_FALSE(Kopf_bekannt(pfad));
}

// Six million pixels of a PNG stand in memory whole, twice for a moment: that is over what is set aside.
TEST_F(VorlaufTest, WhatTakesTooMuchRoomIsLeftToTheLoop) {
  QImage bild({3000, 2000}, QImage::Format_RGB32);
  bild.fill(Qt::red);
  const QString png = ordner.schreibe(u"gross.png"_s, vorlagen::kodiert(bild, "png"));
  const QString lang = ordner.schreibe(
      u"lang.jpg"_s, vorlagen::jpeg(vorlagen::foto({640, 480})) + QByteArray(Rechenwerk::Groesste_Datei, 'x'));
  Vorlauf vorlauf;
  vorlauf.datei(png, immer_klein);
  vorlauf.datei(lang, immer_klein);
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(gemerkte(png).isEmpty());
  EXPECT_TRUE(gemerkte(lang).isEmpty());
  EXPECT_EQ(oeffne_Kopf(png)->bild(Klein).pixelColor(5, 5), QColor(Qt::red));
}

TEST_F(VorlaufTest, PixelsThatTheCacheWouldNotKeepAreNotMade) {
  Bildspeicher::aktuell().grenze(64 * 1024);
  const QString pfad = lege(u"a.jpg"_s);
  Vorlauf vorlauf;
  vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(gemerkte(pfad).isEmpty());
  Bildspeicher::aktuell().grenze(Bildspeicher::Grenze);
}

TEST_F(VorlaufTest, WhoeverAsksWaitsForTheOneThatIsAtWorkAndTakesItsPixels) {
  const QString pfad = lege(u"a.jpg"_s);
  const auto schluessel = *Bildspeicher::aktuell().schluessel(pfad);
  const QImage fremdes = [] {
    QImage b(Klein, QImage::Format_RGB32);
    b.fill(Qt::green);
    return b;
  }();
  const Bitmap bild = oeffne_Kopf(pfad);
  std::latch am_Werk(1);
  std::thread anderer([&] {
    const inarbeit::Marke marke = inarbeit::warte(schluessel.pfad);
    am_Werk.count_down();
    // So long that whoever did not wait would have decoded it himself.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    Bildspeicher::aktuell().merke(schluessel, {Bildformat::Jpeg, Kopfbefund::Ok, {640, 480}}, fremdes);
  });
  am_Werk.wait();
  EXPECT_EQ(bild->bild(Klein), fremdes);
  anderer.join();
}

TEST_F(VorlaufTest, AFileExchangedInBetweenShowsItsNewPixels) {
  const QString pfad = lege(u"a.jpg"_s);
  Vorlauf vorlauf;
  vorlauf.datei(pfad, immer_klein);
  Rechenwerk::aktuell().warte();
  const QByteArray neues = vorlagen::kodiert(vorlagen::foto({300, 300}).mirrored(), "bmp");
  ordner.schreibe(u"a.jpg"_s, neues);
  const QString daneben = ordner.schreibe(u"daneben.jpg"_s, neues);
  EXPECT_EQ(oeffne_Kopf(pfad)->bild(Klein), ohne(daneben, {Klein}));
}

// The thumbnail of the picture that is shown large comes out of the large one, with and without.
TEST_F(VorlaufTest, TwoSizesOfOnePictureAreMadeInTheirOrder) {
  const QString pfad = lege(u"a.jpg"_s, {1600, 1200});
  constexpr QSize Gross{600, 450};
  constexpr QSize Streifen{100, 75};
  const QImage soll_klein = ohne(pfad, {Gross, Streifen});
  const QImage soll_gross = ohne(pfad, {Gross});
  ASSERT_NE(soll_klein, ohne(pfad, {Streifen}));
  Bildspeicher::aktuell().leere();
  const Bitmap bild = oeffne_Kopf(pfad);
  Vorlauf vorlauf;
  vorlauf.bilder({{bild, Gross}, {bild, Streifen}});
  Rechenwerk::aktuell().warte();
  EXPECT_EQ(gemerkte(pfad).size(), 2);
  EXPECT_EQ(bild->bild(Gross), soll_gross);
  EXPECT_EQ(bild->bild(Streifen), soll_klein);
}

TEST_F(VorlaufTest, AHeldPictureGivesItsOwnBytesThoughTheFileIsGone) {
  const QString pfad = lege(u"a.jpg"_s);
  const QImage soll = oeffne(pfad)->bild(Klein);
  Bildspeicher::aktuell().leere();
  const Bitmap bild = oeffne(pfad);
  const auto schluessel = *Bildspeicher::aktuell().schluessel(pfad);
  ASSERT_TRUE(QFile::remove(pfad));
  Vorlauf vorlauf;
  vorlauf.bilder({{bild, Klein}});
  Rechenwerk::aktuell().warte();
  const auto eintrag = Bildspeicher::aktuell().suche(schluessel);
  ASSERT_TRUE(eintrag && eintrag->reduzierte.size() == 1);
  EXPECT_EQ(eintrag->reduzierte.first(), soll);
}

TEST_F(VorlaufTest, PicturesThatAreNoFilesAreLeftAlone) {
  const Bitmap pixel = bildlader::aus_Pixeln(vorlagen::foto({640, 480}));
  const QString pfad = lege(u"a.jpg"_s);
  const Bitmap auf_Weiss = bildlader::mit_Hintergrund(oeffne_Kopf(pfad), qRgb(255, 255, 255));
  Vorlauf vorlauf;
  vorlauf.bilder({{pixel, Klein}, {nullptr, Klein}, {auf_Weiss, Klein}});
  Rechenwerk::aktuell().warte();
  EXPECT_TRUE(gemerkte(pfad).isEmpty());
}

TEST_F(VorlaufTest, AThousandLoopsLeftInTheMiddleLeaveNoFileOpen) {
  QStringList pfade;
  for (int i = 0; i < 12; ++i) pfade.append(lege(u"bild%1.jpg"_s.arg(i)));
  for (int runde = 0; runde < 1000; ++runde) {
    Bildspeicher::aktuell().leere();
    Vorlauf vorlauf;
    for (const QString& pfad : pfade) vorlauf.datei(pfad, immer_klein);
    if (runde % 3 == 0) oeffne_Kopf(pfade[runde % 12])->bild(Klein);
  }
  Rechenwerk::aktuell().warte();
  for (const QString& deskriptor : QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System))
    EXPECT_FALSE(QFile::symLinkTarget(u"/proc/self/fd/"_s + deskriptor).startsWith(ordner.pfad(QString())));
  EXPECT_LE(Bildspeicher::aktuell().belegt(), Bildspeicher::Grenze);
}
