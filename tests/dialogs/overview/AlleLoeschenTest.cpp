#include "tests/dialogs/overview/AlleTest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

class AlleLoeschen : public AlleTest {
 protected:
  static QString loeschung(int artikel) {
    return u"Delete from Bild_Zuordnungen  where Key1 = 'A%1' and Key2 = '-' and Key3 = '-' and Key4 = '-' and "
           "Bildname = 'a' and BildExt = 'jpg' and Typ1 = 'ART' and Typ2 = '-'"_s.arg(artikel);
  }
};

TEST_F(AlleLoeschen, TheOpeningRecordStaysInTheTableAndIsOnlyToldToTheCaller) {
  fuege_Zuordnungen_ein(0);
  zeige([&] {
    klicke_Zeile(0);
    const auto vorher = form().pBildObj;
    loesche(true);
    EXPECT_TRUE(form().pDeleteFlagAktBild);
    EXPECT_NE(form().pBildObj, vorher);
    EXPECT_EQ(liste(), QStringList{u"Beleg: RE / 1"_s});
    EXPECT_FALSE(form().cmd_Loeschen.isEnabled());
    EXPECT_EQ(form().focusWidget(), &gitter());
  });
  EXPECT_EQ(gespeichert(), QStringList{u"BEL|RE|1|a"_s});
}

TEST_F(AlleLoeschen, TheOthersGoFromTheLastToTheFirstAndTheRestIsShown) {
  fuege_Zuordnungen_ein(3);
  zeige([&] {
    klicke_Zeile(1);
    klicke_Zeile(3, Qt::ControlModifier);
    db.mitschrift().hole();
    loesche(false);
    EXPECT_EQ(anweisungen(u"Delete"_s), (QStringList{loeschung(3), loeschung(1)}));
    EXPECT_FALSE(form().pDeleteFlagAktBild);
    EXPECT_EQ(liste(), (QStringList{u"Beleg: RE / 1"_s, u"Artikelnummer: A2"_s}));
    EXPECT_EQ(auswahl(gitter()), u""_s);
    EXPECT_FALSE(form().cmd_Loeschen.isEnabled());
  });
  EXPECT_EQ(gespeichert(), (QStringList{u"BEL|RE|1|a"_s, u"ART|A2|-|a"_s}));
}

TEST_F(AlleLoeschen, TheLastOtherAssignmentGoesAndTheOpeningOneRemains) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(1);
    loesche(false);
    EXPECT_EQ(liste(), QStringList{u"Beleg: RE / 1"_s});
    EXPECT_EQ(gitter().ColumnCount(), 26);
  });
}

TEST_F(AlleLoeschen, AllGoButTheOpeningOneWhichIsTold) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    eingaben::klicke(form().cmd_AlleLoeschen);
    loesche(true);
    EXPECT_TRUE(form().pDeleteFlagAktBild);
  });
  EXPECT_EQ(gespeichert(), QStringList{u"BEL|RE|1|a"_s});
}

TEST_F(AlleLoeschen, OneFieldOfTheSixIsEnoughForAnotherAssignment) {
  lege_Bild(u"a.jpg"_s);
  fuege_ein({});
  fuege_ein({.typ1 = u"MON"_s});
  fuege_ein({.typ2 = u"x"_s});
  fuege_ein({.key1 = u"AN"_s});
  fuege_ein({.key2 = u"2"_s});
  fuege_ein({.key3 = u"x"_s});
  fuege_ein({.key4 = u"x"_s});
  zeige([&] {
    eingaben::klicke(form().cmd_AlleLoeschen);
    loesche(true);
  });
  EXPECT_EQ(gespeichert(), QStringList{u"BEL|RE|1|a"_s});
}

TEST_F(AlleLoeschen, BlanksAroundTheKeysDoNotMakeAnotherAssignment) {
  fuege_Zuordnungen_ein(0);
  form().pKey1 = u" RE "_s;
  form().pTyp2 = u"- "_s;
  zeige([&] {
    klicke_Zeile(0);
    loesche(true);
    EXPECT_TRUE(form().pDeleteFlagAktBild);
  });
  EXPECT_EQ(db.anzahl(), 1);
}

