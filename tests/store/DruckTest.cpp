#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include "imaging/frmPic.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "store/clsBildZuordnungen.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Druck : public ::testing::Test {
 protected:
  void male(const QString& name, QSize groesse) {
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(Qt::red);
    wurzel.schreibe(name, {});
    ASSERT_TRUE(bild.save(wurzel.pfad(name)));
  }
  void anhang(bool anhaengen, bool drucken, bool neue_Seite) {
    ASSERT_TRUE(store.FKT_NeuesBild({}, {}, {}, {}, u"n"_s, u"jpg"_s, {}, {}));
    store.Bild_AlsAnhang(anhaengen);
    store.Bild_Drucken(drucken);
    store.Bild_NeueSeite(neue_Seite);
  }
  Bildwurzel wurzel;
  MeldungsDoppel boxen;
  CoreDoppel core;
  clsBildZuordnungen store;
};

}  // namespace

TEST_F(Druck, OneSideIsComputedFromTheOtherByTheProportions) {
  EXPECT_EQ(store.Fkt_GetHoehe_Picture(200, 100, 7, 50), 25);
  EXPECT_EQ(store.Fkt_GetBreite_Picture(200, 100, 30, 9), 60);
}

TEST_F(Druck, WithASideOfZeroTheGivenValueComesBack) {
  EXPECT_EQ(store.Fkt_GetHoehe_Picture(0, 100, 7, 50), 7);
  EXPECT_EQ(store.Fkt_GetHoehe_Picture(200, 0, 7, 50), 7);
  EXPECT_EQ(store.Fkt_GetHoehe_Picture(200, 100, 7, 0), 7);
  EXPECT_EQ(store.Fkt_GetBreite_Picture(200, 100, 0, 9), 9);
  EXPECT_EQ(store.Fkt_GetBreite_Picture(0, 100, 30, 9), 9);
  EXPECT_EQ(store.Fkt_GetBreite_Picture(200, 0, 30, 9), 9);
}

TEST_F(Druck, ALoadedPictureTellsItsSizeAndLivesOn) {
  male(u"a.png"_s, {40, 20});
  EXPECT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:"_s, false));
  EXPECT_EQ(store.AktLoadPicture, u"a.png"_s);
  EXPECT_EQ(store.AktLoadPicture_Breite, 40);
  EXPECT_EQ(store.AktLoadPicture_Hoehe, 20);
  ASSERT_NE(store.AktLoadPicture_Picture, nullptr);
  EXPECT_EQ(store.AktLoadPicture_Picture->bild().size(), QSize(40, 20));
}

TEST_F(Druck, TwipsAreFifteenToAPixelAndHoldForThatLoadOnly) {
  male(u"a.png"_s, {40, 20});
  male(u"b.png"_s, {10, 30});
  EXPECT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:"_s, true));
  EXPECT_EQ(store.AktLoadPicture_Breite, 600);
  EXPECT_EQ(store.AktLoadPicture_Hoehe, 300);
  EXPECT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:"_s, false));
  EXPECT_EQ(store.AktLoadPicture_Breite, 600);
  EXPECT_TRUE(store.FKT_LoadPicture(u"b.png"_s, u"P:"_s, false));
  EXPECT_EQ(store.AktLoadPicture_Breite, 10);
}

TEST_F(Druck, TheSameNameInAnotherFolderCountsAsLoaded) {
  male(u"a.png"_s, {40, 20});
  male(u"o/a.png"_s, {10, 30});
  ASSERT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:"_s, false));
  const auto bild = store.AktLoadPicture_Picture;
  EXPECT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:\\o"_s, true));
  EXPECT_EQ(store.AktLoadPicture, u"a.png"_s);
  EXPECT_EQ(store.AktLoadPicture_Breite, 40);
  EXPECT_EQ(store.AktLoadPicture_Hoehe, 20);
  EXPECT_EQ(store.AktLoadPicture_Picture, bild);
  EXPECT_EQ(store.AktLoadPicture_Picture->groesse(), QSize(40, 20));
  store.AktLoadPicture.clear();
  EXPECT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:\\o"_s, false));
  EXPECT_EQ(store.AktLoadPicture, u"a.png"_s);
  EXPECT_EQ(store.AktLoadPicture_Breite, 10);
  EXPECT_EQ(store.AktLoadPicture_Hoehe, 30);
  EXPECT_NE(store.AktLoadPicture_Picture, bild);
  EXPECT_EQ(store.AktLoadPicture_Picture->groesse(), QSize(10, 30));
}

