// Finding records: the same questions to tables of our own with their index and to a firm's view give the same answers.
#include <gtest/gtest.h>

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"
#include "platform/adodb/Connection.h"
#include "platform/basic/Suchworte.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using vorgangsquelle::Herkunft;

namespace {

vorgangsquelle::Frage frage(const QString& worte, int hoechstens = 200) {
  vorgangsquelle::Frage frage;
  frage.filter = Vorgangsfilter::lies(worte);
  frage.hoechstens = hoechstens;
  return frage;
}

QStringList nummern(const QList<Vorgang>& liste) {
  QStringList alle;
  for (const Vorgang& einer : liste) alle.append(einer.nummer);
  return alle;
}

/// A database with tables of our own, and one where a firm's view has the same records.
class Vorgangsfragen : public ::testing::Test {
 protected:
  Vorgangsfragen() {
    oeffne(eigene_, u"eigene.db"_s);
    oeffne(fremde_, u"fremde.db"_s);
    schema::richte_Betrieb_ein(eigene_);
    fremde_.Execute(u"CREATE TABLE Bild_Zuordnungen (Key1, Key2, Key3, key4, Typ1, Typ2)"_s);
    fremde_.Execute(u"CREATE TABLE Auftraege (Art, Nr1, Nr2, Nr3, Wort, Ablage, Zeit)"_s);
    fremde_.Execute(
        u"CREATE VIEW Bild_Vorgaenge AS SELECT Art AS Typ1, Nr1 AS Key1, Nr2 AS Key2, Nr3 AS Key3, Wort AS "
        "Bezeichnung, Ablage AS Ordner, Zeit AS Stand FROM Auftraege"_s);
  }
  void oeffne(adodb::Connection& verbindung, const QString& name) {
    verbindung.Open(u"Mode=ReadWriteCreate;"_s + verbindung_zur_Datei(ordner_.pfad(name)));
  }

  void nimm(
      const QString& typ1, const QString& key1, const QString& key2, const QString& text, const QString& stand = {}) {
    const adodb::Wert zeit = stand.isEmpty() ? adodb::Wert() : adodb::Wert(stand);
    eigene_.Execute(u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Text, Stand) VALUES (?, ?, ?, ?, ?)"_s,
        {typ1, key1, key2, text, zeit});
    fremde_.Execute(u"INSERT INTO Auftraege VALUES (?, ?, ?, '', ?, NULL, ?)"_s, {typ1, key1, key2, text, zeit});
  }
  /// A few records of a firm.
  void nimm_einige() {
    nimm(u"BEL"_s, u"AB"_s, u"24-1001"_s, u"Bäckerei Huber, Freiburg · Straße 5"_s, u"2024-03-01 08:00:00"_s);
    nimm(u"BEL"_s, u"RE"_s, u"24-1002"_s, u"Familie Öztürk · Projekt AB 24-1001"_s, u"2024-05-01 08:00:00"_s);
    nimm(u"MON"_s, u"AB"_s, u"24-1001"_s, u"Kessel 100% dicht, Zone_3 [alt] \"x\""_s, u"2024-04-01 08:00:00"_s);
    nimm(u"ART"_s, u"WP-0900"_s, {}, u"Wärmepumpe; DROP TABLE Kunden --"_s);
    nimm(u"Wartung"_s, u"7"_s, {}, u"Ölkessel der Bäckerei"_s);
  }

  QStringList gefunden(const QString& worte) {
    const QStringList eigene = nummern(vorgangsquelle::lies(eigene_, Herkunft::Eigene, frage(worte)));
    EXPECT_EQ(nummern(vorgangsquelle::lies(fremde_, Herkunft::Sicht, frage(worte))), eigene) << worte.toStdString();
    EXPECT_EQ(vorgangsquelle::zaehle(eigene_, Herkunft::Eigene, frage(worte)), eigene.size());
    EXPECT_EQ(vorgangsquelle::zaehle(fremde_, Herkunft::Sicht, frage(worte)), eigene.size());
    return eigene;
  }

