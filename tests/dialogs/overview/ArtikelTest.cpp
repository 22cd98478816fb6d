#include "tests/dialogs/overview/WeitereTest.h"

using namespace Qt::Literals::StringLiterals;

class Artikelwahl : public WeitereTest {
 protected:
  void SetUp() override { fuege_Bilder_ein(1); }
};

TEST_F(Artikelwahl, AKnownNumberFillsItsTextsAndItsSupplier) {
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    EXPECT_EQ(artikelzeilen(), QStringList{u"4711|Schraube|M8|Mayer"_s});
    EXPECT_EQ(gezeigt(artikel(), 0, artikel::Kurztext1), u"Schraube"_s);
    EXPECT_EQ(gezeigt(artikel(), 0, artikel::Kurztext2), u"M8"_s);
    EXPECT_EQ(stamm.rufe, (QStringList{u"SQL: Init 0 1 1"_s, u"SQL: genau 4711 100001"_s}));
    // One row, and the line for the next.
    EXPECT_EQ(artikel().model()->rowCount(), 2);
  });
}

TEST_F(Artikelwahl, ANullOfTheStockBecomesAnEmptyText) {
  zeige([&] {
    gib_Artikel_ein(0, u"500"_s);
    EXPECT_EQ(artikelzeilen(), QStringList{u"500|Leim||"_s});
  });
}

TEST_F(Artikelwahl, SeveralArticlesGoOneBelowTheOther) {
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    EXPECT_EQ(form().pAktZeile, 1);
    gib_Artikel_ein(1, u"500"_s);
    gib_Artikel_ein(0, u"4712"_s);
    EXPECT_EQ(artikelzeilen(), (QStringList{u"4712|Mutter|M8|Mayer"_s, u"500|Leim||"_s}));
  });
}

TEST_F(Artikelwahl, APartOfANumberFindsTheArticleAndTheCellKeepsWhatWasTyped) {
  zeige([&] {
    gib_Artikel_ein(0, u"47"_s);
    EXPECT_EQ(artikelzeilen(), QStringList{u"47|Schraube|M8|Mayer"_s});
    EXPECT_EQ(stamm.rufe,
        (QStringList{u"SQL: Init 0 1 1"_s, u"SQL: genau 47 100001"_s, u"SQL: Teil 47"_s, u"SQL: Init 0 1 1"_s,
            u"SQL: genau 4711 100001"_s}));
  });
  // Each component was released before the next one was made.
  EXPECT_EQ(stamm.hoechstens, 1);
  EXPECT_EQ(stamm.lebende, 0);
}

TEST_F(Artikelwahl, TheFoundNumberReplacesTheOneThatWasAskedFor) {
  QString nummer = u"47"_s;
  form().pArtikelArray()->AppendRows(1);
  EXPECT_TRUE(form().Lese_Artikel(nummer, 0, false));
  EXPECT_EQ(nummer, u"4711"_s);
  EXPECT_EQ(artikelzeilen(), QStringList{u"|||"_s});
  EXPECT_TRUE(form().Lese_Artikel(nummer, 0, true));
  EXPECT_EQ(artikelzeilen(), QStringList{u"|Schraube|M8|Mayer"_s});
}

TEST_F(Artikelwahl, ANumberFoundByAPartCountsEvenWhereItsOwnSearchEndsInNothing) {
  form();
  stamm.teile[u"9"_s] = u"99"_s;
  QString nummer = u"9"_s;
  EXPECT_TRUE(form().Lese_Artikel(nummer, 0, true));
  EXPECT_EQ(nummer, u"99"_s);
  stamm.gesucht = 0;
  stamm.scheitert_beim = 2;
  nummer = u"9"_s;
  EXPECT_TRUE(form().Lese_Artikel(nummer, 0, true));
  EXPECT_EQ(nummer, u"99"_s);
}