TEST_F(Druck, TheEmptyNameAtTheStartIsLoadedAlready) {
  EXPECT_TRUE(store.FKT_LoadPicture(QString(), u"P:"_s, false));
  EXPECT_EQ(store.AktLoadPicture_Picture, nullptr);
}

TEST_F(Druck, AMissingFileLeavesWhatWasLoaded) {
  male(u"a.png"_s, {40, 20});
  ASSERT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:"_s, false));
  const auto bild = store.AktLoadPicture_Picture;
  EXPECT_FALSE(store.FKT_LoadPicture(u"fehlt.png"_s, u"P:"_s, true));
  EXPECT_EQ(store.AktLoadPicture, u"a.png"_s);
  EXPECT_EQ(store.AktLoadPicture_Breite, 40);
  EXPECT_EQ(store.AktLoadPicture_Hoehe, 20);
  EXPECT_EQ(store.AktLoadPicture_Picture, bild);
}

TEST_F(Druck, APictureThatNobodyCanReadIsToldOnceAndCountsAsLoaded) {
  wurzel.schreibe(u"text.jpg"_s, "kein Bild");
  boxen.erwarte({u"Unknown Image Format. GDI+ Error:13"_s, u"GDI Error"_s});
  EXPECT_TRUE(store.FKT_LoadPicture(u"text.jpg"_s, u"P:"_s, false));
  EXPECT_EQ(store.AktLoadPicture, u"text.jpg"_s);
  EXPECT_EQ(store.AktLoadPicture_Picture, nullptr);
}

TEST_F(Druck, ALaterAttachmentOnANewPageIsFound) {
  ASSERT_TRUE(store.FKT_Neu());
  anhang(true, true, true);
  anhang(false, true, true);
  anhang(true, false, true);
  anhang(true, true, false);
  anhang(true, true, true);
  store.AktInd(2);
  EXPECT_TRUE(store.Pruefe_naechstes_Bild_neueSeite(-1));
  EXPECT_TRUE(store.Pruefe_naechstes_Bild_neueSeite(0));
  EXPECT_TRUE(store.Pruefe_naechstes_Bild_neueSeite(3));
  EXPECT_FALSE(store.Pruefe_naechstes_Bild_neueSeite(4));
  EXPECT_FALSE(store.Pruefe_naechstes_Bild_neueSeite(99));
  EXPECT_EQ(store.AktInd(), 2);
}

TEST_F(Druck, APictureThatDoesNotPrintDoesNotCount) {
  ASSERT_TRUE(store.FKT_Neu());
  anhang(false, true, false);
  anhang(true, false, true);
  EXPECT_FALSE(store.Pruefe_naechstes_Bild_neueSeite(0));
  EXPECT_FALSE(store.Pruefe_naechstes_Bild_neueSeite(-1));
}

TEST_F(Druck, AMarkForRemovalPlaysNoPartForPageBreaks) {
  ASSERT_TRUE(store.FKT_Neu());
  anhang(true, true, true);
  store.Bild_Delete(true);
  EXPECT_TRUE(store.Pruefe_naechstes_Bild_neueSeite(-1));
}

TEST_F(Druck, AnImpossibleStartOrAStoreWithoutATableIsASilentFalse) {
  EXPECT_FALSE(store.Pruefe_naechstes_Bild_neueSeite(0));
  ASSERT_TRUE(store.FKT_Neu());
  anhang(true, true, true);
  EXPECT_FALSE(store.Pruefe_naechstes_Bild_neueSeite(-5));
}

TEST_F(Druck, ReleasingTheStoreReleasesTheLoadingForm) {
  {
    clsBildZuordnungen kurz;
    frmPic::Instanz().picPicture.Scale(ScaleMode::Twips);
  }
  EXPECT_EQ(frmPic::Instanz().picPicture.Scale(), ScaleMode::Pixel);
}

TEST_F(Druck, APictureOpenedByItsHeaderHasItsSizeAtOnceAndReadsItsFileWhenPainted) {
  male(u"a.png"_s, {30, 20});
  {
    const bildlader::NurKopf nur_Kopf;
    ASSERT_TRUE(store.FKT_LoadPicture(u"a.png"_s, u"P:"_s, false));
  }
  EXPECT_EQ(store.AktLoadPicture_Breite, 30);
  EXPECT_EQ(store.AktLoadPicture_Hoehe, 20);
  EXPECT_EQ(store.AktLoadPicture_Picture->bild().pixel(10, 10), qRgb(255, 0, 0));
  ASSERT_TRUE(QFile::remove(wurzel.pfad(u"a.png"_s)));
  EXPECT_EQ(store.AktLoadPicture_Picture->bild({15, 10}).size(), QSize(15, 10));
}
