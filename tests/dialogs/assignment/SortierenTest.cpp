// Sort mode: dragging thumbnails by the mouse.
#include <QTest>
#include <QWindow>
#include <tuple>

#include "tests/dialogs/assignment/Dialogtest.h"
#include "tests/dialogs/assignment/Starterdoppel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Hinweis_Sortieren = u"Bei gedrückter Maustaste Bild an die gewünschte Position schieben"_s;
const QString Hinweis_Sonst = u"Bearbeitungsprogramm starten mit Doppelklick"_s;

class Sortieren : public Dialogtest {
 protected:
  void schalte() { klicke(form().SSR_Sortierung); }
  /// Drags the thumbnail of one index onto another, in three real steps.
  void ziehe(int von, int nach) {
    druecke_Maus(form().Pic_Thumb(von));
    bewege_Maus(form().Pic_Thumb(nach));
    lasse_Maus_los(form().Pic_Thumb(nach));
  }
  QString namen() { return spalte_von(&Arbeitszeile::Bildname).join(QString()); }
  /// Sort mode over that many pictures.
  void zeige_sortierend(int anzahl, const std::function<void()>& waehrend) {
    fuege_Bilder_ein(anzahl);
    zeige([&] {
      schalte();
      ASSERT_TRUE(form().SSR_Sortierung.Value());
      waehrend();
    });
  }
  QRgb stapel(int index) {
    const QImage& bild = form().Pic_Thumb(index).Image();
    return bild.pixel(1, bild.height() - 2);
  }
};

/// Source and target control, and the order of a, b, c, d afterwards.
class Verschieben : public Sortieren, public ::testing::WithParamInterface<std::tuple<int, int, const char*>> {};

}  // namespace

TEST_P(Verschieben, ADropMovesThePictureAndCountsTheOrderAnew) {
  const auto& [von, nach, erwartet] = GetParam();
  zeige_sortierend(4, [&, von = von, nach = nach, erwartet = erwartet] {
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
    ziehe(von, nach);
    EXPECT_EQ(namen(), QString::fromLatin1(erwartet));
    EXPECT_EQ(spalte_von(&Arbeitszeile::SortIndex), (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s}));
    EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), QStringList(4, u"True"_s));
    EXPECT_TRUE(form().DatenGeaendert);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_FALSE(form().DragAktiv);
    EXPECT_FALSE(form().Shp_Sort.Visible());
    for (int i = 1; i <= 4; ++i)
      EXPECT_EQ(form().Pic_Thumb(i).Tag, form().Zeile(i - 1).VollerPfad) << "the strip shows the new order";
  });
}

INSTANTIATE_TEST_SUITE_P(Sortieren, Verschieben,
    ::testing::Values(std::tuple{1, 2, "bacd"}, std::tuple{1, 3, "bcad"}, std::tuple{1, 4, "bcda"},
        std::tuple{2, 1, "bacd"}, std::tuple{2, 3, "acbd"}, std::tuple{2, 4, "acdb"}, std::tuple{3, 1, "cabd"},
        std::tuple{3, 2, "acbd"}, std::tuple{3, 4, "abdc"}, std::tuple{4, 1, "dabc"}, std::tuple{4, 2, "adbc"},
        std::tuple{4, 3, "abdc"}));

TEST_F(Sortieren, AMovedRowKeepsAllItsCellsButItsPlace) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, true, [](clsBildZuordnungen& neu) {
    neu.Bild_Beschreibung(u"Text a"_s);
    neu.Bild_Drucken(true);
  });
  fuege_Bild_ein(u"b"_s);
  fuege_Bild_ein(u"weg"_s, u"jpg"_s, false);
  zeige([&] {
    schalte();
    const Arbeitszeile vorher = form().Zeile(2);
    ziehe(3, 1);
    Arbeitszeile nachher = form().Zeile(0);
    nachher.ZeileGeaendert = vorher.ZeileGeaendert;
    nachher.Aktuell = vorher.Aktuell;
    nachher.SortIndex = vorher.SortIndex;
    EXPECT_TRUE(nachher == vorher);
    EXPECT_EQ(form().Zeile(1).Beschreibung, u"Text a"_s);
    EXPECT_TRUE(form().Zeile(1).Drucken);
  });
}