TEST_F(Artikelwahl, AComponentThatFindsAPartWithoutANumberFindsNothing) {
  form();
  stamm.teile[u"9"_s] = QString();
  QString nummer = u"9"_s;
  EXPECT_FALSE(form().Lese_Artikel(nummer, 0, true));
  EXPECT_EQ(nummer, QString());
}

TEST_F(Artikelwahl, ANumberThatFindsItselfOrACircleEndsTheSearch) {
  form();
  stamm.teile[u"9"_s] = u"9"_s;
  stamm.teile[u"x"_s] = u"y"_s;
  stamm.teile[u"y"_s] = u"x"_s;
  QString nummer = u"9"_s;
  EXPECT_TRUE(form().Lese_Artikel(nummer, 0, true));
  EXPECT_EQ(stamm.gesucht, 1);
  nummer = u"x"_s;
  EXPECT_TRUE(form().Lese_Artikel(nummer, 0, true));
  EXPECT_EQ(stamm.gesucht, 3);
}

TEST_F(Artikelwahl, AnUnknownNumberEmptiesTheTextsAndStillCounts) {
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    klicke(artikel(), 0, artikel::Nummer);
    eingaben::taste(form(), Qt::Key_F2);
    tippe(form(), u"0815"_s);
    eingaben::taste(form(), Qt::Key_Return);
    // The supplier of before stays with the row.
    EXPECT_EQ(artikelzeilen(), QStringList{u"0815|||Mayer"_s});
    EXPECT_EQ(gezeigt(artikel(), 0, artikel::Kurztext1), u""_s);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.isEnabled());
  });
}

TEST_F(Artikelwahl, AFailingComponentCountsAsNotFound) {
  stamm.scheitert_beim = 1;
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    EXPECT_EQ(artikelzeilen(), QStringList{u"4711|||"_s});
  });
}

TEST_F(Artikelwahl, AComponentThatNobodyRegisteredCountsAsNotFound) {
  const Registrierung keine(u"KVOArtik.clsArtikelManagerSQL"_s, {});
  zeige([&] {
    gib_Artikel_ein(0, u"4711"_s);
    EXPECT_EQ(artikelzeilen(), QStringList{u"4711|||"_s});
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.isEnabled());
  });
}

TEST_F(Artikelwahl, ANumberCanBeTypedAtOnceAndTheTabKeyGoesThroughTheControls) {
  zeige([&] {
    EXPECT_EQ(form().focusWidget(), &artikel());
    tippe(form(), u"4711"_s);
    eingaben::taste(form(), Qt::Key_Return);
    EXPECT_EQ(artikelzeilen(), QStringList{u"4711|Schraube|M8|Mayer"_s});
    QList<QWidget*> folge;
    for (int i = 0; i < 4; ++i) {
      eingaben::taste(form(), Qt::Key_Tab);
      folge += form().focusWidget();
    }
    EXPECT_EQ(folge, (QList<QWidget*>{&form().SSC_ZuordnungSpeichern, &form().cmd_Abbrechen, &bilder(), &artikel()}));
  });
}

TEST_F(Artikelwahl, SavingNeedsAMarkAndANumber) {
  zeige([&] {
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.isEnabled());
    gib_Artikel_ein(0, u"4711"_s);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.isEnabled());
    klicke_Marke(0);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.isEnabled());
    klicke_Marke(0);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.isEnabled());
    klicke(artikel(), 0, artikel::Nummer);
    eingaben::taste(form(), Qt::Key_F2);
    tippe(form(), u" "_s);
    eingaben::taste(form(), Qt::Key_Return);
    EXPECT_EQ(artikelzeilen().size(), 1);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.isEnabled());
  });
}

