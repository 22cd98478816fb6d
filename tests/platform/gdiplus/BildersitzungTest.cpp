#include <gtest/gtest.h>

#include "platform/gdiplus/Bildersitzung.h"
#include "platform/gdiplus/Sitzungsdauer.h"
#include "platform/gdiplus/gdiplus.h"
#include "tests/platform/gdiplus/Vorlagen.h"
#include "tests/support/Fehler.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

namespace {

std::int32_t starte() {
  std::int32_t marke = 0;
  EXPECT_EQ(GdiplusStartup(marke, 1), Ok);
  EXPECT_NE(marke, 0);
  return marke;
}

TEST(Sitzung, WithoutASessionEveryStatusIs18) {
  Bitmap bild;
  Bitmap handle;
  EXPECT_EQ(GdipCreateBitmapFromFile(u"/gibt/es/nicht.jpg"_s, bild), GdiplusNotInitialized);
  EXPECT_EQ(GdipCreateHBITMAPFromBitmap(bild, handle, 0), GdiplusNotInitialized);
  EXPECT_EQ(GdipDisposeImage(bild), GdiplusNotInitialized);
}

TEST(Sitzung, ADurationEndsItsOwnSessionAlone) {
  const std::int32_t aussen = starte();
  {
    const Sitzungsdauer innen;
    EXPECT_TRUE(innen.begonnen());
  }
  EXPECT_TRUE(bildersitzung::laeuft());
  bildersitzung::naechster_Start(GenericError);
  EXPECT_FALSE(Sitzungsdauer().begonnen());
  EXPECT_TRUE(bildersitzung::laeuft());
  GdiplusShutdown(aussen);
  EXPECT_FALSE(bildersitzung::laeuft());
}

TEST(Sitzung, AFailureOfTheDiskHasAStatusForReadingAndOneForWriting) {
  const std::tuple<std::int32_t, std::int32_t, std::int32_t> faelle[] = {
      {fehlernummer::ZugriffVerweigert, AccessDenied, AccessDenied},
      {fehlernummer::PfadZugriff, FileNotFound, AccessDenied},
      {fehlernummer::DateiVorhanden, GenericError, AccessDenied},
      {fehlernummer::DateiNichtGefunden, FileNotFound, FileNotFound},
      {fehlernummer::PfadNichtGefunden, FileNotFound, FileNotFound},
      {fehlernummer::UngueltigerDateiname, FileNotFound, FileNotFound},
      {fehlernummer::SpeicherErschoepft, OutOfMemory, OutOfMemory},
      {fehlernummer::EinAusgabeFehler, Win32Error, Win32Error},
      {fehlernummer::DatentraegerVoll, GenericError, Win32Error}, {fehlernummer::Ueberlauf, GenericError, Win32Error}};
  for (const auto& [nummer, lesen, schreiben] : faelle) {
    EXPECT_EQ(status_beim_Lesen(nummer), lesen) << nummer;
    EXPECT_EQ(status_beim_Schreiben(nummer), schreiben) << nummer;
  }
}

TEST(Sitzung, OnlyVersion1Starts) {
  std::int32_t marke = 7;
  EXPECT_EQ(GdiplusStartup(marke, 2), UnsupportedGdiplusVersion);
  EXPECT_EQ(marke, 7);
  EXPECT_FALSE(bildersitzung::laeuft());
}

TEST(Sitzung, NestedSessionsAreCounted) {
  const std::int32_t aussen = starte();
  const std::int32_t innen = starte();
  EXPECT_NE(aussen, innen);
  EXPECT_EQ(GdiplusShutdown(innen), Ok);
  EXPECT_TRUE(bildersitzung::laeuft());
  EXPECT_EQ(GdiplusShutdown(aussen), Ok);
  EXPECT_FALSE(bildersitzung::laeuft());
}

TEST(Sitzung, TheSameTokenTwiceEndsTheOuterSessionToo) {
  starte();
  const std::int32_t innen = starte();
  GdiplusShutdown(innen);
  GdiplusShutdown(innen);
  EXPECT_FALSE(bildersitzung::laeuft());
}

TEST(Sitzung, OneEndTooManyIsStatus0AndDoesNotCountAhead) {
  EXPECT_EQ(GdiplusShutdown(starte()), Ok);
  EXPECT_EQ(GdiplusShutdown(99), Ok);
  const std::int32_t marke = starte();
  EXPECT_TRUE(bildersitzung::laeuft());
  GdiplusShutdown(marke);
}

TEST(Sitzung, AnOrderedFailureOfTheStartCountsOnce) {
  bildersitzung::naechster_Start(GenericError);
  std::int32_t marke = 0;
  EXPECT_EQ(GdiplusStartup(marke, 1), GenericError);
  EXPECT_FALSE(bildersitzung::laeuft());
  GdiplusShutdown(starte());
}

TEST(Sitzung, WithoutABitmapTheStatusIs2) {
  const std::int32_t marke = starte();
  Bitmap keines;
  Bitmap handle;
  EXPECT_EQ(GdipCreateHBITMAPFromBitmap(keines, handle, 0), InvalidParameter);
  EXPECT_EQ(GdipDisposeImage(keines), InvalidParameter);
  GdiplusShutdown(marke);
}

TEST(LoadPicture, ReadsBmpGifAndJpegWithoutASession) {
  const Testordner ordner;
  const QImage bild = vorlagen::foto({20, 10});
  for (const QByteArray& inhalt : {vorlagen::kodiert(bild, "bmp"), vorlagen::gif({20, 10}, 5), vorlagen::jpeg(bild)})
    EXPECT_EQ(LoadPicture(ordner.schreibe(u"a"_s, inhalt))->groesse(), QSize(20, 10));
}

TEST(LoadPicture, Reports53ForMissingAnd481ForOtherFiles) {
  const Testordner ordner;
  const auto nummer = [&](const QString& pfad) { return Fehlernummer_von([&] { LoadPicture(pfad); }); };
  EXPECT_EQ(nummer(ordner.pfad(u"fehlt.bmp"_s)), fehlernummer::DateiNichtGefunden);
  EXPECT_EQ(nummer(ordner.schreibe(u"a"_s, "Text")), fehlernummer::UngueltigesBild);
  EXPECT_EQ(
      nummer(ordner.schreibe(u"b"_s, vorlagen::kodiert(vorlagen::foto({9, 9}), "png"))), fehlernummer::UngueltigesBild);
  EXPECT_EQ(nummer(ordner.schreibe(u"c"_s, "\xff\xd8\xff")), fehlernummer::UngueltigesBild);
}

}  // namespace
