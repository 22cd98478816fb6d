#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "platform/gdiplus/gdiplus.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

using namespace mod_GrafikKonvert;
using namespace Qt::Literals::StringLiterals;

namespace {

oberflaeche::Meldung gdi_Fehler(const QString& text) {
  return {text, u"GDI Error"_s, oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::OK};
}

QByteArray bmp(int breite, int hoehe) {
  QImage bild(breite, hoehe, QImage::Format_RGB32);
  bild.fill(Qt::red);
  QByteArray bytes;
  QBuffer puffer(&bytes);
  puffer.open(QIODevice::WriteOnly);
  bild.save(&puffer, "bmp");
  return bytes;
}

class GrafikKonvert : public ::testing::Test {
 protected:
  MeldungsDoppel meldungen;
  Testordner ordner;
};

TEST_F(GrafikKonvert, EveryStatusHasItsText) {
  const QStringList texte{
      u"Generic Error."_s,
      u"Invalid Parameter."_s,
      u"Out Of Memory."_s,
      u"Object Busy."_s,
      u"Insufficient Buffer."_s,
      u"Not Implemented."_s,
      u"Win32 Error."_s,
      u"Wrong State."_s,
      u"Aborted."_s,
      u"File Not Found."_s,
      u"Value Overflow."_s,
      u"Access Denied."_s,
      u"Unknown Image Format."_s,
      u"FontFamily Not Found."_s,
      u"FontStyle Not Found."_s,
      u"Not TrueType Font."_s,
      u"Unsupported Gdiplus Version."_s,
      u"Gdiplus Not Initialized."_s,
      u"Property Not Found."_s,
      u"Property Not Supported."_s,
  };
  for (qsizetype i = 0; i < texte.size(); ++i) EXPECT_EQ(Fkt_GdiFehlerText(static_cast<std::int32_t>(i + 1)), texte[i]);
  for (const std::int32_t status : {0, 21, 22, -1, -2147483647})
    EXPECT_EQ(Fkt_GdiFehlerText(status), u"Unknown GDI+ Error."_s);
}

TEST_F(GrafikKonvert, Status0And2StaySilent) {
  EXPECT_EQ(Fkt_GdiPruefen(0), 0);
  EXPECT_EQ(Fkt_GdiPruefen(2), 2);
}

TEST_F(GrafikKonvert, EveryOtherStatusIsReportedWithItsNumber) {
  meldungen.erwarte(gdi_Fehler(u"File Not Found. GDI+ Error:10"_s));
  EXPECT_EQ(Fkt_GdiPruefen(10), 10);
  meldungen.erwarte(gdi_Fehler(u"Generic Error. GDI+ Error:1"_s));
  EXPECT_EQ(Fkt_GdiPruefen(1), 1);
}

TEST_F(GrafikKonvert, AStatusFrom21OnIsAnUnknownFailureWithItsNumber) {
  meldungen.erwarte(gdi_Fehler(u"Unknown GDI+ Error. GDI+ Error:21"_s));
  EXPECT_EQ(Fkt_GdiPruefen(21), 21);
  meldungen.erwarte(gdi_Fehler(u"Unknown GDI+ Error. GDI+ Error:-1"_s));
  EXPECT_EQ(Fkt_GdiPruefen(-1), -1);
}

TEST_F(GrafikKonvert, ASessionSetsItsTokenAndEndsWithStatus0) {
  m_GdiToken = 0;
  EXPECT_EQ(Fkt_GdiStartup(1), 0);
  EXPECT_NE(m_GdiToken, 0);
  EXPECT_EQ(Fkt_GdiShutdown(), 0);
  EXPECT_EQ(Fkt_GdiShutdown(), 0);
  EXPECT_EQ(Fkt_GdiStartup(2), 17);
}

TEST_F(GrafikKonvert, WithoutASessionLoadingReportsStatus18) {
  const QString pfad = ordner.schreibe(u"a.bmp"_s, bmp(4, 3));
  meldungen.erwarte(gdi_Fehler(u"Gdiplus Not Initialized. GDI+ Error:18"_s));
  EXPECT_EQ(Fkt_LoadPictureGdi(pfad), nullptr);
}

TEST_F(GrafikKonvert, WithASessionAPictureIsLoaded) {
  Fkt_GdiStartup(1);
  const auto bild = Fkt_LoadPictureGdi(ordner.schreibe(u"a.bmp"_s, bmp(4, 3)));
  Fkt_GdiShutdown();
  ASSERT_NE(bild, nullptr);
  EXPECT_EQ(bild->groesse(), QSize(4, 3));
  EXPECT_EQ(bild->bild().pixel(1, 1), qRgb(255, 0, 0)) << "the picture outlives the session";
}

TEST_F(GrafikKonvert, AFailureWhileLoadingIsReportedAndGivesNoPicture) {
  Fkt_GdiStartup(1);
  meldungen.erwarte(gdi_Fehler(u"File Not Found. GDI+ Error:10"_s));
  EXPECT_EQ(Fkt_LoadPictureGdi(ordner.pfad(u"fehlt.jpg"_s)), nullptr);
  meldungen.erwarte(gdi_Fehler(u"Unknown Image Format. GDI+ Error:13"_s));
  EXPECT_EQ(Fkt_LoadPictureGdi(ordner.schreibe(u"a.jpg"_s, "Text")), nullptr);
  Fkt_GdiShutdown();
}

TEST_F(GrafikKonvert, ADamagedHeaderGivesNoPictureWithoutAMessage) {
  Fkt_GdiStartup(1);
  EXPECT_EQ(Fkt_LoadPictureGdi(ordner.schreibe(u"a.jpg"_s, "\xff\xd8\xff")), nullptr);
  Fkt_GdiShutdown();
}

TEST_F(GrafikKonvert, WhereTheSessionEndsDuringTheMessageThereIsStillNoPicture) {
  Fkt_GdiStartup(1);
  meldungen.erwarte(
      gdi_Fehler(u"File Not Found. GDI+ Error:10"_s), oberflaeche::Antwort::OK, [] { Fkt_GdiShutdown(); });
  EXPECT_EQ(Fkt_LoadPictureGdi(ordner.pfad(u"fehlt"_s)), nullptr);
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
}

TEST_F(GrafikKonvert, AHandleBecomesItsPicture) {
  Fkt_GdiStartup(1);
  const auto bild = Fkt_LoadPictureGdi(ordner.schreibe(u"a.bmp"_s, bmp(4, 3)));
  EXPECT_EQ(Fkt_HandleToPicture(bild, 1, 0), bild);
  EXPECT_EQ(Fkt_HandleToPicture(nullptr, 1, 0), nullptr);
  Fkt_GdiShutdown();
}

}  // namespace
