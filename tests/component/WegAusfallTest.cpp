// A database that goes away while the dialog is open, or refuses to write, and comes back.
#include "tests/component/Wegtest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

class WegAusfall : public Wegtest {
 protected:
  WegAusfall() : Wegtest(std::chrono::milliseconds(50)) {}
};

const QString Kein_Zugang = u"Die Verbindung sollte scheitern"_s;

}  // namespace

TEST_F(WegAusfall, AWritingConnectionThatFailedIsGivenUpAndOpenedAnew) {
  gespeichert(u"a"_s, 0);
  db.mitschrift().scheitere_beim_Oeffnen();
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: Die Verbindung ist geschlossen oder für diesen Vorgang nicht geeignet"_s,
      Antwort::Ja, [&] { db.mitschrift().heile(); });
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"neu"_s); }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|0"_s});
}

TEST_F(WegAusfall, ARunAfterOneThatTheUserGaveUpWritesWithoutAQuestion) {
  gespeichert(u"a"_s, 0);
  db.mitschrift().scheitere_beim_Oeffnen();
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: Die Verbindung ist geschlossen oder für diesen Vorgang nicht geeignet"_s,
      Antwort::Nein, [&] { db.mitschrift().heile(); });
  EXPECT_EQ(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"eins"_s); }).nicht_geschrieben, 1);
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"zwei"_s); }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|zwei|0"_s});
}

TEST_F(WegAusfall, TheReadingConnectionIsOpenedAnewInItsPlaceAndNothingIsLost) {
  gespeichert(u"a"_s, 0);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    neues(bilder, u"b"_s);
    db.verbindung()->Close();
  });
  EXPECT_TRUE(ergebnis.vollstaendig());
  EXPECT_TRUE(ergebnis.geprueft);
  EXPECT_EQ(db.verbindung()->State(), adodb::adStateOpen);
  EXPECT_EQ(sammlung->AnzahlPos(), 2) << "the collection was not emptied";
  EXPECT_EQ(zeilen().size(), 2);
}

TEST_F(WegAusfall, AConnectionThatDiedBeforeTheDialogIsOpenedAnewForIt) {
  gespeichert(u"a"_s, 0);
  db.verbindung()->Close();
  EXPECT_TRUE(gehe([](clsBildZuordnungen& bilder) { aendere(bilder, 0, u"neu"_s); }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|0"_s});
}

TEST_F(WegAusfall, WhatWaitsStaysInTheCollectionForAsManyTriesAsItTakes) {
  gespeichert(u"a"_s, 0);
  gespeichert(u"b"_s, 1);
  erwarte_Frage(u"3 von 3"_s, u"„a.jpg“, „b.jpg“, „neu.jpg“: "_s + Verweigert, Antwort::Ja,
      [&] { db.mitschrift().scheitere_beim_Oeffnen(); });
  for (int i = 0; i < 3; ++i)
    erwarte_Frage(u"3 von 3"_s, u"„a.jpg“, „b.jpg“, „neu.jpg“: "_s + Kein_Zugang, Antwort::Ja, [&, i] {
      sammlung->AktInd(0);
      EXPECT_TRUE(sammlung->Bild_Changeflag());
      sammlung->AktInd(1);
      EXPECT_TRUE(sammlung->Bild_Delete());
      sammlung->AktInd(2);
      EXPECT_TRUE(sammlung->Bild_Neu());
      if (i == 2) db.mitschrift().heile();
    });
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"Bob's"_s);
    entferne(bilder, 1);
    neues(bilder, u"neu"_s);
    sammlung = nullptr;
    db.mitschrift().scheitere_immer();
  });
  EXPECT_EQ(ergebnis.text(), u"3 Zeilen geschrieben: 1 neu, 1 geändert, 1 entfernt."_s);
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|Bob's|0"_s, u"neu|Belege\\1|<NULL>|2"_s}));
}

TEST_F(WegAusfall, OnlyWhatTheTableDoesNotHaveIsWrittenAgain) {
  // The first insert runs, its answer is lost, and then nothing works any more.
  db.mitschrift().bei_jedem([&](const QString& text) {
    if (!text.startsWith(u"insert"_s)) return;
    db.fuehre_aus(text);
    db.mitschrift().scheitere_immer();
    throw Laufzeitfehler(fehlernummer::Anweisung, u"Die Verbindung ist abgerissen"_s);
  });
  erwarte_Frage(u"2 von 2"_s, u"„a.jpg“, „b.jpg“: Die Verbindung ist abgerissen"_s, Antwort::Ja, [&] {
    db.mitschrift().bei_jedem({});
    db.mitschrift().heile();
    db.mitschrift().hole();
  });
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    neues(bilder, u"a"_s);
    neues(bilder, u"b"_s);
  });
  EXPECT_EQ(ergebnis.neu, 2);
  EXPECT_EQ(anweisungen(u"insert"_s).size(), 1) << "the first one stands there already";
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|<NULL>|0"_s, u"b|Belege\\1|<NULL>|1"_s}));
}

TEST_F(WegAusfall, AfterTheLastRefusalTheTableIsAskedBeforeAnythingIsCalledLost) {
  db.mitschrift().bei_jedem([&](const QString& text) {
    if (!text.startsWith(u"insert"_s)) return;
    db.fuehre_aus(text);
    db.mitschrift().scheitere_immer();
    throw Laufzeitfehler(fehlernummer::Anweisung, u"Die Verbindung ist abgerissen"_s);
  });
  erwarte_Frage(
      u"1 von 1"_s, u"„a.jpg“: Die Verbindung ist abgerissen"_s, Antwort::Nein, [&] { db.mitschrift().heile(); });
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) { neues(bilder, u"a"_s); });
  EXPECT_EQ(ergebnis.text(), u"1 Zeile geschrieben: 1 neu."_s);
}

TEST_F(WegAusfall, WhereNobodyCanTellTheResultSaysSo) {
  erwarte_Frage(u"1 von 1"_s, u"„a.jpg“: "_s + Verweigert, Antwort::Nein);
  const Ergebnis ergebnis = gehe([&](clsBildZuordnungen& bilder) {
    neues(bilder, u"a"_s);
    db.mitschrift().scheitere_immer();
  });
  EXPECT_EQ(ergebnis.text(), u"UNGEWISS: 1 Bild; die Datenbank ist nicht zu fragen."_s);
  EXPECT_FALSE(ergebnis.vollstaendig());
}

TEST_F(WegAusfall, AFileThatAnotherConnectionLocksIsWrittenWhenItIsFree) {
  if (pruefziel() != Pruefziel::Sqlite) GTEST_SKIP() << "a server waits";
  gespeichert(u"a"_s, 0);
  erwarte_Frage(u"1 von 1"_s,
      u"„a.jpg“: Die Anweisung ist fehlgeschlagen: die Datenbank ist gesperrt, eine offene Transaktion desselben Programmfadens wurde in 0.05 Sekunden nicht beendet (database is locked)"_s,
      Antwort::Ja, [&] { db.fuehre_aus(u"COMMIT"_s); });
  EXPECT_TRUE(gehe([&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"neu"_s);
    db.fuehre_aus(u"BEGIN IMMEDIATE"_s);
  }).vollstaendig());
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|neu|0"_s});
}