TEST_F(Artikelwahl, OneClickOnTheButtonTakesWhatWasTypedAndAsks) {
  zeige([&] {
    klicke(artikel(), 0, artikel::Nummer);
    tippe(form(), u"4711"_s);
    EXPECT_FALSE(form().SSC_ZuordnungSpeichern.isEnabled());
    meldungen.erwarte(frage(), oberflaeche::Antwort::Nein, [&] {
      EXPECT_EQ(artikelzeilen(), QStringList{u"4711|Schraube|M8|Mayer"_s});
      EXPECT_TRUE(form().SSC_ZuordnungSpeichern.isEnabled());
    });
    eingaben::klicke(form().SSC_ZuordnungSpeichern);
    EXPECT_TRUE(form().isVisible());
  });
}

TEST_F(Artikelwahl, AClickOnTheDisabledButtonWithoutAnEditDoesNothing) {
  zeige([&] {
    eingaben::klicke(form().SSC_ZuordnungSpeichern);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(artikelzeilen(), QStringList());
  });
}

TEST_F(Artikelwahl, ACheckOfTheButtonThatFailsIsReported) {
  form().pZuordnungArray()->Value(0, uebersicht::Marke, u"vielleicht"_s);
  form().SSC_ZuordnungSpeichern.Enabled(true);
  form().Pruefe_ZuordnungSchalter();
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"Pruefe_ZuordnungSchalter"_s, fehlernummer::TypenUnvertraeglich);
  EXPECT_FALSE(form().SSC_ZuordnungSpeichern.isEnabled());
}

TEST_F(Artikelwahl, TheLookUpGetsTheHostAndWritesThePickedNumber) {
  auskunft = [&](Auskunftsempfaenger& empfaenger) {
    EXPECT_EQ(&empfaenger, &form());
    EXPECT_NE(form().pAuskunftObj, nullptr);
    empfaenger.LA_Doppelclick(u" 4712 |Mutter|M8"_s);
  };
  zeige([&] {
    klicke_Knopf(artikel(), 0, artikel::Nummer);
    EXPECT_EQ(auskuenfte, QStringList{u"Artikel||Wirt|meier|C:\\Wirt|C:\\Wirt\\Berichte|Zunft"_s});
    EXPECT_EQ(artikelzeilen(), QStringList{u"4712|Mutter|M8|Mayer"_s});
    EXPECT_EQ(form().pAuswahlWert, u"4712"_s);
    EXPECT_EQ(form().pAuskunftObj, nullptr);
    EXPECT_TRUE(form().SSC_ZuordnungSpeichern.isEnabled());
  });
  // The edit was told once.
  EXPECT_EQ(stamm.gesucht, 1);
}

TEST_F(Artikelwahl, ThePartBeforeTheFirstBarIsWhatWasPicked) {
  form();
  for (const auto& [wert, soll] : {std::pair{u"4711|x|y"_s, u"4711"_s}, {u"  4711  "_s, u"4711"_s},
           {u" 4 | 5"_s, u"4"_s}, {u"|x"_s, u""_s}, {u"   "_s, u""_s}, {u""_s, u""_s}}) {
    form().pAuswahlWert = u"alt"_s;
    form().LA_Doppelclick(wert);
    EXPECT_EQ(form().pAuswahlWert, soll);
  }
}

TEST_F(Artikelwahl, ALookUpWithoutAPickChangesNothingNotEvenByTheLastOne) {
  auskunft = [](Auskunftsempfaenger& empfaenger) { empfaenger.LA_Doppelclick(u"4711"_s); };
  zeige([&] {
    klicke_Knopf(artikel(), 0, artikel::Nummer);
    EXPECT_EQ(artikelzeilen().size(), 1);
    auskunft = {};
    klicke_Knopf(artikel(), 1, artikel::Nummer);
    EXPECT_EQ(artikelzeilen().size(), 1);
    auskunft = [](Auskunftsempfaenger& empfaenger) { empfaenger.LA_Doppelclick(u" |4711"_s); };
    klicke_Knopf(artikel(), 1, artikel::Nummer);
    EXPECT_EQ(artikelzeilen().size(), 1);
    EXPECT_EQ(auskuenfte.size(), 3);
  });
}