TEST_F(AlleLoeschen, ALaterDeletionWithoutTheOpeningRecordTakesTheFlagBack) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(0);
    loesche(false);
    EXPECT_TRUE(form().pDeleteFlagAktBild);
    klicke_Zeile(1);
    loesche(false);
    EXPECT_FALSE(form().pDeleteFlagAktBild);
  });
}

TEST_F(AlleLoeschen, WithoutAYesNothingHappens) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(1);
    db.mitschrift().hole();
    meldungen.erwarte(frage(false), Antwort::Nein);
    eingaben::klicke(form().cmd_Loeschen);
    EXPECT_EQ(db.mitschrift().hole(), QStringList());
    EXPECT_EQ(auswahl(gitter()), u"1"_s);
  });
}

TEST_F(AlleLoeschen, WhenNoRowIsLeftTheGridKeepsWhatItShowed) {
  lege_Bild(u"a.jpg"_s);
  fuege_Artikel_ein(1);
  fuege_Artikel_ein(2);
  zeige([&] {
    Gitterspalte gezeichnet = gitter().Column(uebersicht::Zuordnung);
    gezeichnet.Caption = u"nicht neu gebaut"_s;
    gitter().Column(uebersicht::Zuordnung, gezeichnet);
    eingaben::klicke(form().cmd_AlleLoeschen);
    loesche(true);
    EXPECT_EQ(db.anzahl(), 0);
    EXPECT_EQ(liste(), (QStringList{u"Artikelnummer: A1"_s, u"Artikelnummer: A2"_s}));
    EXPECT_EQ(gitter().Column(uebersicht::Zuordnung).Caption, u"nicht neu gebaut"_s);
    EXPECT_EQ(form().pZuordnungArray()->Count(Zeilen), 1);
    // What still shows can be clicked, and deletes nothing any more.
    klicke_Zeile(1);
    db.mitschrift().hole();
    loesche(true);
    EXPECT_EQ(anweisungen(u"Delete"_s), QStringList());
    eingaben::klicke(form().cmd_AlleLoeschen);
    loesche(true);
    EXPECT_EQ(anweisungen(u"Delete"_s), QStringList());
  });
}

TEST_F(AlleLoeschen, AStatementThatFailsIsToldAndItsRowStays) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    klicke_Zeile(1);
    klicke_Zeile(2, Qt::ShiftModifier);
    db.mitschrift().scheitere_am_naechsten();
    loesche(false);
    erwarte_Bericht(u"basZuordnungen"_s, u"CmdSql"_s, fehlernummer::Anweisung);
    EXPECT_EQ(liste(), (QStringList{u"Beleg: RE / 1"_s, u"Artikelnummer: A2"_s}));
  });
}

TEST_F(AlleLoeschen, AFailureIsReportedAndTheGridShowsWhatItShowed) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    eingaben::klicke(form().cmd_AlleLoeschen);
    form().pZuordnungArray()->Value(1, uebersicht::Typ1, Objekt(std::make_shared<int>(1)));
    db.mitschrift().hole();
    loesche(true);
    erwarte_Bericht(u"frm_AlleZuordnungen"_s, u"Zuordnungen_loeschen"_s, fehlernummer::TypenUnvertraeglich);
    EXPECT_EQ(db.mitschrift().hole(), QStringList());
    EXPECT_EQ(liste().size(), 3);
    EXPECT_EQ(auswahl(gitter()), u"0,1,2"_s);
    // The opening record came before the failure.
    EXPECT_TRUE(form().pDeleteFlagAktBild);
  });
  EXPECT_EQ(db.anzahl(), 3);
}