  Testordner ordner_;
  adodb::Connection eigene_;
  adodb::Connection fremde_;
};

}  // namespace

TEST(Suchworte, BeginningsAreThoseOfWordsAndNumbers) {
  EXPECT_EQ(suchworte::gefaltet(u"  Ab\tSTRASSE  Straße\n"), u"ab strasse strasse"_s);
  EXPECT_EQ(suchworte::anfaenge(u"AB 24-1001 Öl-Kessel"), u" 1 10 2 24 a ab k ke ö öl "_s);
  EXPECT_EQ(suchworte::anfaenge(u"·-/"), QString());
  EXPECT_EQ(suchworte::anfaenge(QString::fromUcs4(U"\U0001D400x")),
      u' ' + QString::fromUcs4(U"\U0001D400") + u' ' + QString::fromUcs4(U"\U0001D400x") + u' ');
}

TEST(Vorgangsfilter, ShortWordsAreTheirLettersAndDigits) {
  const Vorgangsfilter filter = Vorgangsfilter::lies(u" Öl  4- / GmbH ab ÖL "_s);
  EXPECT_EQ(filter.lange, QStringList{u"gmbh"_s});
  EXPECT_EQ(filter.kurze, (QStringList{u"öl"_s, u"4"_s, u"ab"_s}));
  EXPECT_EQ(filter.ganz, u"öl 4- gmbh ab öl"_s);
  EXPECT_EQ(Vorgangsfilter::lies(u"% kes\0sel"_s).zeichen, QStringList{u"%"_s});
  EXPECT_TRUE(Vorgangsfilter::lies(u" - / ·"_s).leer());
}

TEST_F(Vorgangsfragen, AllWordsMustOccurInAnyOrderAndCase) {
  nimm_einige();
  const QList<std::pair<QString, QStringList>> faelle{{u"freiburg HUBER"_s, {u"AB 24-1001"_s}},
      {u"öztürk"_s, {u"RE 24-1002"_s}}, {u"ÖZTÜRK"_s, {u"RE 24-1002"_s}}, {u"strasse"_s, {u"AB 24-1001"_s}},
      {u"bäckerei"_s, {u"AB 24-1001"_s, u"7"_s}}, {u"bäckerei öl"_s, {u"7"_s}}, {u"ckere"_s, {u"AB 24-1001"_s, u"7"_s}},
      {u"bäckerei xyz"_s, {}}, {u"öl"_s, {u"7"_s}}, {u"hu fr"_s, {u"AB 24-1001"_s}}, {u"be"_s, {}}, {u"7"_s, {u"7"_s}}};
  for (const auto& [worte, erwartete] : faelle) EXPECT_EQ(gefunden(worte), erwartete) << worte.toStdString();
}

TEST_F(Vorgangsfragen, WhatIsTypedIsPlainText) {
  nimm_einige();
  for (const QString& worte : {u"%"_s, u"["_s, u"100%"_s, u"zone_3"_s, u"[alt]"_s, u"\"x\""_s})
    EXPECT_EQ(gefunden(worte), QStringList{u"AB 24-1001"_s}) << worte.toStdString();
  EXPECT_EQ(gefunden(u"drop table kunden --"_s), QStringList{u"WP-0900"_s});
  for (const QString& worte : {u"%%%"_s, u"a__"_s, u"[a-z]"_s, u"'; drop table vorgaenge --"_s, u"\"a\" OR \"b\""_s,
           u"kess*"_s, u"\\\\\\"_s, u"\\"_s, u"*"_s})
    EXPECT_EQ(gefunden(worte), QStringList()) << worte.toStdString();
  EXPECT_EQ(gefunden({}).size(), 5);
}