TEST_F(Sortieren, TheSelectedRowsNumberStaysAndTheFieldsShowThePictureThatStandsThereNow) {
  zeige_sortierend(3, [&] {
    ziehe(1, 3);
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().Zeile(form().AktZeile).Bildname, u"b"_s);
    EXPECT_EQ(form().txt_BildName.Text(), u"b"_s);
    EXPECT_FALSE(form().Shp_Thump.Visible());
  });
}

TEST_F(Sortieren, WhatIsTypedAfterADropGoesToThePictureThatIsShown) {
  fuege_Bild_ein(u"a"_s, u"jpg"_s, true, [](clsBildZuordnungen& b) { b.Bild_Beschreibung(u"Text a"_s); });
  fuege_Bild_ein(u"b"_s, u"jpg"_s, true, [](clsBildZuordnungen& b) { b.Bild_Beschreibung(u"Text b"_s); });
  zeige([&] {
    schalte();
    ziehe(1, 2);
    form().txt_BildText.moveCursor(QTextCursor::End);
    tippe(form().txt_BildText, u"!"_s);
    EXPECT_EQ(spalte_von(&Arbeitszeile::Beschreibung), (QStringList{u"Text b!"_s, u"Text a"_s}));
  });
}

TEST_F(Sortieren, DroppingAPictureOnItselfChangesNothingAndLeavesTheSaveButton) {
  zeige_sortierend(3, [&] {
    const QStringList vorher = spalte_von(&Arbeitszeile::ZeileGeaendert);
    const Bildfeld* control = &form().Pic_Thumb(2);
    ziehe(2, 2);
    EXPECT_EQ(namen(), u"abc"_s);
    EXPECT_EQ(spalte_von(&Arbeitszeile::ZeileGeaendert), vorher);
    EXPECT_FALSE(form().DatenGeaendert);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(&form().Pic_Thumb(2), control);
    EXPECT_FALSE(form().Shp_Sort.Visible());
    EXPECT_FALSE(form().DragAktiv);
  });
}

TEST_F(Sortieren, DroppingAPictureOnItselfLeavesAnEnabledSaveButtonEnabled) {
  zeige_sortierend(3, [&] {
    ziehe(1, 2);
    ziehe(2, 2);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.Enabled());
    EXPECT_EQ(namen(), u"bac"_s);
  });
}

TEST_F(Sortieren, ThePressMakesTheSourceAndTheGreenFrameFollowsTheTarget) {
  zeige_sortierend(3, [&] {
    druecke_Maus(form().Pic_Thumb(1));
    EXPECT_TRUE(form().DragAktiv);
    EXPECT_EQ(form().DragQuelle, 1);
    EXPECT_TRUE(form().Shp_Sort.Visible());
    EXPECT_EQ(form().Shp_Sort.Left(), form().Pic_Thumb(1).Left() - 32);
    bewege_Maus(form().Pic_Thumb(3));
    EXPECT_EQ(form().DragQuelle, 1);
    EXPECT_EQ(form().Shp_Sort.Left(), form().Pic_Thumb(3).Left() - 32);
    EXPECT_EQ(form().Shp_Sort.Width(), form().Pic_Thumb(3).Width() + 82);
    lasse_Maus_los(form().Pic_Thumb(3));
    EXPECT_EQ(form().DragZiel, 3);
    EXPECT_FALSE(form().Shp_Sort.Visible());
  });
}

TEST_F(Sortieren, EachPanelHidesTheGreenFrame) {
  zeige_sortierend(2, [&] {
    for (int i = 0; i < 4; ++i) {
      SSPanel& panel = form().SSP_Panel(i);
      // A point of the panel where no other control stands.
      QPoint frei;
      for (int x = 0; x < panel.width() && frei.isNull(); x += 5)
        if (!panel.childAt(QPoint(x, panel.height() - 3))) frei = QPoint(x, panel.height() - 3);
      ASSERT_FALSE(frei.isNull()) << i;
      druecke_Maus(form().Pic_Thumb(1));
      ASSERT_TRUE(form().Shp_Sort.Visible());
      bewege_Maus(panel, frei);
      EXPECT_FALSE(form().Shp_Sort.Visible()) << i;
      EXPECT_TRUE(form().DragAktiv);
      bewege_Maus(form().Pic_Thumb(2));
      EXPECT_TRUE(form().Shp_Sort.Visible()) << i;
      lasse_Maus_los(form().Pic_Thumb(1));
    }
    EXPECT_EQ(namen(), u"ab"_s);
  });
}

