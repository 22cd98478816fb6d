#include <gtest/gtest.h>

#include "tests/store/Datenbanktest.h"

using namespace Qt::Literals::StringLiterals;

using Lesen = Datenbanktest;

TEST_F(Lesen, WithoutAnyArgumentTheWholeTableIsAskedForInItsOrder) {
  EXPECT_FALSE(store.FKT_LeseBilder({}, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(gelesen(), QStringList{u"Select * from Bild_Zuordnungen order by SortIndex"_s});
}

TEST_F(Lesen, AConditionIsJoinedToTheOrderWithoutABlank) {
  fuege_ein(u"'A','-','-','-','foto','jpg','Bel','-','P','T','0001',NULL,'-',0"_s);
  EXPECT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(gelesen(), QStringList{u"Select * from Bild_Zuordnungen  where Key1 = 'A'order by SortIndex"_s});
  EXPECT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}, false));
  EXPECT_EQ(gelesen(), QStringList{u"Select * from Bild_Zuordnungen  where Key1 = 'A'"_s});
}

TEST_F(Lesen, AConditionThatEndsInADigitIsJoinedAllTheSame) {
  fuege_ein(u"'A','-','-','-','foto','jpg','Bel','-','P','T','0001',NULL,'-',0"_s);
  EXPECT_TRUE(store.FKT_LeseBilder({}, {}, {}, {}, {}, {}, {}, {}, u"SortIndex = 0"_s));
  EXPECT_EQ(gelesen(), QStringList{u"Select * from Bild_Zuordnungen  where SortIndex = 0order by SortIndex"_s});
  EXPECT_EQ(store.AnzahlPos(), 1);
}

TEST_F(Lesen, AllPartsOfTheConditionStandInTheirOrder) {
  EXPECT_FALSE(
      store.FKT_LeseBilder(u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"n"_s, u"e"_s, u"t"_s, u"u"_s, u"Key1 <> 'x'"_s, false));
  EXPECT_EQ(gelesen(),
      QStringList{u"Select * from Bild_Zuordnungen  where Key1 = '1' and Key2 = '2' and Key3 = '3' and "
                  "Key4 = '4' and Bildname = 'n' and BildExt = 'e' and Typ1 = 't' and Typ2 = 'u' and "
                  "Key1 <> 'x'"_s});
  EXPECT_FALSE(store.FKT_LeseBilder({}, {}, {}, {}, {}, u"e"_s, {}, u"u"_s, {}, false));
  EXPECT_EQ(gelesen(), QStringList{u"Select * from Bild_Zuordnungen  where BildExt = 'e' and Typ2 = 'u'"_s});
}

