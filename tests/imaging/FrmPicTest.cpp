#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <thread>

#include "imaging/frmPic.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "platform/gdiplus/gdiplus.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

using namespace mod_GrafikKonvert;
using namespace Qt::Literals::StringLiterals;

namespace {

class FrmPic : public ::testing::Test {
 protected:
  QString schreibe(const QString& name, const char* format, int breite, int hoehe) const {
    QImage bild(breite, hoehe, QImage::Format_RGB32);
    bild.fill(Qt::blue);
    QByteArray bytes;
    QBuffer puffer(&bytes);
    puffer.open(QIODevice::WriteOnly);
    bild.save(&puffer, format);
    return ordner.schreibe(name, bytes);
  }
  static oberflaeche::Meldung gdi_Fehler(const QString& text) {
    return {text, u"GDI Error"_s, oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::OK};
  }
  void Sitzung_scheitert() {
    gdiplus::bildersitzung::naechster_Start(gdiplus::GenericError);
    meldungen.erwarte(gdi_Fehler(u"Generic Error. GDI+ Error:1"_s));
  }

  MeldungsDoppel meldungen;
  Testordner ordner;
  frmPic form;
};

TEST_F(FrmPic, LoadsAPictureAndTellsItsSizeInPixels) {
  EXPECT_TRUE(form.FKT_LoadPicture(schreibe(u"a.jpg"_s, "jpg", 64, 48)));
  EXPECT_EQ(form.picBreite, 64);
  EXPECT_EQ(form.PicHoehe, 48);
  ASSERT_NE(form.picPicture.Picture(), nullptr);
  EXPECT_EQ(form.picPicture.Picture()->groesse(), QSize(64, 48));
}

TEST_F(FrmPic, WhereNothingCanBeReadNoBlackPanelIsShown) {
  schreibe(u"a.jpg"_s, "jpg", 64, 48);
  const QByteArray ganz = ordner.lies(u"a.jpg"_s);
  EXPECT_TRUE(form.FKT_LoadPicture(ordner.schreibe(u"b.jpg"_s, ganz.left(ganz.indexOf("\xff\xda"_ba) + 14))));
  EXPECT_EQ(form.picBreite, 64);
  const QImage leeres = form.picPicture.Picture()->bild({32, 24});
  EXPECT_EQ(leeres.size(), QSize(32, 24));
  EXPECT_EQ(leeres.pixelColor(1, 1), QColor(Qt::white));
}

TEST_F(FrmPic, InTwipsAPixelCountsFifteen) {
  form.picPicture.Scale(ScaleMode::Twips);
  EXPECT_TRUE(form.FKT_LoadPicture(schreibe(u"a.png"_s, "png", 64, 48)));
  EXPECT_EQ(form.picBreite, 960);
  EXPECT_EQ(form.PicHoehe, 720);
}

TEST_F(FrmPic, LoadingTwiceOpensAndClosesTwoSessionsAndGivesTheSameSize) {
  const QString pfad = schreibe(u"a.png"_s, "png", 30, 20);
  EXPECT_TRUE(form.FKT_LoadPicture(pfad));
  const std::int32_t erste = m_GdiToken;
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
  EXPECT_TRUE(form.FKT_LoadPicture(pfad));
  EXPECT_NE(m_GdiToken, erste);
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
  EXPECT_EQ(form.picBreite, 30);
  EXPECT_EQ(form.PicHoehe, 20);
}

TEST_F(FrmPic, AfterTheBracketEndsTheFlagIsStillSetAndLoadingReports18) {
  const QString pfad = schreibe(u"a.png"_s, "png", 3, 2);
  EXPECT_TRUE(form.FKT_LoadPicture(pfad));
  EXPECT_TRUE(m_GdiAktiv);
  EXPECT_EQ(m_GdiStatus, 0);
  meldungen.erwarte(gdi_Fehler(u"Gdiplus Not Initialized. GDI+ Error:18"_s));
  EXPECT_EQ(Fkt_LoadPictureGdi(pfad), nullptr);
}

TEST_F(FrmPic, AMissingFileIsFalseAndTheSizeStays) {
  EXPECT_TRUE(form.FKT_LoadPicture(schreibe(u"a.png"_s, "png", 30, 20)));
  EXPECT_FALSE(form.FKT_LoadPicture(ordner.pfad(u"fehlt.png"_s)));
  EXPECT_EQ(form.picBreite, 30);
  EXPECT_EQ(form.PicHoehe, 20);
  EXPECT_EQ(form.picPicture.Picture(), nullptr) << "the box was cleared first";
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
}

TEST_F(FrmPic, AFolderIsNoFile) {
  EXPECT_FALSE(form.FKT_LoadPicture(ordner.pfad()));
}

TEST_F(FrmPic, AFileThatGdiRefusesIsTrueWithAnEmptyPanelInTheLastSize) {
  EXPECT_TRUE(form.FKT_LoadPicture(schreibe(u"a.png"_s, "png", 30, 20)));
  form.picBreite = form.PicHoehe = 0;
  meldungen.erwarte(gdi_Fehler(u"Unknown Image Format. GDI+ Error:13"_s));
  EXPECT_TRUE(form.FKT_LoadPicture(ordner.schreibe(u"text.jpg"_s, "kein Bild")));
  EXPECT_EQ(form.picPicture.Picture(), nullptr);
  EXPECT_EQ(form.picBreite, 30);
  EXPECT_EQ(form.PicHoehe, 20);
}

TEST_F(FrmPic, ADamagedHeaderIsTrueWithoutAMessageWithAnEmptyPanel) {
  EXPECT_TRUE(form.FKT_LoadPicture(ordner.schreibe(u"a.jpg"_s, "\xff\xd8\xff")));
  EXPECT_EQ(form.picPicture.Picture(), nullptr);
  EXPECT_EQ(form.picBreite, 0);
}

TEST_F(FrmPic, WithoutASessionThePlainLoaderLoadsBmpAndJpeg) {
  for (const char* format : {"bmp", "jpg"}) {
    const QString pfad = schreibe(QString::fromLatin1(format), format, 17, 9);
    Sitzung_scheitert();
    EXPECT_TRUE(form.FKT_LoadPicture(pfad)) << format;
    EXPECT_FALSE(m_GdiAktiv);
    EXPECT_EQ(m_GdiStatus, 1);
    EXPECT_EQ(form.picBreite, 17) << format;
    EXPECT_EQ(form.picPicture.Picture()->bild().size(), QSize(17, 9)) << format;
  }
}

TEST_F(FrmPic, WithoutASessionThePlainLoaderLoadsAGif) {
  const QByteArray gif("GIF89a\2\0\1\0\x80\0\0\0\0\0\xff\xff\xff,\0\0\0\0\2\0\1\0\0\2\2\x4c\x0a\0;", 36);
  Sitzung_scheitert();
  EXPECT_TRUE(form.FKT_LoadPicture(ordner.schreibe(u"a.gif"_s, gif)));
  EXPECT_EQ(form.picBreite, 2);
}

TEST_F(FrmPic, WhereThePlainLoaderFailsTooItIsFalseAndTheSizeStays) {
  EXPECT_TRUE(form.FKT_LoadPicture(schreibe(u"a.png"_s, "png", 30, 20)));
  const QString png = schreibe(u"b.png"_s, "png", 5, 5);
  Sitzung_scheitert();
  EXPECT_FALSE(form.FKT_LoadPicture(png)) << "the plain loader reads no PNG";
  EXPECT_EQ(form.picBreite, 30);
  EXPECT_EQ(form.PicHoehe, 20);
}

TEST_F(FrmPic, AFailedSessionAndAMissingFileReportOnlyTheSession) {
  Sitzung_scheitert();
  EXPECT_FALSE(form.FKT_LoadPicture(ordner.pfad(u"fehlt.bmp"_s)));
}

TEST_F(FrmPic, WhereTheStartAlreadyBreaksOffTheOldFlagIsCleared) {
  const QString pfad = schreibe(u"a.bmp"_s, "bmp", 3, 2);
  EXPECT_TRUE(form.FKT_LoadPicture(pfad));
  EXPECT_TRUE(m_GdiAktiv);
  gdiplus::bildersitzung::naechster_Start(gdiplus::GenericError);
  meldungen.erwarte(gdi_Fehler(u"Generic Error. GDI+ Error:1"_s), oberflaeche::Antwort::OK,
      [] { throw Laufzeitfehler(fehlernummer::SpeicherErschoepft); });
  EXPECT_FALSE(form.FKT_LoadPicture(pfad));
  EXPECT_FALSE(m_GdiAktiv);
}

TEST_F(FrmPic, AFailureInTheMessageIsFalseAndClosesTheBracket) {
  meldungen.erwarte(gdi_Fehler(u"Unknown Image Format. GDI+ Error:13"_s), oberflaeche::Antwort::OK,
      [] { throw Laufzeitfehler(fehlernummer::SpeicherErschoepft); });
  EXPECT_FALSE(form.FKT_LoadPicture(ordner.schreibe(u"text.jpg"_s, "kein Bild")));
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
}

TEST_F(FrmPic, TheLoadedPictureOutlivesTheForm) {
  std::shared_ptr<const Bild> bild;
  EXPECT_TRUE(frmPic::Instanz().FKT_LoadPicture(schreibe(u"a.bmp"_s, "bmp", 8, 4)));
  bild = frmPic::Instanz().picPicture.Picture();
  frmPic::Entladen();
  EXPECT_EQ(bild->bild().pixel(2, 2), qRgb(0, 0, 255));
}

TEST_F(FrmPic, ThereIsOneInstancePerThreadAndANewOneAfterUnloading) {
  frmPic& diese = frmPic::Instanz();
  diese.picBreite = 5;
  EXPECT_EQ(&frmPic::Instanz(), &diese);
  double andere = -1;
  std::thread([&] { andere = frmPic::Instanz().picBreite; }).join();
  EXPECT_EQ(andere, 0);
  frmPic::Entladen();
  frmPic::Entladen();
  EXPECT_EQ(frmPic::Instanz().picBreite, 0);
  frmPic::Entladen();
}

TEST(PictureBox, AnEmptiedPanelKeepsItsLastSize) {
  PictureBox feld;
  EXPECT_EQ(feld.ScaleWidth(), 0);
  MeldungsDoppel meldungen;
  const Testordner ordner;
  const QByteArray gif("GIF89a\7\0\3\0\0\0\0", 13);
  feld.Picture(gdiplus::LoadPicture(ordner.schreibe(u"a"_s, gif)));
  EXPECT_EQ(feld.ScaleWidth(), 7);
  feld.Picture(nullptr);
  EXPECT_EQ(feld.ScaleWidth(), 7);
  EXPECT_EQ(feld.ScaleHeight(), 3);
  feld.Scale(ScaleMode::Twips);
  EXPECT_EQ(feld.ScaleWidth(), 105);
  EXPECT_EQ(feld.ScaleHeight(), 45);
}

}  // namespace
