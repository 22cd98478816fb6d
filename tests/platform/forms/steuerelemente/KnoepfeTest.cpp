#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "platform/forms/Form.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

TEST(Knoepfe, AClickRunsTheHandlerOnceWhereTheButtonCanBeUsed) {
  QWidget behaelter;
  SSCommand knopf(&behaelter, u"SSC_Probe"_s);
  int klicks = 0;
  knopf.Click = [&] { ++klicks; };
  QTest::mouseClick(&knopf, Qt::LeftButton);
  EXPECT_EQ(klicks, 1);
  knopf.klicke();
  EXPECT_EQ(klicks, 2);
  knopf.Steuerelement::Enabled(false);
  QTest::mouseClick(&knopf, Qt::LeftButton);
  knopf.klicke();
  EXPECT_EQ(klicks, 2);
  EXPECT_EQ(knopf.objectName(), u"SSC_Probe"_s);
  EXPECT_FALSE(knopf.autoDefault());
}

TEST(Knoepfe, ACheckBoxTellsARealChangeByTheUserOrByCodeAtOnce) {
  QWidget behaelter;
  CheckBox kasten(&behaelter, u"chk_Probe"_s);
  QList<int> werte;
  kasten.Click = [&] { werte.append(kasten.Value()); };
  kasten.Value(0);
  EXPECT_TRUE(werte.isEmpty());
  kasten.Value(1);
  EXPECT_EQ(werte, QList<int>{1});
  kasten.Value(1);
  kasten.click();
  EXPECT_EQ(werte, (QList<int>{1, 0}));
  EXPECT_EQ(Fehlernummer_von([&] { kasten.Value(3); }), 380);
}

TEST(Knoepfe, AFailureOfAHandlerBelongsToTheStatementThatChangedTheValue) {
  QWidget behaelter;
  CheckBox kasten(&behaelter, u"chk_Probe"_s);
  kasten.Click = [] { throw Laufzeitfehler(9); };
  EXPECT_EQ(Fehlernummer_von([&] { kasten.Value(1); }), 9);
  EXPECT_EQ(kasten.Value(), 1);
}

TEST(Knoepfe, AFailureOfAUsersClickEndsTheShowOfItsForm) {
  Form form(u"frm_Probe"_s);
  SSCommand knopf(&form, u"SSC_Probe"_s);
  knopf.Click = [] { throw Laufzeitfehler(13); };
  QTimer::singleShot(0, &form, [&] { QTest::mouseClick(&knopf, Qt::LeftButton); });
  EXPECT_EQ(Fehlernummer_von([&] { form.Show(); }), 13);
}

TEST(Knoepfe, AToggleGivesItsNewValue) {
  QWidget behaelter;
  SSRibbon schalter(&behaelter, u"SSR_Probe"_s);
  QList<bool> werte;
  schalter.Click = [&](bool wert) { werte.append(wert); };
  QTest::mouseClick(&schalter, Qt::LeftButton);
  schalter.Value(true);
  schalter.Value(false);
  EXPECT_EQ(werte, (QList<bool>{true, false}));
}

TEST(Knoepfe, ACaptionKeepsItsBlanksAndShowsRunsOfThemAsLineBreaks) {
  struct Fall {
    QString beschriftung;
    QString angezeigt;
  };
  const QList<Fall> faelle{{u"&Bilder suchen   "_s, u"&Bilder suchen"_s},
      {u"      &Alle Zuordnungen des   Bildes anzeigen      "_s, u"&Alle Zuordnungen des\nBildes anzeigen"_s},
      {u"         Sortieren"_s, u"Sortieren"_s}, {u"&Zurück"_s, u"&Zurück"_s}, {u"   "_s, u""_s}};
  QWidget behaelter;
  SSCommand knopf(&behaelter, u"SSC_Probe"_s);
  SSRibbon schalter(&behaelter, u"SSR_Probe"_s);
  for (const Fall& fall : faelle) {
    knopf.Caption(fall.beschriftung);
    schalter.Caption(fall.beschriftung);
    EXPECT_EQ(knopf.Caption(), fall.beschriftung);
    EXPECT_EQ(knopf.text(), fall.angezeigt);
    EXPECT_EQ(schalter.Caption(), fall.beschriftung);
    EXPECT_EQ(schalter.text(), fall.angezeigt);
  }
}
