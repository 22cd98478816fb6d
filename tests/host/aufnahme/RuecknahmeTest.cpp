// Taking back what was taken in: this and nothing else.
#include "host/betrieb/aufnahme/Ruecknahme.h"
#include "tests/host/aufnahme/Aufnahmetest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Zuruecknehmen : public Aufnahmetest {
 protected:
  ruecknahme::Ergebnis nimm_zurueck(const Aufnahmeergebnis& ergebnis) {
    return ruecknahme::nimm_zurueck(*platz_, vorgang(), ergebnis);
  }
  /// Two pictures, the first with a text file and turned.
  Aufnahmeergebnis zwei() {
    eingang(u"ajpg.txt"_s, "Text");
    return nimm_auf({eingang(u"a.jpg"_s, handyfoto::foto({64, 48}, 6)), eingang(u"b.jpg"_s, bild(2))});
  }
};

}  // namespace

TEST_F(Zuruecknehmen, RowsAndCopiesAreGoneAndTheFolderThatWasMadeToo) {
  const Aufnahmeergebnis neu = zwei();
  ASSERT_EQ(dateien().size(), 3);
  const ruecknahme::Ergebnis ergebnis = nimm_zurueck(neu);
  EXPECT_EQ(ergebnis.text(), u"Rückgängig gemacht: 2 Bilder sind nicht mehr zugeordnet."_s);
  EXPECT_TRUE(zeilen().isEmpty());
  EXPECT_FALSE(hat_Ordner());
  EXPECT_TRUE(eingang_.vorhanden(u"a.jpg"_s));
}

TEST_F(Zuruecknehmen, WhatWasThereBeforeStays) {
  ASSERT_EQ(nimm_auf({eingang(u"vorher.jpg"_s, bild(1))}).bilder.size(), 1U);
  const QStringList vorher = dateien();
  EXPECT_EQ(nimm_zurueck(zwei()).entfernte, 2);
  EXPECT_EQ(dateien(), vorher);
  EXPECT_EQ(zeilen(), vorher);
}

TEST_F(Zuruecknehmen, ACopyThatAnotherRowNamesStays) {
  const Aufnahmeergebnis neu = zwei();
  sql(u"INSERT INTO Bild_Zuordnungen SELECT 'RE', Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
      u"Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, SortIndex FROM Bild_Zuordnungen WHERE Key1 = "
      u"'XY' AND Bildname LIKE 'b%'"_s);
  const ruecknahme::Ergebnis ergebnis = nimm_zurueck(neu);
  EXPECT_EQ(ergebnis.entfernte, 2);
  EXPECT_EQ(ergebnis.geblieben.size(), 1);
  EXPECT_TRUE(ergebnis.text().contains(u"Das Bild ist noch anderswo zugeordnet."_s)) << ergebnis.text().toStdString();
  EXPECT_EQ(dateien(), zeilen(u"RE"_s));
  EXPECT_EQ(dateien().size(), 1);
}

TEST_F(Zuruecknehmen, ACopyThatSomebodyHasChangedStays) {
  const Aufnahmeergebnis neu = zwei();
  ablage_.schreibe(u"Belege/1/"_s + neu.bilder[1].bild.datei(), "geändert");
  ablage_.schreibe(u"Belege/1/"_s + neu.bilder[0].bild.textdatei(), "anderer Text");
  const ruecknahme::Ergebnis ergebnis = nimm_zurueck(neu);
  EXPECT_EQ(ergebnis.entfernte, 2);
  ASSERT_EQ(ergebnis.geblieben.size(), 2);
  EXPECT_TRUE(ergebnis.geblieben[1].contains(u"Sie ist seither geändert."_s));
  EXPECT_EQ(dateien(), (QStringList{neu.bilder[0].bild.textdatei(), neu.bilder[1].bild.datei()}));
}

TEST_F(Zuruecknehmen, RowsThatAreGoneAlreadyAreNotMissed) {
  const Aufnahmeergebnis neu = zwei();
  sql(u"DELETE FROM Bild_Zuordnungen WHERE Key1 = 'XY'"_s);
  const ruecknahme::Ergebnis ergebnis = nimm_zurueck(neu);
  EXPECT_EQ(ergebnis.entfernte, 0);
  EXPECT_TRUE(ergebnis.geblieben.isEmpty());
  EXPECT_FALSE(hat_Ordner());
}

TEST_F(Zuruecknehmen, WhereTheTableRefusesTheRowsAndTheirCopiesStay) {
  const Aufnahmeergebnis neu = zwei();
  sql(u"CREATE TRIGGER fest BEFORE DELETE ON Bild_Zuordnungen WHEN OLD.Bildname LIKE 'a%' "
      u"BEGIN SELECT RAISE(ABORT, 'fest'); END"_s);
  const ruecknahme::Ergebnis ergebnis = nimm_zurueck(neu);
  sql(u"DROP TRIGGER fest"_s);
  berichte_.hole();
  EXPECT_EQ(ergebnis.entfernte, 1);
  EXPECT_EQ(zeilen(), QStringList{neu.bilder[0].bild.datei()});
  EXPECT_EQ(dateien(), (QStringList{neu.bilder[0].bild.datei(), neu.bilder[0].bild.textdatei()}));
}

TEST_F(Zuruecknehmen, WithoutTheTableNothingIsDeleted) {
  const Aufnahmeergebnis neu = zwei();
  nimm_Tabelle_weg();
  const ruecknahme::Ergebnis ergebnis = nimm_zurueck(neu);
  gib_Tabelle_zurueck();
  EXPECT_EQ(ergebnis.entfernte, 0);
  EXPECT_FALSE(ergebnis.geblieben.isEmpty());
  EXPECT_EQ(dateien().size(), 3);
}