TEST_F(Sortieren, ADropElsewhereMovesNothingAndEndsTheDrag) {
  zeige_sortierend(3, [&] {
    for (QWidget* wo : std::initializer_list<QWidget*>{
             &form().SSP_Panel(0), &form().txt_BildText, &form().SSC_Scroll_Left, &form().SSR_Sortierung}) {
      druecke_Maus(form().Pic_Thumb(1));
      bewege_Maus(*wo);
      lasse_Maus_los(*wo);
      EXPECT_FALSE(form().DragAktiv) << wo->objectName().toStdString();
      EXPECT_FALSE(form().Shp_Sort.Visible());
      EXPECT_EQ(namen(), u"abc"_s);
      EXPECT_TRUE(form().SSR_Sortierung.Value());
    }
    EXPECT_FALSE(form().DatenGeaendert);
    ziehe(1, 2);
    EXPECT_EQ(namen(), u"bac"_s);
  });
}

TEST_F(Sortieren, ADropOutsideTheWindowMovesNothingAndEndsTheDrag) {
  zeige_sortierend(3, [&] {
    druecke_Maus(form().Pic_Thumb(1));
    QTest::mouseRelease(form().windowHandle(), Qt::LeftButton, {}, QPoint(-20, -20));
    EXPECT_FALSE(form().DragAktiv);
    EXPECT_FALSE(form().Shp_Sort.Visible());
    EXPECT_EQ(namen(), u"abc"_s);
  });
}

TEST_F(Sortieren, EscapeEndsTheDragAndNotTheDialog) {
  zeige_sortierend(3, [&] {
    druecke_Maus(form().Pic_Thumb(1));
    bewege_Maus(form().Pic_Thumb(2));
    taste(form(), Qt::Key_Escape);
    EXPECT_TRUE(form().isVisible());
    EXPECT_FALSE(form().DragAktiv);
    EXPECT_FALSE(form().Shp_Sort.Visible());
    lasse_Maus_los(form().Pic_Thumb(2));
    EXPECT_EQ(namen(), u"abc"_s);
    EXPECT_FALSE(form().DatenGeaendert);
  });
}

TEST_F(Sortieren, HidingTheFormEndsTheDrag) {
  zeige_sortierend(3, [&] {
    druecke_Maus(form().Pic_Thumb(1));
    form().Hide();
    EXPECT_FALSE(form().DragAktiv);
  });
}

TEST_F(Sortieren, DraggingOverTheRightButtonScrollsAtEveryMove) {
  zeige_sortierend(10, [&] {
    druecke_Maus(form().Pic_Thumb(1));
    for (int i = 1; i <= 3; ++i) {
      bewege_Maus(form().SSC_Scroll_Right, QPoint(10, 20 + i));
      EXPECT_EQ(form().ErsteZeile, i);
      EXPECT_EQ(form().Pic_Thumb.Count(), 11 - i);
      EXPECT_EQ(stapel(1), qRgb(0xC0, 0xFF, 0xC0)) << "stripes are drawn again";
    }
    for (int i = 0; i < 12; ++i) bewege_Maus(form().SSC_Scroll_Right, QPoint(10, 30 + i));
    EXPECT_EQ(form().ErsteZeile, 9);
    EXPECT_TRUE(form().DragAktiv);
    lasse_Maus_los(form().SSC_Scroll_Right);
    EXPECT_FALSE(form().DragAktiv);
    EXPECT_EQ(namen(), u"abcdefghij"_s);
  });
}

TEST_F(Sortieren, ThereIsNoScrollingToTheLeftInADrag) {
  zeige_sortierend(10, [&] {
    klicke(form().SSC_Scroll_Right);
    ASSERT_EQ(form().ErsteZeile, 1);
    druecke_Maus(form().Pic_Thumb(1));
    bewege_Maus(form().SSC_Scroll_Left);
    EXPECT_EQ(form().ErsteZeile, 1);
    lasse_Maus_los(form().SSC_Scroll_Left);
    EXPECT_EQ(form().ErsteZeile, 1);
  });
}

TEST_F(Sortieren, WithoutADragTheRightButtonScrollsOnlyByItsClick) {
  zeige_sortierend(10, [&] {
    bewege_Maus(form().SSC_Scroll_Right);
    form().SSC_Scroll_Right.DragOver();
    EXPECT_EQ(form().ErsteZeile, 0);
    klicke(form().SSC_Scroll_Right);
    EXPECT_EQ(form().ErsteZeile, 1);
  });
}

