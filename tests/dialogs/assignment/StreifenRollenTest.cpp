// The strip of thumbnails: scrolling.
#include "tests/dialogs/assignment/Streifentest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Counts how often a thumbnail comes or goes.
class Schauwache final : public QObject {
 public:
  Schauwache() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* objekt, QEvent* ereignis) override {
    if (!objekt->objectName().startsWith(u"Pic_Thumb("_s)) return false;
    gezeigt += ereignis->type() == QEvent::Show;
    verborgen += ereignis->type() == QEvent::Hide;
    return false;
  }
  int gezeigt = 0;
  int verborgen = 0;
};

}  // namespace

// The strip is built twice, and each building hides and shows.
TEST_F(Streifen, AStepOfScrollingShowsEachThumbnailOnce) {
  fuege_Bilder_ein(10);
  zeige([&] {
    ASSERT_EQ(form().Pic_Thumb.UBound(), 10);
    const Schauwache wache;
    klicke(form().SSC_Scroll_Right);
    EXPECT_EQ(form().Pic_Thumb.UBound(), 9);
    EXPECT_EQ(wache.verborgen, 10);
    EXPECT_EQ(wache.gezeigt, 9);
    for (int i = 1; i <= 9; ++i) EXPECT_TRUE(form().Pic_Thumb(i).isVisible()) << i;
  });
}

TEST_F(Streifen, TheScrollButtonsAreEnabledTogetherWhenThePicturesNeedMoreRoom) {
  fuege_Bilder_ein(8);
  zeige([&] {
    frm_BildZuordnung& f = form();
    const auto noetig = [&] {
      double summe = 0;
      for (int i = 1; i <= f.Pic_Thumb.UBound(); ++i) summe += f.Pic_Thumb(i).Width() + 100;
      return summe;
    };
    const double knoepfe = f.SSC_Scroll_Left.Width() + f.SSC_Scroll_Right.Width();
    const auto pruefe = [&](double breite, bool erwartet) {
      f.SSP_Panel(3).Width(breite);
      f.Pruefe_Scroll();
      EXPECT_EQ(f.SSC_Scroll_Left.Enabled(), erwartet) << breite;
      EXPECT_EQ(f.SSC_Scroll_Right.Enabled(), erwartet) << breite;
    };
    pruefe(noetig() + knoepfe, false);
    pruefe(noetig() + knoepfe - 1, true);
    f.ErsteZeile = 1;
    pruefe(noetig() + knoepfe, true);
  });
}

TEST_F(Streifen, TheFirstThumbnailThatReachesTheRightLimitIsRememberedAndKeptWhenNoneDoes) {
  fuege_Bilder_ein(6);
  zeige([&] {
    frm_BildZuordnung& f = form();
    const double knoepfe = f.SSC_Scroll_Left.Width() + f.SSC_Scroll_Right.Width();
    const double rechts_von_3 = f.Pic_Thumb(3).Left() + f.Pic_Thumb(3).Width();
    f.SSP_Panel(3).Width(rechts_von_3 + knoepfe);
    f.Pruefe_Scroll();
    EXPECT_EQ(f.SichtbareThumbs, 3);
    f.SSP_Panel(3).Width(rechts_von_3 + knoepfe + 1);
    f.Pruefe_Scroll();
    EXPECT_EQ(f.SichtbareThumbs, 4);
    f.SSP_Panel(3).Width(90000);
    f.Pruefe_Scroll();
    EXPECT_EQ(f.SichtbareThumbs, 4);
  });
}

TEST_F(Streifen, ScrollingMovesTheStripByOnePictureAndNotTheSelection) {
  fuege_Bilder_ein(10);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    klicke(form().SSC_Scroll_Right);
    EXPECT_EQ(form().ErsteZeile, 1);
    EXPECT_EQ(tag(1), u"P:\\Belege\\1\\b.jpg"_s);
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().Shp_Thump.Left(), form().Pic_Thumb(1).Left() - 32);
    EXPECT_EQ(stapel(1), Stapelgruen);
    klicke(form().SSC_Scroll_Left);
    EXPECT_EQ(form().ErsteZeile, 0);
    EXPECT_EQ(form().Shp_Thump.Left(), form().Pic_Thumb(2).Left() - 32);
    klicke(form().SSC_Scroll_Left);
    EXPECT_EQ(form().ErsteZeile, 0);
    EXPECT_EQ(form().Pic_Thumb.Count(), 11);
  });
}

