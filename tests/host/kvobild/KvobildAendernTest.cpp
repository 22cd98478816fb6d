#include <algorithm>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

/// A record with the pictures a, b and c in this order.
class KvobildAendern : public Betrieb {
 protected:
  KvobildAendern() {
    const Lauf lauf = zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s), bild(u"c.jpg"_s)});
    EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
    namen_ = lauf.zeilen();
  }
  /// First letters of the record's pictures in their order.
  QString folge() const {
    QString buchstaben;
    for (const QJsonObject& zeile : zeilen()) buchstaben += name_von(zeile).at(0);
    return buchstaben;
  }
  QJsonObject zeile_von(const QString& name) const {
    const QList<QJsonObject> alle = zeilen();
    const auto treffer = std::find_if(alle.begin(), alle.end(), [&](const auto& z) { return name_von(z) == name; });
    EXPECT_NE(treffer, alle.end()) << name.toStdString();
    return treffer == alle.end() ? QJsonObject() : *treffer;
  }
  QStringList namen_;
};

TEST_F(KvobildAendern, AnApostropheInTheDescriptionStaysOne) {
  ASSERT_EQ(aendern({u"--beschreibung"_s, u"Bob's Haus"_s, namen_[0]}).code, 0);
  ASSERT_EQ(aendern({u"--anhang"_s, u"ja"_s, namen_[0]}).code, 0);
  ASSERT_EQ(aendern({u"--sortierung"_s, u"2"_s, namen_[0]}).code, 0);
  EXPECT_EQ(zeile_von(namen_[0])[u"beschreibung"_s].toString(), u"Bob's Haus"_s);
}

TEST_F(KvobildAendern, WhatIsNotNamedStaysItsPlaceToo) {
  ASSERT_EQ(aendern({u"--ganze-seite"_s, u"ja"_s, namen_[1]}).code, 0);
  QJsonObject vorher = zeile_von(namen_[1]);
  ASSERT_EQ(aendern({u"--beschreibung"_s, u"neu"_s, namen_[1]}).code, 0);
  vorher[u"beschreibung"_s] = u"neu"_s;
  EXPECT_EQ(zeile_von(namen_[1]), vorher);
  EXPECT_EQ(vorher[u"sortindex"_s].toInt(), 1);
  EXPECT_EQ(folge(), u"abc"_s);
}

TEST_F(KvobildAendern, EveryPrintFlagGoesInBothDirections) {
  const QList<std::pair<QString, QString>> angaben{{u"--drucken"_s, u"drucken"_s}, {u"--neue-seite"_s, u"neue_seite"_s},
      {u"--anhang"_s, u"anhang"_s}, {u"--ganze-seite"_s, u"ganze_seite"_s}};
  for (const auto& [option, feld] : angaben) {
    ASSERT_EQ(aendern({option, u"ja"_s, namen_[0]}).code, 0);
    EXPECT_TRUE(zeile_von(namen_[0])[feld].toBool()) << option.toStdString();
    ASSERT_EQ(aendern({option, u"nein"_s, namen_[0]}).code, 0);
    EXPECT_FALSE(zeile_von(namen_[0])[feld].toBool()) << option.toStdString();
  }
}

TEST_F(KvobildAendern, APictureMovesToItsPlaceAndTheOthersMoveUp) {
  ASSERT_EQ(aendern({u"--sortierung"_s, u"0"_s, namen_[2]}).code, 0);
  EXPECT_EQ(folge(), u"cab"_s);
  ASSERT_EQ(aendern({u"--sortierung"_s, u"1"_s, namen_[2]}).code, 0);
  EXPECT_EQ(folge(), u"acb"_s);
  ASSERT_EQ(aendern({u"--sortierung"_s, u"99"_s, namen_[0]}).code, 0);
  EXPECT_EQ(folge(), u"cba"_s);
  QList<int> plaetze;
  for (const QJsonObject& zeile : zeilen()) plaetze.append(zeile[u"sortindex"_s].toInt());
  EXPECT_EQ(plaetze, (QList<int>{0, 1, 2}));
}

TEST_F(KvobildAendern, TheNameCountsWithoutRegardToCase) {
  EXPECT_EQ(aendern({u"--beschreibung"_s, u"x"_s, namen_[0].toUpper()}).code, 0);
  EXPECT_EQ(zeile_von(namen_[0])[u"beschreibung"_s].toString(), u"x"_s);
}

TEST_F(KvobildAendern, AForeignPictureIsReportedAndTheOthersAreChanged) {
  const Lauf lauf = aendern({u"--beschreibung"_s, u"x"_s, u"fremd.jpg"_s, namen_[0]});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(u"fremd.jpg"_s));
  EXPECT_EQ(zeile_von(namen_[0])[u"beschreibung"_s].toString(), u"x"_s);
}