TEST_F(Sortieren, AfterScrollingInADragThePictureThatWasTakenIsMoved) {
  zeige_sortierend(10, [&] {
    druecke_Maus(form().Pic_Thumb(1));
    bewege_Maus(form().SSC_Scroll_Right, QPoint(10, 20));
    bewege_Maus(form().SSC_Scroll_Right, QPoint(10, 21));
    ASSERT_EQ(form().ErsteZeile, 2);
    bewege_Maus(form().Pic_Thumb(3));
    lasse_Maus_los(form().Pic_Thumb(3));
    EXPECT_EQ(namen(), u"bcdeafghij"_s);
    EXPECT_EQ(form().ErsteZeile, 2);
    EXPECT_FALSE(form().DragAktiv);
  });
}

TEST_F(Sortieren, APictureThatWasTakenAndScrolledOutIsStillTheOneThatMoves) {
  zeige_sortierend(8, [&] {
    druecke_Maus(form().Pic_Thumb(3));
    for (int i = 0; i < 10; ++i) bewege_Maus(form().SSC_Scroll_Right, QPoint(10, 20 + i));
    ASSERT_EQ(form().ErsteZeile, 7);
    bewege_Maus(form().Pic_Thumb(1));
    lasse_Maus_los(form().Pic_Thumb(1));
    EXPECT_EQ(namen(), u"abdefghc"_s);
    EXPECT_FALSE(form().DragAktiv);
    EXPECT_TRUE(form().DatenGeaendert);
  });
}

TEST_F(Sortieren, APictureThatWasTakenIsStillTheOneThatMovesWhenKeysScrollTheStrip) {
  zeige_sortierend(12, [&] {
    druecke_Maus(form().Pic_Thumb(2));
    for (int i = 0; i < 11; ++i) taste(form(), Qt::Key_F8);
    ASSERT_GT(form().ErsteZeile, 0);
    const QString davor = form().Zeile(form().ErsteZeile).Bildname;
    bewege_Maus(form().Pic_Thumb(1));
    lasse_Maus_los(form().Pic_Thumb(1));
    QString erwartet = u"acdefghijkl"_s;
    erwartet.insert(erwartet.indexOf(davor) + 1, u'b');
    EXPECT_EQ(namen(), erwartet);
  });
}

TEST_F(Sortieren, ARowWithoutAPlaceToGoToIsReportedAndStaysWhereItIs) {
  zeige_sortierend(4, [&] {
    for (const int ziel : {0, 5}) {
      form().DragQuelle = 2;
      form().DragZiel = ziel;
      form().Bild_Verschieben();
      const auto berichte = core.hole();
      ASSERT_EQ(berichte.size(), 1) << ziel;
      EXPECT_EQ(berichte[0].Prozedur, u"Bild_Verschieben"_s);
      EXPECT_EQ(berichte[0].Nummer, fehlernummer::IndexAusserhalb);
      EXPECT_EQ(namen(), u"abcd"_s) << ziel;
    }
  });
}

TEST_F(Sortieren, AfterADropStripesAndCrossesAreDrawnAgain) {
  zeige_sortierend(3, [&] {
    form().Zeile(1).Gespeichert = false;
    form().Zeile(2).Entfernen = true;
    ziehe(3, 1);
    EXPECT_EQ(stapel(2), qRgb(0xC0, 0xFF, 0xC0));
    EXPECT_EQ(stapel(3), qRgb(0xFF, 0xC0, 0xC0));
    EXPECT_EQ(form().Pic_Thumb(1).Image().pixel(0, 0), qRgb(255, 0, 0));
    EXPECT_NE(form().Pic_Thumb(3).Image().pixel(0, 0), qRgb(255, 0, 0));
  });
}

TEST_F(Sortieren, SwitchingOnGivesAllControlsAutomaticDragModeAndHidesTheSelection) {
  zeige_sortierend(3, [&] {
    for (int i = 0; i <= 3; ++i) {
      EXPECT_EQ(form().Pic_Thumb(i).DragMode(), 1) << i;
      EXPECT_EQ(form().Pic_Thumb(i).toolTip(), Hinweis_Sortieren);
    }
    EXPECT_FALSE(form().Shp_Thump.Visible());
    EXPECT_EQ(form().SortTabelle, form().BildTabelle);
    schalte();
    for (int i = 0; i <= 3; ++i) {
      EXPECT_EQ(form().Pic_Thumb(i).DragMode(), 0) << i;
      EXPECT_EQ(form().Pic_Thumb(i).toolTip(), Hinweis_Sonst);
    }
    EXPECT_TRUE(form().Shp_Thump.Visible());
  });
}

