#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgaenge/Vorgangstabelle.h"
#include "tests/host/betrieb/vorgaenge/Vorgangsdatenbank.h"

using namespace Qt::Literals::StringLiterals;
using namespace vorgangstabelle;

namespace {

const Vorgangsschluessel Beleg{u"BEL"_s, {u"AB"_s, u"24-1001"_s, {}}};
const Kunde Huber{u"10001"_s, u"Bäckerei Huber"_s, u"Freiburg"_s};

Vorgangssatz satz_von(const Vorgangsschluessel& schluessel) {
  return {schluessel, u"10001"_s, u"P-1"_s, u"Neuer Kessel"_s, std::nullopt, u"2026-11-22 09:15:00"_s};
}

class Vorgangstabelle : public Vorgangsdatenbank {};

}  // namespace

TEST_F(Vorgangstabelle, ANewRecordStandsThereWithItsCustomerAndInTheIndex) {
  mache(db_, satz_von(Beleg), Huber);
  EXPECT_EQ(vorgaenge(), QStringList{u"BEL|AB|24-1001||10001|P-1|Neuer Kessel|~|2026-11-22 09:15:00"_s});
  EXPECT_EQ(kunden(), QStringList{u"10001|Bäckerei Huber|Freiburg"_s});
  EXPECT_EQ(zeilen(u"SELECT Bezeichnung FROM Bild_Vorgaenge"_s),
      QStringList{u"Neuer Kessel · Bäckerei Huber, Freiburg · Projekt P-1"_s});
  EXPECT_EQ(lies(anderer_, Beleg), satz_von(Beleg));
  pruefe_Index();
}

TEST_F(Vorgangstabelle, ANumberIsThereOnceWhateverItsCase) {
  mache(db_, satz_von(Beleg), std::nullopt);
  EXPECT_TRUE(gibt_es(anderer_, {u"bel"_s, {u"ab "_s, u"24-1001"_s, {}}}));
  EXPECT_EQ(abbruch_von([&] {
    mache(anderer_, satz_von({u"BEL"_s, {u"ab"_s, u"24-1001"_s, {}}}), Huber);
  }),
      u"Beleg ab 24-1001 gibt es schon; es ist nichts gespeichert."_s);
  EXPECT_EQ(vorgaenge().size(), 1);
  EXPECT_EQ(kunden(), QStringList());
}

TEST_F(Vorgangstabelle, ACustomerThatAnotherDeskHasMadeMeanwhileStops) {
  mache(anderer_, satz_von({u"ART"_s, {u"1"_s, {}, {}}}), Huber);
  EXPECT_EQ(abbruch_von([&] {
    mache(db_, satz_von(Beleg), Kunde{u"10001"_s, u"Andere"_s, {}});
  }),
      u"Den Kunden 10001 gibt es inzwischen schon; es ist nichts gespeichert."_s);
  EXPECT_FALSE(gibt_es(db_, Beleg));
  EXPECT_EQ(kunden(), QStringList{u"10001|Bäckerei Huber|Freiburg"_s});
}

TEST_F(Vorgangstabelle, AChangedRecordIsFoundUnderItsNewWordsOnly) {
  mache(db_, satz_von(Beleg), Huber);
  Vorgangssatz neu = satz_von({u"BEL"_s, {u"RE"_s, u"24-7"_s, {}}});
  neu.text = u"Pumpe getauscht"_s;
  aendere(db_, satz_von(Beleg), neu, std::nullopt);
  EXPECT_EQ(vorgaenge(), QStringList{u"BEL|RE|24-7||10001|P-1|Pumpe getauscht|~|2026-11-22 09:15:00"_s});
  EXPECT_EQ(zeilen(u"SELECT COUNT(*) FROM Vorgaenge_Text WHERE Suchtext MATCH '\"kessel\"'"_s), QStringList{u"0"_s});
  EXPECT_EQ(zeilen(u"SELECT COUNT(*) FROM Vorgaenge_Text WHERE Suchtext MATCH '\"pumpe\"'"_s), QStringList{u"1"_s});
  pruefe_Index();
}

TEST_F(Vorgangstabelle, TwoDesksDoNotOverwriteEachOther) {
  mache(db_, satz_von(Beleg), Huber);
  Vorgangssatz meiner = satz_von(Beleg);
  meiner.text = u"von mir"_s;
  Vorgangssatz deiner = satz_von(Beleg);
  deiner.text = u"von dir"_s;
  aendere(anderer_, satz_von(Beleg), deiner, std::nullopt);
  EXPECT_EQ(abbruch_von([&] { aendere(db_, satz_von(Beleg), meiner, std::nullopt); }),
      u"Beleg AB 24-1001 ist inzwischen an einem anderen Platz geändert; es ist nichts gespeichert."_s);
  EXPECT_EQ(lies(db_, Beleg)->text, u"von dir"_s);
  loesche(anderer_, Beleg);
  EXPECT_EQ(
      abbruch_von([&] { aendere(db_, deiner, meiner, std::nullopt); }), u"Beleg AB 24-1001 gibt es nicht mehr."_s);
  EXPECT_EQ(abbruch_von([&] { loesche(db_, Beleg); }), u"Beleg AB 24-1001 gibt es nicht mehr."_s);
}