TEST_F(KvobildAendern, ADescriptionThatWritingWouldShortenStopsTheReordering) {
  sql(u"UPDATE Bild_Zuordnungen SET Beschreibung = '"_s + QString(249, u'x') + u"''' WHERE Bildname LIKE 'a%'"_s);
  const QString vorher = stand();
  const Lauf lauf = aendern({u"--sortierung"_s, u"0"_s, namen_[2]});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(u"gekürzt"_s)) << lauf.meldungen.toStdString();
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAendern, TwoRowsOfOneNameAreNotMixedUp) {
  sql(u"INSERT INTO Bild_Zuordnungen SELECT Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, 'Anderswo', "
      u"Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, 9 FROM Bild_Zuordnungen WHERE Bildname LIKE 'a%'"_s);
  const QString vorher = stand();
  EXPECT_EQ(aendern({u"--beschreibung"_s, u"x"_s, namen_[0]}).code, 1);
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAendern, ARowThatMovesUpIsNotMixedUpWithItsNamesakeEither) {
  sql(u"INSERT INTO Bild_Zuordnungen SELECT Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, 'Anderswo', "
      u"Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, 9 FROM Bild_Zuordnungen WHERE Bildname LIKE 'a%'"_s);
  const QString vorher = stand();
  EXPECT_EQ(aendern({u"--sortierung"_s, u"0"_s, namen_[2]}).code, 1);
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAendern, AMissingKeyOfTheRecordHitsNoOtherRecord) {
  sql(u"UPDATE Bild_Zuordnungen SET Key3 = '7'"_s);
  const QString vorher = stand();
  EXPECT_EQ(entfernen({u"--alle"_s}).code, 1);
  EXPECT_EQ(aendern({u"--beschreibung"_s, u"x"_s, namen_[0]}).code, 1);
  EXPECT_EQ(stand(), vorher);
  EXPECT_EQ(entfernen({u"--key3"_s, u"7"_s, u"--alle"_s}).code, 0);
}

TEST_F(KvobildAendern, WhereTheTableDoesNotTakeTheChangeTheExitCodeSaysSo) {
  sql(u"CREATE TRIGGER fest BEFORE UPDATE ON Bild_Zuordnungen BEGIN SELECT RAISE(ABORT, 'fest'); END"_s);
  const Lauf lauf = aendern({u"--beschreibung"_s, u"x"_s, namen_[0]});
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"fest"_s));
}

TEST_F(KvobildAendern, AChangeThatSilentlyFailsToHappenIsNoticed) {
  sql(u"CREATE TRIGGER still BEFORE UPDATE ON Bild_Zuordnungen BEGIN SELECT RAISE(IGNORE); END"_s);
  EXPECT_EQ(aendern({u"--beschreibung"_s, u"x"_s, namen_[0]}).code, 3);
}

TEST_F(KvobildAendern, AWrongCallChangesNothing) {
  const QString vorher = stand();
  EXPECT_EQ(aendern({namen_[0]}).code, 2);
  EXPECT_EQ(aendern({u"--beschreibung"_s, u"x"_s}).code, 2);
  EXPECT_EQ(aendern({u"--sortierung"_s, u"eins"_s, namen_[0]}).code, 2);
  EXPECT_EQ(aendern({u"--sortierung"_s, u"-1"_s, namen_[0]}).code, 2);
  EXPECT_EQ(aendern({u"--sortierung"_s, u"1"_s, namen_[0], namen_[1]}).code, 2);
  EXPECT_EQ(aendern({u"--drucken"_s, u"1"_s, namen_[0]}).code, 2);
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAendern, OnlyWhatIsNamedIsRemoved) {
  ASSERT_EQ(entfernen({namen_[1]}).code, 0);
  EXPECT_EQ(folge(), u"ac"_s);
  EXPECT_EQ(dateien().size(), 3);
}

TEST_F(KvobildAendern, AnotherRecordKeepsItsAssignmentOfThePicture) {
  sql(u"INSERT INTO Bild_Zuordnungen SELECT Key1, '2', Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
      u"Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, SortIndex FROM Bild_Zuordnungen"_s);
  ASSERT_EQ(entfernen({u"--alle"_s}).code, 0);
  EXPECT_TRUE(zeilen().isEmpty());
  EXPECT_EQ(zeilen({u"--key2"_s, u"2"_s}).size(), 3);
}

TEST_F(KvobildAendern, NothingToRemoveIsExitCode1) {
  EXPECT_EQ(entfernen({u"fremd.jpg"_s}).code, 1);
  EXPECT_EQ(entfernen({namen_[0], u"fremd.jpg"_s}).code, 1);
  EXPECT_EQ(folge(), u"bc"_s);
}

TEST_F(KvobildAendern, RemovingNeedsPicturesOrAll) {
  const QString vorher = stand();
  EXPECT_EQ(entfernen({}).code, 2);
  EXPECT_EQ(entfernen({u"--alle"_s, namen_[0]}).code, 2);
  EXPECT_EQ(entfernen({u"--key1"_s, u"A' or 'A'='A"_s, u"--alle"_s}).code, 2);
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAendern, WhereTheTableDoesNotTakeTheRemovalTheRowStays) {
  sql(u"CREATE TRIGGER fest BEFORE DELETE ON Bild_Zuordnungen BEGIN SELECT RAISE(ABORT, 'fest'); END"_s);
  EXPECT_EQ(entfernen({u"--alle"_s}).code, 3);
  EXPECT_EQ(folge(), u"abc"_s);
}