TEST_F(Sortieren, ControlsOfARebuiltStripTakeTheDragModeOver) {
  zeige_sortierend(10, [&] {
    klicke(form().SSC_Scroll_Right);
    for (int i = 1; i <= 9; ++i) {
      EXPECT_EQ(form().Pic_Thumb(i).DragMode(), 1) << i;
      EXPECT_EQ(form().Pic_Thumb(i).toolTip(), Hinweis_Sortieren);
    }
    ziehe(1, 2);
    EXPECT_EQ(namen(), u"acbdefghij"_s);
    EXPECT_EQ(form().Pic_Thumb(2).DragMode(), 1);
  });
}

TEST_F(Sortieren, InSortModeThereIsNeitherClickNorDoubleClick) {
  const Starterdoppel starter;
  zeige_sortierend(3, [&] {
    klicke(form().Pic_Thumb(3));
    doppelklicke(form().Pic_Thumb(2));
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_TRUE(starter.geoeffnet().isEmpty());
    EXPECT_EQ(namen(), u"abc"_s);
    EXPECT_FALSE(form().DragAktiv);
  });
}

TEST_F(Sortieren, SwitchingOffSelectsTheSelectedRowAgain) {
  fuege_Bilder_ein(3);
  zeige([&] {
    klicke(form().Pic_Thumb(2));
    schalte();
    ziehe(2, 1);
    schalte();
    EXPECT_EQ(form().AktZeile, 1);
    EXPECT_EQ(form().txt_BildName.Text(), u"a"_s);
    EXPECT_EQ(form().Shp_Thump.Left(), form().Pic_Thumb(2).Left() - 32);
  });
}

TEST_F(Sortieren, SwitchingOffTakesTheRowForAControlSoAScrolledStripSelectsAnotherPicture) {
  fuege_Bilder_ein(10);
  zeige([&] {
    klicke(form().Pic_Thumb(3));
    klicke(form().SSC_Scroll_Right);
    ASSERT_EQ(form().ErsteZeile, 1);
    schalte();
    schalte();
    EXPECT_EQ(form().AktThumb, 3);
    EXPECT_EQ(form().AktZeile, 3);
    EXPECT_EQ(form().txt_BildName.Text(), u"d"_s);
  });
}

TEST_F(Sortieren, SwitchingOffPastTheEndSelectsRowZero) {
  fuege_Bilder_ein(10);
  zeige([&] {
    for (int i = 0; i < 5; ++i) klicke(form().SSC_Scroll_Right);
    klicke(form().Pic_Thumb(3));
    ASSERT_EQ(form().AktZeile, 7);
    schalte();
    schalte();
    EXPECT_EQ(form().AktZeile, 0);
    EXPECT_EQ(form().txt_BildName.Text(), u"a"_s);
  });
}

TEST_F(Sortieren, SwitchingOffWithNothingSelectedSelectsNothing) {
  zeige([&] {
    schalte();
    schalte();
    EXPECT_EQ(form().AktZeile, frm_BildZuordnung::KeineZeile);
    EXPECT_EQ(form().SSP_Anzahl(1).Caption(), u"0"_s);
  });
}

TEST_F(Sortieren, SwitchingOffWithARowThatIsGoneSelectsNothing) {
  zeige_sortierend(2, [&] {
    form().AktZeile = 7;
    schalte();
    EXPECT_EQ(form().AktZeile, 7);
    EXPECT_EQ(form().txt_BildName.Text(), u"a"_s);
  });
}

TEST_F(Sortieren, TheNewOrderReachesTheCollectionAndTheDatabase) {
  zeige_sortierend(3, [&] {
    ziehe(3, 1);
    klicke(form().SSC_ZuordnungSpeichern);
  });
  EXPECT_FALSE(form().isVisible());
  ASSERT_TRUE(store->FKT_SpeichernBilder());
  EXPECT_EQ(gespeichert(), (QStringList{u"c|0|<NULL>"_s, u"a|1|<NULL>"_s, u"b|2|<NULL>"_s}));
}