TEST_F(Vorgangstabelle, ARecordWithPicturesKeepsItsNumberAndStays) {
  mache(db_, satz_von(Beleg), Huber);
  gib_Bild(u"Bel"_s, u"ab"_s, u"24-1001"_s, u"-"_s);
  gib_Bild(u"BEL"_s, u"AB"_s, u"24-1001"_s, {});
  EXPECT_EQ(anzahl_Bilder(db_, Beleg), 2);
  EXPECT_EQ(abbruch_von([&] { loesche(db_, Beleg); }), u"Beleg AB 24-1001 hat 2 Bilder und ist nicht gelöscht."_s);
  Vorgangssatz neu = satz_von({u"BEL"_s, {u"AB"_s, u"24-1002"_s, {}}});
  EXPECT_EQ(abbruch_von([&] { aendere(db_, satz_von(Beleg), neu, std::nullopt); }),
      u"Beleg AB 24-1001 hat inzwischen 2 Bilder; Art und Nummer bleiben deshalb, und es ist nichts gespeichert."_s);
  neu.schluessel = Beleg;
  neu.text = u"nur der Text"_s;
  aendere(db_, satz_von(Beleg), neu, std::nullopt);
  EXPECT_EQ(lies(db_, Beleg)->text, u"nur der Text"_s);
}

TEST_F(Vorgangstabelle, PicturesOfARecordOfTheSameBeginningDoNotCount) {
  mache(db_, satz_von(Beleg), Huber);
  gib_Bild(u"BEL"_s, u"AB"_s, u"24-1001"_s, u"1"_s);
  gib_Bild(u"MON"_s, u"AB"_s, u"24-1001"_s, u"-"_s);
  EXPECT_EQ(anzahl_Bilder(db_, Beleg), 0);
  loesche(db_, Beleg);
  EXPECT_FALSE(gibt_es(db_, Beleg));
  pruefe_Index();
}

TEST_F(Vorgangstabelle, AnotherSpellingOfItsOwnNumberIsNoOther) {
  mache(db_, satz_von(Beleg), Huber);
  mache(db_, satz_von({u"BEL"_s, {u"RE"_s, u"1"_s, {}}}), std::nullopt);
  aendere(db_, satz_von(Beleg), satz_von({u"BEL"_s, {u"ab"_s, u"24-1001"_s, {}}}), std::nullopt);
  EXPECT_EQ(lies(db_, Beleg)->schluessel.keys[0], u"ab"_s);
  EXPECT_EQ(abbruch_von([&] {
    aendere(db_, *lies(db_, Beleg), satz_von({u"BEL"_s, {u"re"_s, u"1"_s, {}}}), std::nullopt);
  }),
      u"Beleg re 1 gibt es schon; es ist nichts gespeichert."_s);
}

TEST_F(Vorgangstabelle, AnArticleTakesItsOtherColumnsAlong) {
  mache(db_, satz_von({u"ART"_s, {u"WP-1"_s, {}, {}}}), std::nullopt);
  db_.Execute(u"INSERT INTO Artikelzusatz VALUES ('WP-1', 'weiß', '70120')"_s);
  aendere(db_, satz_von({u"ART"_s, {u"WP-1"_s, {}, {}}}), satz_von({u"ART"_s, {u"WP-2"_s, {}, {}}}), std::nullopt);
  EXPECT_EQ(zeilen(u"SELECT Artikelnummer, Hauptlieferant FROM Artikelstamm"_s), QStringList{u"WP-2|70120"_s});
}

TEST_F(Vorgangstabelle, CustomersAreFoundByNumberNameAndPlace) {
  db_.Execute(
      u"INSERT INTO Kunden VALUES ('10001', 'Bäckerei Huber', 'Freiburg'), ('10002', 'Familie Öztürk', 'Kirchzarten'), "
      "('20010', 'Huber & Sohn', 'Ulm')"_s);
  const auto nummern = [&](const QString& eingabe, int hoechstens = 50) {
    QStringList liste;
    for (const Kunde& einer : vorgangstabelle::kunden(db_, eingabe, hoechstens)) liste.append(einer.nummer);
    return liste;
  };
  EXPECT_EQ(nummern(u"100"_s), (QStringList{u"10001"_s, u"10002"_s}));
  EXPECT_EQ(nummern(u"HUBER"_s), (QStringList{u"10001"_s, u"20010"_s}));
  EXPECT_EQ(nummern(u"öztürk"_s), QStringList{u"10002"_s});
  EXPECT_EQ(nummern(u"ulm"_s), QStringList{u"20010"_s});
  EXPECT_EQ(nummern({}, 2), (QStringList{u"10001"_s, u"10002"_s}));
  EXPECT_EQ(nummern(u"%"_s), QStringList());
}

TEST_F(Vorgangstabelle, OnlyADatabaseWithTheTablesKeepsRecordsItself) {
  EXPECT_TRUE(schema::hat_eigene_Vorgaenge(db_));
  db_.Execute(u"DROP TABLE Vorgaenge_Ruhe"_s);
  EXPECT_FALSE(schema::hat_eigene_Vorgaenge(db_));
}

TEST_F(Vorgangstabelle, AFailureOfTheDatabaseLeavesNothingBehind) {
  db_.Execute(u"CREATE TRIGGER Nein BEFORE INSERT ON Vorgaenge BEGIN SELECT RAISE(ABORT, 'nein'); END"_s);
  const QString worte = abbruch_von([&] { mache(db_, satz_von(Beleg), Huber); });
  EXPECT_TRUE(worte.startsWith(u"Der Vorgang ist nicht gespeichert: "_s)) << worte.toStdString();
  EXPECT_EQ(kunden(), QStringList());
  // No transaction stays open.
  anderer_.Execute(u"INSERT INTO Kunden VALUES ('1', 'frei', '')"_s);
}