TEST_F(Artikelwahl, TheKeyOpensTheLookUpFromAnOpenEdit) {
  auskunft = [](Auskunftsempfaenger& empfaenger) { empfaenger.LA_Doppelclick(u"500"_s); };
  zeige([&] {
    klicke(artikel(), 0, artikel::Nummer);
    tippe(form(), u"47"_s);
    eingaben::taste(form(), Qt::Key_F4);
    EXPECT_EQ(artikelzeilen(), QStringList{u"500|Leim||"_s});
  });
}

TEST_F(Artikelwahl, AFailingLookUpIsReportedAndReleased) {
  auskunft = [](Auskunftsempfaenger&) { throw Laufzeitfehler(fehlernummer::Verbindung); };
  zeige([&] { klicke_Knopf(artikel(), 0, artikel::Nummer); });
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"AuskunftSelect"_s, fehlernummer::Verbindung);
  EXPECT_EQ(form().pAuskunftObj, nullptr);
  EXPECT_EQ(artikelzeilen(), QStringList());
}

TEST_F(Artikelwahl, ALookUpThatNobodyRegisteredIsReported) {
  const Registrierung keine(u"KVOListAuskunft.clsAuskunft"_s, {});
  zeige([&] { klicke_Knopf(artikel(), 0, artikel::Nummer); });
  erwarte_Bericht(u"frm_AnzeigeZuordnungen"_s, u"AuskunftSelect"_s, fehlernummer::ObjektNichtErstellbar);
  EXPECT_EQ(artikelzeilen(), QStringList());
}

TEST_F(Artikelwahl, AHostThatHidesTheFormWhileTheLookUpIsOpenEndsTheShow) {
  auskunft = [&](Auskunftsempfaenger& empfaenger) {
    form().Hide();
    empfaenger.LA_Doppelclick(u"4711"_s);
  };
  zeige([&] { klicke_Knopf(artikel(), 0, artikel::Nummer); });
  EXPECT_FALSE(form().isVisible());
  EXPECT_EQ(artikelzeilen(), QStringList{u"4711|Schraube|M8|Mayer"_s});
}

TEST_F(Artikelwahl, AFormUnloadedWhileTheLookUpIsOpenTakesNothing) {
  auskunft = [&](Auskunftsempfaenger& empfaenger) {
    form().Unload();
    empfaenger.LA_Doppelclick(u"4711"_s);
  };
  zeige([&] { klicke_Knopf(artikel(), 0, artikel::Nummer); });
  EXPECT_EQ(form().pArtikelArray(), nullptr);
  EXPECT_EQ(stamm.gesucht, 0);
}

TEST_F(Artikelwahl, EveryWayOutWithAnOpenEditHidesTheForm) {
  const std::function<void()> wege[]{[&] {
    // The first one gives the edit up.
    eingaben::taste(form(), Qt::Key_Escape);
    EXPECT_TRUE(form().isVisible());
    eingaben::taste(form(), Qt::Key_Escape);
                                     },
      [&] { eingaben::schliesse_Rahmen(form()); }, [&] { form().Hide(); },
      [&] { eingaben::klicke(form().cmd_Abbrechen); }};
  for (const auto& weg : wege) {
    form().Lade_Zuordnungen();
    zeige([&] {
      klicke(artikel(), 0, artikel::Nummer);
      tippe(form(), u"4711"_s);
      weg();
      EXPECT_FALSE(form().isVisible());
    });
    EXPECT_NE(form().pAppObj, nullptr);
  }
}

TEST_F(Artikelwahl, UnloadingWithAnOpenEditDropsIt) {
  zeige([&] {
    klicke(artikel(), 0, artikel::Nummer);
    tippe(form(), u"4711"_s);
    form().Unload();
  });
  EXPECT_EQ(stamm.gesucht, 0);
  form().Unload();
  EXPECT_EQ(form().pAppObj, nullptr);
  EXPECT_EQ(form().pBildObj, nullptr);
  EXPECT_EQ(form().pZuordnungArray(), nullptr);
}