TEST_F(Vorgangsfragen, ANumberFromItsBeginningComesFirstAndThenTheNewest) {
  nimm_einige();
  EXPECT_EQ(gefunden({}), (QStringList{u"RE 24-1002"_s, u"AB 24-1001"_s, u"AB 24-1001"_s, u"7"_s, u"WP-0900"_s}));
  EXPECT_EQ(gefunden(u"24-1001"_s), (QStringList{u"AB 24-1001"_s, u"AB 24-1001"_s, u"RE 24-1002"_s}));
  EXPECT_EQ(gefunden(u"ab 24-1001"_s), (QStringList{u"AB 24-1001"_s, u"AB 24-1001"_s, u"RE 24-1002"_s}));
  EXPECT_EQ(gefunden(u"ab 24"_s).first(), u"AB 24-1001"_s);
  EXPECT_EQ(gefunden(u"wp-0"_s), QStringList{u"WP-0900"_s});
}

TEST_F(Vorgangsfragen, ManyHitsAreFoundInTheSameOrderAsFew) {
  const QString zahlen = u"WITH RECURSIVE z(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM z WHERE n < 60000) "_s;
  const QString werte =
      u"'BEL', 'AB', printf('%02d-%05d', n % 25, n), printf('Firma %d GmbH', n % 977), "
      "datetime('2020-01-01', '+' || ((n * 7919) % 50000) || ' minutes') FROM z"_s;
  eigene_.Execute(u"INSERT INTO Vorgaenge_Ruhe VALUES ('Probe')"_s);
  eigene_.Execute(zahlen + u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Text, Stand) SELECT "_s + werte);
  eigene_.Execute(u"UPDATE Vorgaenge SET Bezeichnung = Text"_s);
  eigene_.Execute(u"INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT Nr, Suchtext FROM Vorgaenge"_s);
  eigene_.Execute(u"INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT Nr, Wortanfaenge FROM Vorgaenge"_s);
  fremde_.Execute(zahlen + u"INSERT INTO Auftraege (Nr3, Art, Nr1, Nr2, Wort, Zeit) SELECT '', "_s + werte);
  for (const QString& worte : {u""_s, u"gmbh"_s, u"a"_s, u"ab"_s, u"g"_s, u"firma gmbh"_s, u"ab 12"_s, u"12-"_s, u"0"_s,
           u"gmbh 0"_s, u"firma 97 gmbh"_s, u"24-59999"_s, u"ab gmbh 9"_s})
    for (const int hoechstens : {200, 400}) {
      const QStringList eigene = nummern(vorgangsquelle::lies(eigene_, Herkunft::Eigene, frage(worte, hoechstens)));
      EXPECT_EQ(eigene, nummern(vorgangsquelle::lies(fremde_, Herkunft::Sicht, frage(worte, hoechstens))))
          << worte.toStdString();
      EXPECT_FALSE(eigene.isEmpty()) << worte.toStdString();
    }
  EXPECT_EQ(vorgangsquelle::zaehle(eigene_, Herkunft::Eigene, frage({})), 60000);
  for (const QString& worte : {u"gmbh"_s, u"a"_s, u"gmbh ab"_s, u"firma 97"_s}) {
    const std::int64_t eigene = vorgangsquelle::zaehle(eigene_, Herkunft::Eigene, frage(worte));
    EXPECT_EQ(eigene, vorgangsquelle::zaehle(fremde_, Herkunft::Sicht, frage(worte))) << worte.toStdString();
    EXPECT_LE(eigene, vorgangsquelle::Zaehlgrenze + 1);
  }
}

