// What the road of a host writes, checks and mends after the dialog.
#include "tests/component/Wegtest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

class WegSpeichern : public Wegtest {};

TEST_F(WegSpeichern, NewChangedAndRemovedRowsAreWrittenAndToldByName) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  gespeichert(u"c"_s, 2);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"Bob's"_s);
    entferne(bilder, 1);
    neues(bilder, u"neu"_s);
  });
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|Bob's|0"_s, u"c|Belege\\1|T|2"_s, u"neu|Belege\\1|<NULL>|3"_s}));
  EXPECT_EQ(ergebnis.text(), u"3 Zeilen geschrieben: 1 neu, 1 geändert, 1 entfernt."_s);
  EXPECT_TRUE(ergebnis.vollstaendig());
  ASSERT_EQ(ergebnis.bilder.size(), 3);
  EXPECT_EQ(ergebnis.bilder[0].name, u"a.jpg"_s);
  EXPECT_EQ(ergebnis.bilder[0].verbleib, Verbleib::Geaendert);
  EXPECT_EQ(ergebnis.bilder[1].verbleib, Verbleib::Entfernt);
  EXPECT_EQ(ergebnis.bilder[2].verbleib, Verbleib::Neu);
}

TEST_F(WegSpeichern, AHundredRowsCostOneMoreReadOfTheRecord) {
  for (int i = 0; i < 100; ++i) gespeichert(u"bild%1"_s.arg(i, 3, 10, QChar(u'0')), i);
  db.mitschrift().hole();
  gehe([&](clsBildZuordnungen& bilder) {
    for (std::int32_t i = 0; i < 100; ++i) aendere(bilder, i, u"neu"_s);
  });
  EXPECT_EQ(anweisungen(u"Select"_s).size(), 2);
  EXPECT_EQ(anweisungen({}).size(), 102);
}

TEST_F(WegSpeichern, WithoutAChangeNothingIsReadAgain) {
  gespeichert(u"a"_s, 0);
  db.mitschrift().hole();
  EXPECT_EQ(gehe([](clsBildZuordnungen&) {}).text(), u"Nichts geändert."_s);
  EXPECT_EQ(anweisungen({}).size(), 1);
}

TEST_F(WegSpeichern, NewRowsGetTheKeysOfTheRecordWhereverTheyStand) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  gehe([&](clsBildZuordnungen& bilder) {
    neues(bilder, u"neu"_s);
    const auto satz = bilder.AktBildObj;
    bilder.AktInd(0);
    // Dragged to the front, as the dialog orders the collection before it saves.
    Sammlungszugriff::ordne(bilder, {satz.get(), bilder.AktBildObj.get()});
    for (std::int32_t i = 0; i < 3; ++i) {
      bilder.AktInd(i);
      bilder.Bild_SortIndex(i);
      bilder.Bild_Changeflag(true);
    }
  });
  EXPECT_EQ(zeilen(u"Key1 = 'AB' and Key2 = '1' and Key3 = '-' and key4 = '-' and Typ1 = 'BEL' and Typ2 = '-'"_s),
      (QStringList{u"neu|Belege\\1|<NULL>|0"_s, u"a|Belege\\1|T|1"_s, u"b|Belege\\1|T|2"_s}));
}

TEST_F(WegSpeichern, RowsWhoseStoredNumberIsNotTheirPlaceAreWrittenToo) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 5);
  gespeichert(u"c"_s, 9);
  const Ergebnis ergebnis = gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 2, u"neu"_s); });
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|T|0"_s, u"b|Belege\\1|T|1"_s, u"c|Belege\\1|neu|2"_s}));
  EXPECT_EQ(ergebnis.text(), u"2 Zeilen geschrieben: 1 geändert, 1 nur in der Reihenfolge."_s);
}

TEST_F(WegSpeichern, ANewPictureThatIsRemovedAtOnceSendsNothing) {
  gespeichert(u"a"_s, 0);
  db.mitschrift().hole();
  EXPECT_EQ(gehe([&](clsBildZuordnungen& bilder) {
    neues(bilder, u"a"_s);
    bilder.Bild_Delete(true);
  }).text(),
      u"Nichts geändert."_s);
  EXPECT_EQ(anweisungen({}).size(), 1);
  EXPECT_EQ(zeilen().size(), 1);
}

