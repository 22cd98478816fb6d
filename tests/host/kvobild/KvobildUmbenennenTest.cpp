#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

/// A picture with a text file, assigned to two records.
class KvobildUmbenennen : public Betrieb {
 protected:
  KvobildUmbenennen() {
    const Lauf lauf = zuordnen({bild(u"a.jpg"_s, u"Text"_s)});
    EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
    name_ = lauf.zeilen().value(0);
    sql(u"INSERT INTO Bild_Zuordnungen SELECT Key1, '2', Key3, key4, Bildname, BildExt, 'ART', Typ2, BildPfad, "
        u"Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, SortIndex FROM Bild_Zuordnungen"_s);
  }
  QStringList namen() const {
    QStringList liste;
    for (const QJsonObject& zeile : zeilen({})) liste.append(name_von(zeile));
    return liste;
  }
  QString name_;
};

TEST_F(KvobildUmbenennen, FileTextFileAndAllAssignmentsGoAlong) {
  const Lauf lauf = umbenennen({name_, u"Übergabe 1"_s});
  ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen(), QStringList{u"Übergabe 1.jpg"_s});
  EXPECT_EQ(namen(), (QStringList{u"Übergabe 1.jpg"_s, u"Übergabe 1.jpg"_s}));
  EXPECT_EQ(dateien(), (QStringList{u"Übergabe 1.jpg"_s, u"Übergabe 1jpg.txt"_s}));
}

TEST_F(KvobildUmbenennen, TheNewNameMayBearTheExtension) {
  ASSERT_EQ(umbenennen({name_, u"neu.JPG"_s}).code, 0);
  EXPECT_EQ(dateien(), (QStringList{u"neu.jpg"_s, u"neujpg.txt"_s}));
}

TEST_F(KvobildUmbenennen, ChangingOnlyTheCaseIsNoCollision) {
  ASSERT_EQ(umbenennen({name_, u"neu"_s}).code, 0);
  const Lauf lauf = umbenennen({u"neu.jpg"_s, u"NEU"_s});
  ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(dateien(), (QStringList{u"NEU.jpg"_s, u"NEUjpg.txt"_s}));
  EXPECT_EQ(namen(), (QStringList{u"NEU.jpg"_s, u"NEU.jpg"_s}));
}

TEST_F(KvobildUmbenennen, WhereTheTableDoesNotTakeTheNameAllIsNamedAsBefore) {
  sql(u"CREATE TRIGGER fest BEFORE UPDATE ON Bild_Zuordnungen BEGIN SELECT RAISE(ABORT, 'fest'); END"_s);
  const QString vorher = stand();
  const Lauf lauf = umbenennen({name_, u"neu"_s});
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"nicht umbenannt"_s)) << lauf.meldungen.toStdString();
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildUmbenennen, WhereTheTextFileCannotBeRenamedAllIsNamedAsBefore) {
  // A folder of the text file's new name is no file in the way, and no file can take its name.
  ordner_.schreibe(u"bild.ablage/Belege/1/neujpg.txt/innen"_s, "x");
  const QString vorher = stand();
  const Lauf lauf = umbenennen({name_, u"neu"_s});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_TRUE(lauf.meldungen.contains(u"Textdatei"_s)) << lauf.meldungen.toStdString();
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildUmbenennen, ItRefusesWithAReasonAndWithoutConsequences) {
  ordner_.schreibe(u"bild.ablage/Belege/1/besetzt.jpg"_s, "x");
  ordner_.schreibe(u"bild.ablage/Belege/1/textjpg.txt"_s, "x");
  ordner_.schreibe(u"bild.ablage/Belege/1/frei.jpg"_s, "x");
  sql(u"INSERT INTO Bild_Zuordnungen (Key1, Bildname, BildExt, BildPfad) VALUES ('X', 'wartet', 'jpg', 'Belege\\1')"_s);
  sql(u"INSERT INTO Bild_Zuordnungen SELECT Key1, Key2, Key3, key4, 'zwilling', BildExt, Typ1, Typ2, 'Anderswo', "
      u"Beschreibung, Druckkennzeichen, Grafik_Ursprung, GrafikAnbNr, SortIndex FROM Bild_Zuordnungen "
      u"WHERE Key2 = '1'"_s);
  const QString vorher = stand();
  const auto erwarte = [&](const QStringList& argumente, int code, const QString& meldung) {
    const Lauf lauf = umbenennen(argumente);
    EXPECT_EQ(lauf.code, code) << argumente.join(u' ').toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(meldung)) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.ausgabe.isEmpty());
    EXPECT_EQ(stand(), vorher) << argumente.join(u' ').toStdString();
  };
  erwarte({name_, u"BESETZT"_s}, 4, u"gibt es schon"_s);
  erwarte({name_, u"text"_s}, 4, u"textjpg.txt"_s);
  erwarte({name_, u"wartet"_s}, 4, u"zeigen schon Zuordnungen"_s);
  erwarte({name_, u"zwilling"_s}, 4, u"anderen Ordner"_s);
  erwarte({u"fehlt.jpg"_s, u"neu"_s}, 4, u"gibt es nicht"_s);
  erwarte({u"frei.jpg"_s, u"neu"_s}, 1, u"keine Zuordnung"_s);
  erwarte({name_, u"o'neil"_s}, 2, u"Hochkomma"_s);
  erwarte({name_, u"a/b"_s}, 2, u"Dateiname"_s);
  erwarte({name_, u"a?b"_s}, 2, u"nicht erlaubt"_s);
  erwarte({name_, QString(51, u'n')}, 2, u"50 Zeichen"_s);
  erwarte({name_, u" "_s}, 2, u"leer"_s);
  erwarte({name_, name_}, 2, u"heißt schon"_s);
  erwarte({name_}, 2, u"NEUER_NAME"_s);
  erwarte({name_, u"neu"_s, u"noch"_s}, 2, u"zu viel"_s);
}