TEST_F(AlleLoeschen, WhatWasWrittenStaysWrittenWhenTheReloadFails) {
  fuege_Zuordnungen_ein(2);
  zeige([&] {
    klicke_Zeile(1);
    loesche(false, [&] { wirt->fehler = fehlernummer::Verbindung; });
    erwarte_Bericht(u"frm_AlleZuordnungen"_s, u"Lade_AlleZuordnungen"_s, fehlernummer::Verbindung);
    EXPECT_EQ(liste().size(), 3);
  });
  EXPECT_EQ(db.anzahl(), 2);
}

TEST_F(AlleLoeschen, ABoxThatIsOpenWhileTheHostHidesTheFormStillDeletes) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(1);
    loesche(false, [&] { form().Hide(); });
    EXPECT_FALSE(form().isVisible());
  });
  EXPECT_EQ(db.anzahl(), 1);
}

TEST_F(AlleLoeschen, AFormUnloadedWhileItAsksDeletesNothing) {
  fuege_Zuordnungen_ein(1);
  zeige([&] {
    klicke_Zeile(1);
    loesche(false, [&] { form().Unload(); });
  });
  erwarte_Bericht(u"frm_AlleZuordnungen"_s, u"Zuordnungen_loeschen"_s, fehlernummer::ObjektNichtGesetzt);
  EXPECT_EQ(db.anzahl(), 2);
}

TEST_F(AlleLoeschen, EveryWayOutHidesTheFormAndKeepsTheFlag) {
  fuege_Zuordnungen_ein(0);
  const std::function<void()> wege[]{[&] { eingaben::klicke(form().cmd_Abbrechen); },
      [&] { eingaben::taste(form(), Qt::Key_Escape); }, [&] { eingaben::schliesse_Rahmen(form()); },
      [&] { form().Hide(); }};
  for (const auto& weg : wege) {
    form().Lade_AlleZuordnungen();
    form().pDeleteFlagAktBild = false;
    zeige([&] {
      klicke_Zeile(0);
      loesche(true);
      klicke_Zeile(0);
      weg();
      EXPECT_FALSE(form().isVisible());
    });
    EXPECT_TRUE(form().pDeleteFlagAktBild);
    EXPECT_EQ(liste().size(), 1);
    EXPECT_NE(form().pAppObj, nullptr);
  }
}

TEST_F(AlleLoeschen, UnloadingTwiceIsHarmless) {
  fuege_Zuordnungen_ein(1);
  zeige([&] { klicke_Zeile(0); });
  form().Unload();
  form().Unload();
  EXPECT_EQ(form().pAppObj, nullptr);
  EXPECT_EQ(form().pBildObj, nullptr);
}

TEST_F(AlleLoeschen, TwentyThousandRowsCostOneReadAndOneStatementForEachDeletedRow) {
  lege_Bild(u"a.jpg"_s);
  fuege_ein({});
  db.fuehre_aus(
      u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 19999) insert into Bild_Zuordnungen "
      "(Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) select 'A' || i, '-', '-', '-', "
      "'a', 'jpg', 'ART', '-', 'Belege\\1', 1 from n"_s);
  db.mitschrift().hole();
  form();
  EXPECT_EQ(db.mitschrift().hole().size(), 1);
  zeige([&] {
    EXPECT_EQ(liste().size(), 20000);
    eingaben::taste(form(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(form().pAlleMarkiert);
    EXPECT_EQ(gitter().SelBookmarks().Count(), 20000);
    klicke_Zeile(7);
    EXPECT_EQ(marken().count(u"11"_s), 1);
    eingaben::klicke(form().cmd_AlleLoeschen);
    EXPECT_EQ(marken().count(u"11"_s), 20000);
    klicke_Zeile(5);
    klicke_Zeile(19999, Qt::ControlModifier);
    EXPECT_EQ(db.mitschrift().hole(), QStringList());
    loesche(false);
    const QStringList texte = db.mitschrift().hole();
    EXPECT_EQ(texte.size(), 3);
    EXPECT_EQ(texte.mid(0, 2), (QStringList{loeschung(19999), loeschung(5)}));
    EXPECT_EQ(liste().size(), 19998);
  });
}