TEST_F(Vorgangsfragen, TheIndexFollowsEveryChangeOfRecordAndCustomer) {
  nimm_einige();
  eigene_.Execute(u"INSERT INTO Vorgaenge (Typ1, Key1, Kundennummer) VALUES ('ANL', '10001', '10001')"_s);
  const auto finde = [&](const QString& worte) {
    return nummern(vorgangsquelle::lies(eigene_, Herkunft::Eigene, frage(worte)));
  };
  const auto sql = [&](const QString& anweisung) { eigene_.Execute(anweisung); };
  EXPECT_EQ(finde(u"müller"_s), QStringList());
  sql(u"INSERT INTO Kunden VALUES ('10001', 'Müller', 'Ulm')"_s);
  EXPECT_EQ(finde(u"müller ulm"_s), QStringList{u"10001"_s});
  sql(u"UPDATE Kunden SET Name = 'Maier'"_s);
  EXPECT_EQ(finde(u"müller"_s), QStringList());
  EXPECT_EQ(finde(u"ma ulm"_s), QStringList{u"10001"_s});
  sql(u"UPDATE Vorgaenge SET Key2 = 'Solar', Text = 'Kollektor' WHERE Typ1 = 'ANL'"_s);
  EXPECT_EQ(finde(u"kollektor maier solar"_s), QStringList{u"10001 Solar"_s});
  sql(u"DELETE FROM Kunden"_s);
  EXPECT_EQ(finde(u"maier"_s), QStringList());
  sql(u"DELETE FROM Vorgaenge WHERE Typ1 = 'ANL'"_s);
  EXPECT_EQ(finde(u"kollektor"_s), QStringList());
  for (const QString& index : {u"Vorgaenge_Text"_s, u"Vorgaenge_Anfang"_s})
    EXPECT_NO_THROW(sql(u"INSERT INTO %1 (%1, rank) VALUES ('integrity-check', 1)"_s.arg(index)));
}

TEST_F(Vorgangsfragen, PicturesAreCountedAsTheTableWritesTheKeys) {
  nimm_einige();
  for (adodb::Connection* eine : {&eigene_, &fremde_}) {
    for (const char* schluessel :
        {"'bel', 'AB', '24-1001', '-'", "'BEL', 'AB', '24-1001', '-'", "'ART', 'WP-0900', '-', '-'"})
      eine->Execute(u"INSERT INTO Bild_Zuordnungen (Typ1, Key1, Key2, Key3, key4, Typ2) VALUES (%1, '-', '-')"_s.arg(
          QString::fromLatin1(schluessel)));
    eine->Execute(
        u"INSERT INTO Bild_Zuordnungen (Typ1, Key1, Key2, Key3, key4, Typ2) VALUES "
        "('BEL', 'AB', '24-1001', '-', 'x', '-')"_s);
  }
  const auto bilder = [](const QList<Vorgang>& liste) {
    QStringList alle;
    for (const Vorgang& v : liste) alle.append(v.satz.typ1 + u' ' + QString::number(v.bilder));
    return alle;
  };
  EXPECT_EQ(bilder(vorgangsquelle::lies(eigene_, Herkunft::Eigene, frage({}))),
      (QStringList{u"BEL 0"_s, u"MON 0"_s, u"BEL 2"_s, u"Wartung 0"_s, u"ART 1"_s}));
  EXPECT_EQ(
      bilder(vorgangsquelle::lies(eigene_, Herkunft::Zuordnungen, frage({}))), (QStringList{u"BEL 2"_s, u"ART 1"_s}));
}

TEST_F(Vorgangsfragen, CertainRecordsComeInTheOrderInWhichTheyWereAskedFor) {
  nimm_einige();
  vorgangsquelle::Frage bestimmte;
  bestimmte.nur_bestimmte = true;
  bestimmte.bestimmte = {{u"WP-0900"_s, u"-"_s, u"-"_s, u"-"_s, u"ART"_s, u"-"_s},
      {u"weg"_s, u"-"_s, u"-"_s, u"-"_s, u"BEL"_s, u"-"_s}, {u"AB"_s, u"24-1001"_s, u"-"_s, u"-"_s, u"BEL"_s, u"-"_s}};
  EXPECT_EQ(nummern(vorgangsquelle::lies(eigene_, Herkunft::Eigene, bestimmte)),
      (QStringList{u"WP-0900"_s, u"AB 24-1001"_s}));
  EXPECT_EQ(
      nummern(vorgangsquelle::lies(fremde_, Herkunft::Sicht, bestimmte)), (QStringList{u"WP-0900"_s, u"AB 24-1001"_s}));
  bestimmte.bestimmte.clear();
  EXPECT_TRUE(vorgangsquelle::lies(eigene_, Herkunft::Eigene, bestimmte).isEmpty());
}