TEST_F(WegSpeichern, ASecondTryWritesTheTextAsTheUserTypedIt) {
  gespeichert(u"a"_s, 0);
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: "_s + Verweigert, Antwort::Ja);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"Bob's"_s);
    db.mitschrift().scheitere_am_naechsten();
  }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|Bob's|0"_s});
}

TEST_F(WegSpeichern, AnInsertWhoseAnswerWasLostIsFoundAndNotWrittenTwice) {
  db.mitschrift().bei_jedem([&](const QString& text) {
    if (!text.startsWith(u"insert"_s)) return;
    db.fuehre_aus(text);
    throw Laufzeitfehler(fehlernummer::Anweisung, u"Die Verbindung ist abgerissen"_s);
  });
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) { neues(bilder, u"neu"_s); });
  EXPECT_EQ(zeilen(), QStringList{u"neu|Belege\\1|<NULL>|0"_s});
  EXPECT_EQ(ergebnis.neu, 1);
  EXPECT_EQ(ergebnis.bilder[0].hinweis, u"Trotz des Fehlers der Datenbank gespeichert."_s);
}

TEST_F(WegSpeichern, ARowThatThisRunWroteTwiceIsReducedToOne) {
  bool einmal = true;
  db.mitschrift().bei_jedem([&](const QString& text) {
    if (text.startsWith(u"insert"_s) && std::exchange(einmal, false)) db.fuehre_aus(text);
  });
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) { neues(bilder, u"neu"_s); });
  EXPECT_EQ(zeilen(), QStringList{u"neu|Belege\\1|<NULL>|0"_s});
  EXPECT_TRUE(ergebnis.vollstaendig());
  EXPECT_EQ(ergebnis.bilder[0].hinweis, u"Die Zeile stand doppelt in der Tabelle; eine ist wieder entfernt."_s);
}

TEST_F(WegSpeichern, AReductionThatFailsHalfwayLeavesBothRowsAndIsTold) {
  for (const QString& stelle : {u"Delete"_s, u"insert"_s, u"COMMIT"_s}) {
    SCOPED_TRACE(stelle.toStdString());
    db.fuehre_aus(u"delete from Bild_Zuordnungen"_s);
    bool einmal = true;
    bool darin = false;
    db.mitschrift().bei_jedem([&](const QString& text) {
      if (text.startsWith(u"insert"_s) && std::exchange(einmal, false)) db.fuehre_aus(text);
      if (darin && text.startsWith(stelle)) throw Laufzeitfehler(fehlernummer::Anweisung, Verweigert);
      darin |= text.startsWith(u"BEGIN"_s);
    });
    erwarte_Hinweis(
        u"„neu.jpg“: Die Zeile steht doppelt in der Tabelle (%1). Öffnen Sie den Vorgang noch einmal und entfernen Sie "
        "eine davon."_s.arg(Verweigert));
    gehe([&](clsBildZuordnungen& bilder) { neues(bilder, u"neu"_s); });
    EXPECT_EQ(zeilen().size(), 2);
  }
}

TEST_F(WegSpeichern, ClonesThatStandTwiceByDesignStayTwice) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 2, u"neu"_s); }).vollstaendig());
  EXPECT_EQ(zeilen().filter(u"a|"_s).size(), 2);
}

TEST_F(WegSpeichern, OneOfTwoEqualRowsIsRemovedAndTheOtherStays) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 0);
  const Ergebnis ergebnis = gehe([](clsBildZuordnungen& bilder) { entferne(bilder, 0); });
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|T|1"_s});
  EXPECT_EQ(ergebnis.entfernt, 1);
  EXPECT_EQ(sammlung->AnzahlPos(), 1);
}

TEST_F(WegSpeichern, TwoPicturesOfOneNameFromTwoFoldersKeepFoldersAndTexts) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 1, u"Belege\\2"_s);
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"neu"_s); }).vollstaendig());
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|neu|0"_s, u"a|Belege\\2|T|1"_s}));
}

TEST_F(WegSpeichern, AGroupThatCanNotBeWrittenIsLeftWholeAndTriedAgain) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"a"_s, 1, u"Belege\\2"_s);
  db.mitschrift().scheitere_bei_Beginn(u"insert"_s);
  erwarte_Frage(u"1 von 2"_s, u"„a.jpg“: "_s + Verweigert, Antwort::Ja, [&] {
    EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|T|0"_s, u"a|Belege\\2|T|1"_s}));
    db.mitschrift().heile();
  });
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"neu"_s); }).vollstaendig());
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|neu|0"_s, u"a|Belege\\2|T|1"_s}));
}