TEST_F(Streifen, ScrollingPastTheEndStopsAtTheLastRowWhichThenStandsAlone) {
  fuege_Bilder_ein(8);
  zeige([&] {
    for (int i = 0; i < 12; ++i) klicke(form().SSC_Scroll_Right);
    EXPECT_EQ(form().ErsteZeile, 7);
    EXPECT_EQ(form().Pic_Thumb.Count(), 2);
    EXPECT_EQ(tag(1), u"P:\\Belege\\1\\h.jpg"_s);
    EXPECT_TRUE(form().SSC_Scroll_Left.Enabled());
    EXPECT_TRUE(form().SSC_Scroll_Right.Enabled());
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_FALSE(form().Shp_Thump.Visible());
  });
}

TEST_F(Streifen, CrossesAreDrawnAgainAfterAScrollStep) {
  fuege_Bilder_ein(8);
  zeige([&] {
    form().Zeile(1).Entfernen = true;
    klicke(form().SSC_Scroll_Right);
    EXPECT_TRUE(durchgestrichen(1));
    EXPECT_FALSE(durchgestrichen(2));
  });
}

TEST_F(Streifen, ARowBeforeTheStripIsBroughtToItsFirstPlace) {
  fuege_Bilder_ein(6);
  zeige([&] {
    baue(4);
    std::int32_t zeile = 2;
    bool ergebnis = false;
    form().Zeige_Zeile(zeile, false, ergebnis);
    EXPECT_TRUE(ergebnis);
    EXPECT_EQ(zeile, 1);
    EXPECT_EQ(form().ErsteZeile, 2);
    EXPECT_EQ(tag(1), u"P:\\Belege\\1\\c.jpg"_s);
    EXPECT_EQ(stapel(1), Stapelgruen);
  });
}

TEST_F(Streifen, ARowThatStandsInViewGivesItsControlAndScrollsNothing) {
  fuege_Bilder_ein(6);
  zeige([&] {
    baue(1);
    std::int32_t zeile = 2;
    bool ergebnis = false;
    form().Zeige_Zeile(zeile, true, ergebnis);
    EXPECT_TRUE(ergebnis);
    EXPECT_EQ(zeile, 2);
    EXPECT_EQ(form().ErsteZeile, 1);
  });
}

TEST_F(Streifen, ARowBehindTheVisiblePartIsBroughtToTheLastWholePlaceIfScrollingIsAllowed) {
  fuege_Bilder_ein(12);
  zeige([&] {
    frm_BildZuordnung& f = form();
    const double rechts = f.SSP_Panel(3).Width() - f.SSC_Scroll_Right.Width();
    int n = 0;
    while (f.Pic_Thumb(n + 1).Left() + f.Pic_Thumb(n + 1).Width() <= rechts) ++n;
    ASSERT_GT(n, 1);
    ASSERT_LT(n, 10);
    std::int32_t zeile = 10;
    bool ergebnis = true;
    f.Zeige_Zeile(zeile, false, ergebnis);
    EXPECT_FALSE(ergebnis);
    EXPECT_EQ(zeile, 10);
    EXPECT_EQ(f.ErsteZeile, 0);
    f.Zeige_Zeile(zeile, true, ergebnis);
    EXPECT_TRUE(ergebnis);
    EXPECT_EQ(zeile, n);
    EXPECT_EQ(f.ErsteZeile, 10 - n + 1);
    EXPECT_EQ(tag(n), u"P:\\Belege\\1\\k.jpg"_s);
  });
}

TEST_F(Streifen, WhereNoThumbnailFitsWholeNothingIsBroughtIntoView) {
  fuege_Bilder_ein(3);
  zeige([&] {
    form().SSP_Panel(3).Width(1000);
    std::int32_t zeile = 1;
    bool ergebnis = true;
    form().Zeige_Zeile(zeile, true, ergebnis);
    EXPECT_FALSE(ergebnis);
    EXPECT_EQ(zeile, 1);
    EXPECT_EQ(form().ErsteZeile, 0);
  });
}
