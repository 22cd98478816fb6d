#include "tests/dialogs/overview/AlleTest.h"

using namespace Qt::Literals::StringLiterals;

class AlleAuswahl : public AlleTest {};

TEST_F(AlleAuswahl, TheFormStartsWithTheGridInFocusAndNothingToDelete) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    EXPECT_EQ(form().Caption(), u"Alle Zuordnungen"_s);
    EXPECT_EQ(form().focusWidget(), &gitter());
    EXPECT_FALSE(form().cmd_Loeschen.isEnabled());
    EXPECT_EQ(auswahl(gitter()), u""_s);
    eingaben::taste(form(), Qt::Key_Tab);
    EXPECT_EQ(form().focusWidget(), &form().cmd_AlleLoeschen);
    eingaben::taste(form(), Qt::Key_Tab);
    EXPECT_EQ(form().focusWidget(), &form().cmd_Abbrechen);
  });
}

TEST_F(AlleAuswahl, ASelectedRowIsMarkedAndCanBeDeleted) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    klicke_Zeile(1);
    EXPECT_EQ(marken(), (QStringList{u"00"_s, u"11"_s, u"00"_s}));
    EXPECT_TRUE(form().cmd_Loeschen.isEnabled());
    EXPECT_FALSE(form().pAlleMarkiert);
    klicke_Zeile(2);
    EXPECT_EQ(marken(), (QStringList{u"00"_s, u"00"_s, u"11"_s}));
  });
}

TEST_F(AlleAuswahl, AllRowsByHandAskTheStrongerQuestionAndOneLessTheMilderAgain) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    klicke_Zeile(0);
    klicke_Zeile(2, Qt::ShiftModifier);
    EXPECT_TRUE(form().pAlleMarkiert);
    meldungen.erwarte(frage(true), oberflaeche::Antwort::Nein);
    eingaben::klicke(form().cmd_Loeschen);
    klicke_Zeile(1, Qt::ControlModifier);
    EXPECT_FALSE(form().pAlleMarkiert);
    EXPECT_EQ(marken(), (QStringList{u"11"_s, u"00"_s, u"11"_s}));
    meldungen.erwarte(frage(false), oberflaeche::Antwort::Nein);
    eingaben::klicke(form().cmd_Loeschen);
  });
  EXPECT_EQ(db.anzahl(), 3);
}

TEST_F(AlleAuswahl, ControlASelectsAllByHand) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    eingaben::taste(form(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(form().pAlleMarkiert);
    EXPECT_TRUE(form().cmd_Loeschen.isEnabled());
    EXPECT_EQ(marken(), (QStringList{u"11"_s, u"11"_s, u"11"_s}));
  });
}

TEST_F(AlleAuswahl, TheButtonSelectsAllAndRaisesNoSelectionEvent) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    klicke_Zeile(1);
    int ereignisse = 0;
    gitter().SelChange = [&] { ++ereignisse; };
    eingaben::klicke(form().cmd_AlleLoeschen);
    EXPECT_EQ(ereignisse, 0);
    EXPECT_EQ(auswahl(gitter()), u"0,1,2"_s);
    EXPECT_TRUE(form().pAlleMarkiert);
    EXPECT_TRUE(form().cmd_Loeschen.isEnabled());
    EXPECT_EQ(marken(), (QStringList{u"11"_s, u"11"_s, u"11"_s}));
    EXPECT_EQ(form().Caption(), u"Alle Zuordnungen"_s);
  });
  EXPECT_EQ(db.anzahl(), 3);
}

TEST_F(AlleAuswahl, AltASelectsAllAsTheButtonSays) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    eingaben::taste(form(), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return auswahl(gitter()) == u"0,1"_s; }));
  });
}

TEST_F(AlleAuswahl, AnEmptiedSelectionTakesTheCaptionForGood) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(0);
    EXPECT_EQ(form().Caption(), u"Alle Zuordnungen"_s);
    klicke_Zeile(0, Qt::ControlModifier);
    EXPECT_EQ(auswahl(gitter()), u""_s);
    EXPECT_EQ(form().Caption(), u""_s);
    EXPECT_FALSE(form().cmd_Loeschen.isEnabled());
    EXPECT_FALSE(form().pAlleMarkiert);
    klicke_Zeile(1);
    EXPECT_EQ(form().Caption(), u""_s);
    loesche(false);
    EXPECT_EQ(form().Caption(), u""_s);
  });
}

TEST_F(AlleAuswahl, AClickFollowsTheSelectionEvenWhereCodeMadeIt) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(0);
    form().cmd_Loeschen.Enabled(false);
    klicke_Zeile(0);
    EXPECT_TRUE(form().cmd_Loeschen.isEnabled());
    gitter().SelBookmarks().Clear();
    gitter().Click();
    EXPECT_FALSE(form().cmd_Loeschen.isEnabled());
  });
}

TEST_F(AlleAuswahl, MarkingEndsSilentlyWhereTheSelectionKnowsMoreRowsThanTheArray) {
  fuege_Zuordnungen_ein(1);
  form();
  gitter().SelBookmarks().Add(1);
  gitter().SelBookmarks().Add(99);
  gitter().SelBookmarks().Add(0);
  form().Markiere_Auswahl();
  EXPECT_EQ(marken(), (QStringList{u"00"_s, u"11"_s}));
}

TEST_F(AlleAuswahl, TheGridFillsTheFormAboveAStripOfButtons) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    for (const QSize groesse : {QSize(600, 400), QSize(430, 250), QSize(1200, 900)}) {
      form().resize(groesse);
      QCoreApplication::processEvents();
      EXPECT_EQ(form().SSP_Info(0).Top(), 20);
      EXPECT_EQ(form().SSP_Info(1).Left(), form().SSP_Info(0).Left() + form().SSP_Info(0).Width() + 20);
      EXPECT_EQ(gitter().Top() + gitter().Height(), form().ScaleHeight() - 500);
      EXPECT_EQ(gitter().Width(), form().ScaleWidth());
      EXPECT_EQ(form().cmd_Loeschen.Left(), form().cmd_AlleLoeschen.Left() + form().cmd_AlleLoeschen.Width() + 40);
      for (const QWidget* knopf :
          std::initializer_list<QWidget*>{&form().cmd_AlleLoeschen, &form().cmd_Loeschen, &form().cmd_Abbrechen}) {
        EXPECT_GE(knopf->geometry().top(), gitter().geometry().bottom());
        EXPECT_TRUE(form().rect().contains(knopf->geometry()));
      }
      // The one visible column takes what there is.
      EXPECT_GE(gitter().columnWidth(uebersicht::Zuordnung), gitter().viewport()->width() - 1);
    }
  });
}