TEST_F(WegSpeichern, AnUpdateThatMetNoRowIsToldAndNotInserted) {
  gespeichert(u"a"_s, 0);
  erwarte_Hinweis(
      u"„a.jpg“: Die Zeile steht nicht mehr in der Tabelle; ein anderer Arbeitsplatz hat sie wohl entfernt. Soll das "
      "Bild bleiben, hängen Sie es noch einmal an."_s);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    db.fuehre_aus(u"delete from Bild_Zuordnungen"_s);
  });
  EXPECT_TRUE(zeilen().isEmpty());
  EXPECT_EQ(ergebnis.nicht_geschrieben, 1);
  EXPECT_EQ(ergebnis.geaendert, 0);
}

TEST_F(WegSpeichern, WhatTheTableHoldsOtherwiseIsNamedAndWrittenAgain) {
  gespeichert(u"a"_s, 0);
  bool einmal = true;
  db.mitschrift().bei_jedem([&](const QString& text) {
    if (text.startsWith(u"Select *"_s) && !zeilen().filter(u"neu"_s).isEmpty() && std::exchange(einmal, false))
      db.fuehre_aus(u"update Bild_Zuordnungen set Beschreibung = 'fremd', SortIndex = 4"_s);
  });
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: In der Tabelle steht anderes: Drucktext, Reihenfolge."_s, Antwort::Ja);
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"neu"_s); }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|0"_s});
}

TEST_F(WegSpeichern, WhatOthersChangedMeanwhileIsNotCompared) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    db.fuehre_aus(u"update Bild_Zuordnungen set Beschreibung = 'fremd' where Bildname = 'b'"_s);
  }).vollstaendig());
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|neu|0"_s, u"b|Belege\\1|fremd|1"_s}));
}

TEST_F(WegSpeichern, ARowWithAnEmptyPartIsNotRemovedSinceOthersWouldGoWithIt) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  db.fuehre_aus(u"update Bild_Zuordnungen set Bildname = NULL where Bildname = 'a'"_s);
  erwarte_Hinweis(
      u"„.jpg“: Die Zeile hat in der Tabelle eine leere Angabe und bleibt stehen, weil mit ihr andere Bilder entfernt "
      "würden. Lassen Sie die Tabelle prüfen."_s);
  EXPECT_EQ(gehe([](clsBildZuordnungen& bilder) { entferne(bilder, 0); }).nicht_geschrieben, 1);
  EXPECT_EQ(zeilen().size(), 2);
}

TEST_F(WegSpeichern, ADrucktextIsCutSoThatItsQuotesFitWhole) {
  gespeichert(u"a"_s, 0);
  erwarte_Hinweis(
      u"„a.jpg“: Der Drucktext ist gekürzt; die Tabelle fasst 250 Zeichen, und ein Hochkomma zählt doppelt. Kürzen Sie "
      "ihn selbst, wenn das Ende wichtig ist."_s);
  const QString text = QString(249, u'x') + u"'y"_s;
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) { aendere(bilder, 0, text); }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|%1|0"_s.arg(QString(249, u'x'))});
}

TEST_F(WegSpeichern, AHostWithoutWindowsSavesAndIsToldEverythingInTheResult) {
  gespeichert(u"a"_s, 3);
  Zuordnungsweg weg(std::make_shared<Betrieb>(db), u"P:"_s);
  const auto lesung = weg.lies(vorgang());
  ASSERT_TRUE(lesung.bilder);
  EXPECT_EQ(lesung.bilder->Bild_SortIndex(), 3);
  lesung.bilder->Bild_Beschreibung(u"neu"_s);
  lesung.bilder->Bild_Changeflag(true);
  db.mitschrift().scheitere_am_naechsten();
  const Ergebnis ergebnis = weg.speichere(lesung.bilder, vorgang());
  EXPECT_EQ(ergebnis.nicht_geschrieben, 1);
  EXPECT_EQ(ergebnis.bilder[0].hinweis, Verweigert);
  EXPECT_TRUE(lesung.bilder->Bild_Changeflag()) << "it waits in the collection";
  EXPECT_EQ(core.hole().size(), 1) << "reports go on to the host";
  EXPECT_TRUE(weg.speichere(lesung.bilder, vorgang()).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|3"_s});
}