TEST_F(Lesen, AReadThatFindsNothingEmptiesTheCollection) {
  ASSERT_TRUE(store.FKT_NeuesBild(u"A"_s, {}, {}, {}, u"x"_s, u"jpg"_s, {}, {}));
  EXPECT_FALSE(store.FKT_LeseBilder(u"gibt es nicht"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(store.AnzahlPos(), 0);
  EXPECT_EQ(store.AktInd(), -1);
  EXPECT_EQ(store.AktBildObj, nullptr);
}

TEST_F(Lesen, ThreeRowsComeInTheStoredOrderWithAllFlagsFalseAndNoSortIndex) {
  fuege_ein(u"'A','-','-','-','c','jpg','Bel','-','P','T','0001',NULL,'-',3"_s);
  fuege_ein(u"'A','-','-','-','a','jpg','Bel','-','P','T','0001',NULL,'-',1"_s);
  fuege_ein(u"'A','-','-','-','b','jpg','Bel','-','P','T','0001',NULL,'-',2"_s);
  fuege_ein(u"'B','-','-','-','z','jpg','Bel','-','P','T','0001',NULL,'-',0"_s);
  EXPECT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(store.AnzahlPos(), 3);
  EXPECT_EQ(store.AktInd(), 0);
  QString namen;
  for (int i = 0; i < 3; ++i) {
    store.AktInd(i);
    namen += store.Bild_Bildname();
    EXPECT_FALSE(store.Bild_Changeflag() || store.Bild_Neu() || store.Bild_Delete());
    EXPECT_EQ(store.Bild_SortIndex(), 0);
    EXPECT_EQ(store.AktBildObj->Bild_Druckkennzeichen, QString());
  }
  EXPECT_EQ(namen, u"abc"_s);
}

TEST_F(Lesen, EveryColumnReachesItsFieldAndNullIsEmpty) {
  fuege_ein(u"'k1','k2','k3','k4','n','e','t1','t2','Artikel\\Allg','Schöne \"Ecke\"','1010','77','u',5"_s);
  fuege_ein(u"'k1',NULL,NULL,NULL,'o',NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,6"_s);
  ASSERT_TRUE(store.FKT_LeseBilder(u"k1"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(store.Bild_Key1(), u"k1"_s);
  EXPECT_EQ(store.Bild_Key2(), u"k2"_s);
  EXPECT_EQ(store.Bild_Key3(), u"k3"_s);
  EXPECT_EQ(store.Bild_Key4(), u"k4"_s);
  EXPECT_EQ(store.Bild_Bildname(), u"n"_s);
  EXPECT_EQ(store.Bild_BildExt(), u"e"_s);
  EXPECT_EQ(store.Bild_Typ1(), u"t1"_s);
  EXPECT_EQ(store.Bild_Typ2(), u"t2"_s);
  EXPECT_EQ(store.Bild_Pfad(), u"Artikel\\Allg"_s);
  EXPECT_EQ(store.Bild_Beschreibung(), u"Schöne \"Ecke\""_s);
  EXPECT_EQ(store.Bild_GrafikAnbNr(), u"77"_s);
  EXPECT_EQ(store.Bild_Grafik_Ursprung(), u"u"_s);
  EXPECT_TRUE(store.Bild_NeueSeite());
  EXPECT_FALSE(store.Bild_AlsAnhang());
  EXPECT_TRUE(store.Bild_DruckGesamteSeite());
  EXPECT_FALSE(store.Bild_Drucken());
  store.AktInd(1);
  EXPECT_EQ(store.Bild_Bildname(), u"o"_s);
  EXPECT_EQ(store.Bild_Key2() + store.Bild_BildExt() + store.Bild_Pfad() + store.Bild_Beschreibung(), QString());
  EXPECT_FALSE(
      store.Bild_NeueSeite() || store.Bild_AlsAnhang() || store.Bild_DruckGesamteSeite() || store.Bild_Drucken());
}

TEST_F(Lesen, OnlyAOneMeansTrueInThePrintFlags) {
  const struct {
    QString kennzeichen;
    QList<bool> flags;
  } faelle[] = {{u"1111"_s, {true, true, true, true}}, {u"0001"_s + QString(46, u' '), {false, false, false, true}},
      {u"2x 1"_s, {false, false, false, true}}, {u"11"_s, {true, true, false, false}},
      {u""_s, {false, false, false, false}}};
  for (const auto& fall : faelle) {
    leere();
    fuege_ein(u"'A','-','-','-','n','e','t','-','P','T','"_s + fall.kennzeichen + u"',NULL,'-',0"_s);
    ASSERT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
    EXPECT_EQ((QList<bool>{store.Bild_NeueSeite(), store.Bild_AlsAnhang(), store.Bild_DruckGesamteSeite(),
                  store.Bild_Drucken()}),
        fall.flags)
        << fall.kennzeichen.toStdString();
  }
}

TEST_F(Lesen, TextIsComparedWithoutRegardToCaseOfAllLettersAndTrailingBlanks) {
  fuege_ein(u"'Äpfel','-','-','-','n','e','Bel','-','P','T','0001',NULL,'-',0"_s);
  // H2 counts the trailing blanks of an nvarchar, which the server does not.
  const QString am_Ende = pruefziel() == Pruefziel::TdsH2 ? QString() : u"  "_s;
  EXPECT_TRUE(store.FKT_LeseBilder(u"ÄPFEL"_s + am_Ende, {}, {}, {}, {}, {}, u"BEL"_s, {}, {}));
  EXPECT_FALSE(store.FKT_LeseBilder(u" Äpfel"_s, {}, {}, {}, {}, {}, {}, {}, {}));
}

TEST_F(Lesen, AnApostropheInAKeyMakesTheReadFail) {
  fuege_ein(u"'A','-','-','-','n','e','Bel','-','P','T','0001',NULL,'-',0"_s);
  EXPECT_FALSE(store.FKT_LeseBilder(u"O'Neil"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_LeseBilder"_s, -2147217900);
  EXPECT_EQ(store.AnzahlPos(), 0);
  EXPECT_EQ(store.AktBildObj, nullptr);
  EXPECT_FALSE(store.FKT_BilderVorhanden(u"O'Neil"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_BilderVorhanden"_s, -2147217900);
  EXPECT_FALSE(store.FKT_LeseBilder_FuerKunde_Projekt(u"O'Neil"_s, true));
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_LeseBilder_FuerKunde_Projekt"_s, -2147217900);
}

TEST_F(Lesen, ASilencedStoreFailsWithoutAWord) {
  store.ohneMeldungen = true;
  EXPECT_FALSE(store.FKT_LeseBilder(u"O'Neil"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_FALSE(store.FKT_BilderVorhanden(u"O'Neil"_s, {}, {}, {}, {}, {}, {}, {}, {}));
}

TEST_F(Lesen, AMissingColumnEndsTheReadInItsFirstRow) {
  db.fuehre_aus(u"ALTER TABLE Bild_Zuordnungen DROP COLUMN GrafikAnbNr"_s);
  db.fuehre_aus(u"INSERT INTO Bild_Zuordnungen (Key1, Bildname) VALUES ('A', 'n')"_s);
  EXPECT_FALSE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_LeseBilder"_s, 3265);
  EXPECT_EQ(store.AnzahlPos(), 0);
  EXPECT_EQ(store.AktInd(), -1);
  EXPECT_EQ(store.AktBildObj, nullptr);
}

TEST_F(Lesen, ExistenceStopsAtTheFirstRowAndLeavesTheCollection) {
  fuege_ein(u"'A','-','-','-','n','jpg','Bel','-','P','T','0001',NULL,'-',0"_s);
  ASSERT_TRUE(store.FKT_NeuesBild(u"X"_s, {}, {}, {}, u"x"_s, u"jpg"_s, {}, {}));
  EXPECT_TRUE(store.FKT_BilderVorhanden({}, {}, {}, {}, u"n"_s, u"jpg"_s, {}, {}, {}));
  EXPECT_EQ(
      gelesen(), QStringList{u"Select Top 1 Key1 from Bild_Zuordnungen  where Bildname = 'n' and BildExt = 'jpg'"_s});
  EXPECT_FALSE(store.FKT_BilderVorhanden({}, {}, {}, {}, u"m"_s, {}, {}, {}, {}));
  EXPECT_EQ(store.AnzahlPos(), 1);
  EXPECT_EQ(store.Bild_Key1(), u"X"_s);
}

TEST_F(Lesen, WithoutArgumentsExistenceAsksForAnyRow) {
  EXPECT_FALSE(store.FKT_BilderVorhanden({}, {}, {}, {}, {}, {}, {}, {}, {}));
  EXPECT_EQ(gelesen(), QStringList{u"Select Top 1 Key1 from Bild_Zuordnungen "_s});
  fuege_ein(u"'A','-','-','-','n','jpg','Bel','-','P','T','0001',NULL,'-',0"_s);
  EXPECT_TRUE(store.FKT_BilderVorhanden({}, {}, {}, {}, {}, {}, {}, {}, {}));
}

TEST_F(Lesen, CustomerAndProjectReadListOneRowForEachRecord) {
  lege_Belege_an();
  EXPECT_TRUE(store.FKT_LeseBilder_FuerKunde_Projekt({}, false));
  EXPECT_EQ(gelesen(),
      QStringList{u"SELECT TOP 100 PERCENT dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, "
                  "dbo.Bild_Zuordnungen.Key3, dbo.Bild_Zuordnungen.Typ1 FROM dbo.Bild_Zuordnungen LEFT OUTER JOIN "
                  "dbo.BelegKopfZunft ON dbo.Bild_Zuordnungen.Key1 = dbo.BelegKopfZunft.Belegart AND "
                  "dbo.Bild_Zuordnungen.Key2 = dbo.BelegKopfZunft.Belegnummer WHERE (dbo.Bild_Zuordnungen.Typ1 = "
                  "'Mon' OR dbo.Bild_Zuordnungen.Typ1 = 'Bel')  GROUP BY dbo.Bild_Zuordnungen.Key1, "
                  "dbo.Bild_Zuordnungen.Key2, dbo.Bild_Zuordnungen.Key3, dbo.Bild_Zuordnungen.Typ1 ORDER BY "
                  "dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, dbo.Bild_Zuordnungen.Key3"_s});
  // The record without a header and the works order are there, the article is not.
  EXPECT_EQ(zeilen(), (QStringList{u"RE 1 - Bel"_s, u"RE 1 5 Mon"_s, u"RE 2 - Bel"_s, u"XX 9 - Bel"_s}));
  store.AktInd(0);
  EXPECT_EQ(store.Bild_Bildname() + store.Bild_BildExt() + store.Bild_Key4() + store.Bild_Typ2() + store.Bild_Pfad(),
      QString());
  EXPECT_FALSE(store.Bild_Drucken() || store.Bild_Changeflag() || store.Bild_Neu());
}

TEST_F(Lesen, AFilterByCustomerOrProjectDropsRecordsWithoutAHeader) {
  lege_Belege_an();
  EXPECT_TRUE(store.FKT_LeseBilder_FuerKunde_Projekt(u"K1"_s, false));
  EXPECT_TRUE(gelesen()[0].contains(u"Typ1 = 'Bel') AND BelegKopfZunft.Kundennummer = 'K1'  GROUP BY"_s));
  EXPECT_EQ(zeilen(), (QStringList{u"RE 1 - Bel"_s, u"RE 1 5 Mon"_s}));
  EXPECT_TRUE(store.FKT_LeseBilder_FuerKunde_Projekt(u"P2"_s, true));
  EXPECT_TRUE(gelesen()[0].contains(u"Typ1 = 'Bel') AND BelegKopfZunft.Projektnummer = 'P2'  GROUP BY"_s));
  EXPECT_EQ(zeilen(), QStringList{u"RE 2 - Bel"_s});
  EXPECT_FALSE(store.FKT_LeseBilder_FuerKunde_Projekt(u"K9"_s, false));
  EXPECT_EQ(store.AnzahlPos(), 0);
}

TEST_F(Lesen, KeysAreCorrectedInAllRowsAndNothingElse) {
  EXPECT_TRUE(store.fkt_Korr_Key1(u"neu"_s));
  EXPECT_EQ(store.AnzahlPos(), 0);
  fuege_ein(u"'A','B','-','-','a','jpg','Bel','-','P','T','0001',NULL,'-',1"_s);
  fuege_ein(u"'A','B','-','-','b','jpg','Bel','-','P','T','0001',NULL,'-',2"_s);
  ASSERT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  store.AktInd(0);
  EXPECT_TRUE(store.fkt_Korr_Key1(u"K1"_s));
  EXPECT_TRUE(store.fkt_Korr_Key2(u"K2"_s));
  EXPECT_EQ(store.AktInd(), 0);
  for (int i = 0; i < 2; ++i) {
    store.AktInd(i);
    EXPECT_EQ(store.Bild_Key1() + store.Bild_Key2(), u"K1K2"_s);
    EXPECT_FALSE(store.Bild_Changeflag());
  }
}

TEST_F(Lesen, AFailedCorrectionEndsWhereItStoodWithoutAWord) {
  clsBildZuordnungen ohne_Tabelle;
  EXPECT_FALSE(ohne_Tabelle.fkt_Korr_Key2(u"x"_s));
}

TEST_F(Lesen, InitBindsAndEmptiesTheStore) {
  ASSERT_TRUE(store.FKT_NeuesBild(u"X"_s, {}, {}, {}, u"x"_s, u"jpg"_s, {}, {}));
  EXPECT_TRUE(store.Init(db.verbindungszeichenfolge(), db.verbindung(), u"31.12.2025"_s));
  EXPECT_EQ(store.cGL_jmtVerarbeitungsdatum, u"31.12.2025"_s);
  EXPECT_EQ(store.AnzahlPos(), 0);
  EXPECT_EQ(store.AktInd(), -1);
}

TEST_F(Lesen, WithoutAConnectionTheStoreOpensItsOwn) {
  fuege_ein(u"'A','-','-','-','n','jpg','Bel','-','P','T','0001',NULL,'-',0"_s);
  ASSERT_TRUE(store.Init(db.verbindungszeichenfolge(), nullptr, {}));
  EXPECT_TRUE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
}

TEST_F(Lesen, AnOwnConnectionThatCannotBeOpenedIsToldByItsUse) {
  ASSERT_TRUE(store.Init(u"Provider=SQLite;Data Source=/gibt/es/nicht.db"_s, nullptr, {}));
  EXPECT_FALSE(store.FKT_LeseBilder(u"A"_s, {}, {}, {}, {}, {}, {}, {}, {}));
  erwarte_Bericht(u"clsBildZuordnungen"_s, u"FKT_LeseBilder"_s, 3704);
}

TEST_F(Lesen, TheHostsConnectionIsReleasedButNeverClosed) {
  {
    clsBildZuordnungen kurz;
    ASSERT_TRUE(kurz.Init(db.verbindungszeichenfolge(), db.verbindung(), {}));
  }
  EXPECT_EQ(db.verbindung()->State(), adodb::adStateOpen);
}