TEST_F(Vorgangsfragen, AViewOfAnyKindIsReadAsFarAsItGoes) {
  fremde_.Execute(u"INSERT INTO Auftraege VALUES ('BEL', 'AB', NULL, NULL, ?, '..\\weg', '2024-01-02T03:04:05.000')"_s,
      {QString(4000, u'ä')});
  fremde_.Execute(u"INSERT INTO Auftraege VALUES ('BEL', 'RE', '1', '', NULL, 'Belege\\Neu', 'gestern')"_s);
  const QList<Vorgang> liste = vorgangsquelle::lies(fremde_, Herkunft::Sicht, frage({}));
  ASSERT_EQ(nummern(liste), (QStringList{u"RE 1"_s, u"AB"_s}));
  EXPECT_EQ(liste[1].betreff.size(), 250);
  EXPECT_EQ(liste[1].satz.key2, u"-"_s);
  EXPECT_EQ(liste[1].stand, QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5)));
  EXPECT_EQ(vorgang::bildordner(liste[1]), u"Belege\\Allg"_s);
  EXPECT_FALSE(liste[0].stand.isValid());
  EXPECT_EQ(vorgang::bildordner(liste[0]), u"Belege\\Neu"_s);
}

TEST_F(Vorgangsfragen, AViewWithoutAColumnFailsWithItsName) {
  fremde_.Execute(u"DROP VIEW Bild_Vorgaenge"_s);
  fremde_.Execute(u"CREATE VIEW Bild_Vorgaenge AS SELECT Art AS Typ1, Nr1 AS Key1 FROM Auftraege"_s);
  EXPECT_EQ(vorgangsquelle::herkunft(fremde_), Herkunft::Sicht);
  const auto ausfall = versuche_Datenbank([&] { vorgangsquelle::lies(fremde_, Herkunft::Sicht, frage(u"huber"_s)); });
  ASSERT_TRUE(ausfall);
  EXPECT_TRUE(ausfall->worte.contains(u"Key2"_s)) << ausfall->worte.toStdString();
}

TEST_F(Vorgangsfragen, AViewWhoseTablesAreGoneIsNotTakenForAMissingOne) {
  fremde_.Execute(u"ALTER TABLE Auftraege RENAME TO Weg"_s);
  fremde_.Execute(u"DROP TABLE Weg"_s);
  const auto ausfall = versuche_Datenbank([&] { vorgangsquelle::herkunft(fremde_); });
  ASSERT_TRUE(ausfall);
  EXPECT_EQ(ausfall->grund, Datenbankgrund::Tabelle_fehlt);
}

TEST_F(Vorgangsfragen, TheDatabaseTellsWhereItsRecordsComeFrom) {
  EXPECT_EQ(vorgangsquelle::herkunft(eigene_), Herkunft::Eigene);
  EXPECT_EQ(vorgangsquelle::herkunft(fremde_), Herkunft::Sicht);
  fremde_.Execute(u"DROP VIEW Bild_Vorgaenge"_s);
  EXPECT_EQ(vorgangsquelle::herkunft(fremde_), Herkunft::Zuordnungen);
}

TEST_F(Vorgangsfragen, ARecordThatGotPicturesByAnotherRoadIsThere) {
  eigene_.Execute(
      u"INSERT INTO Bild_Zuordnungen (Typ1, Key1, Key2, Key3, key4, Typ2) VALUES "
      "('BEL', 'AB', '77', '-', '-', '-'), ('BEL', 'AB', '77', '-', '-', '-'), "
      "('BEL', 'zu', 'x', '-', 'andere', '-')"_s);
  EXPECT_EQ(nummern(vorgangsquelle::lies(eigene_, Herkunft::Eigene, frage(u"ab"_s))), QStringList{u"AB 77"_s});
  EXPECT_EQ(vorgangsquelle::zaehle(eigene_, Herkunft::Eigene, frage({})), 1);
}
