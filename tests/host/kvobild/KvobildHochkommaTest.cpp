// The statements carry values as they are: one with an apostrophe must not get as far as the database, whether the call
// names it or a row of another program holds it.
#include <QFile>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A value that would make every condition true.
const QString Weit = u"x' or '1'='1"_s;

class KvobildHochkomma : public Betrieb {
 protected:
  KvobildHochkomma() {
    for (const QString& name : {u"a.jpg"_s, u"b.jpg"_s}) EXPECT_EQ(zuordnen({bild(name)}).code, 0);
    for (const QJsonObject& zeile : zeilen()) namen_.append(name_von(zeile));
    EXPECT_EQ(kvobild({u"zuordnen"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel(), u"--ordner"_s, u"Art"_s,
                          u"--typ1"_s, u"ART"_s, u"--key1"_s, u"TH-1"_s, bild(u"c.jpg"_s)})
                  .code,
        0);
  }
  /// A row as another program writes it: the record's values but for one column.
  void fremde_Zeile(const QString& spalte, const QString& wert, const QString& name = u"fremd"_s) const {
    sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
        u"Grafik_Ursprung, SortIndex) Values ('AB','1','-','-','%1','jpg','BEL','-','Belege\\1','-',9)"_s.arg(name));
    sql(u"update Bild_Zuordnungen set %1 = '%2' where Bildname = '%3'"_s.arg(
        spalte, QString(wert).replace(u'\'', u"''"_s), name));
  }
  /// The command must be refused because of an apostrophe and leave table and tree as they are.
  void erwarte_Ablehnung(const Lauf& lauf, const QString& vorher, const QString& wort) const {
    EXPECT_GT(lauf.code, 0);
    EXPECT_TRUE(lauf.meldungen.contains(u"Hochkomma"_s)) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(wort)) << lauf.meldungen.toStdString();
    EXPECT_FALSE(lauf.meldungen.contains(u"Die Anweisung ist fehlgeschlagen"_s)) << lauf.meldungen.toStdString();
    EXPECT_EQ(stand(), vorher);
  }
  QStringList namen_;
};

}  // namespace

TEST_F(KvobildHochkomma, AnyKeyOfTheRecordIsRefusedByEveryCommandBeforeTheDatabaseIsOpen) {
  const QString vorher = stand();
  const QString quelle = bild(u"neu.jpg"_s);
  const QMap<QString, QStringList> befehle{{u"lesen"_s, {}},
      {u"zuordnen"_s, {u"--bilder"_s, wurzel(), u"--ordner"_s, u"Belege/1"_s, quelle}},
      {u"aendern"_s, {u"--beschreibung"_s, u"neu"_s, namen_[0]}}, {u"entfernen"_s, {u"--alle"_s}}};
  const QString stand_mit_Quelle = stand();
  for (auto befehl = befehle.begin(); befehl != befehle.end(); ++befehl)
    for (const QString& angabe : {u"key1"_s, u"key2"_s, u"key3"_s, u"key4"_s, u"typ1"_s, u"typ2"_s})
      for (const QString& wert : {Weit, u"'"_s}) {
        SCOPED_TRACE((befehl.key() + u' ' + angabe + u' ' + wert).toStdString());
        const QStringList argumente = QStringList{u"--"_s + angabe, wert} + befehl.value();
        erwarte_Ablehnung(fuehre(befehl.key(), argumente), stand_mit_Quelle, u"--"_s + angabe);
        const Lauf ohne_Datenbank =
            fuehre(befehl.key(), QStringList{u"--verbindung"_s, u"/gibt/es/nicht.db"_s} + argumente);
        EXPECT_EQ(ohne_Datenbank.code, 2) << "refused before the database is looked for";
      }
  EXPECT_NE(vorher, stand_mit_Quelle) << "what is compared holds the files that wait";
}

TEST_F(KvobildHochkomma, NamesAndFoldersAreRefusedWhenRenamingAndClearing) {
  const QString vorher = stand();
  for (const QString& name : {Weit, u"o'neil"_s}) {
    erwarte_Ablehnung(umbenennen({namen_[0], name}), vorher, u"Dateiname"_s);
    erwarte_Ablehnung(umbenennen({name + u".jpg"_s, u"neu"_s}), vorher, u"Dateiname"_s);
    erwarte_Ablehnung(umbenennen({u"a.j'g"_s, u"neu"_s}), vorher, u"Dateiname"_s);
    erwarte_Ablehnung(umbenennen({u"--ordner"_s, name, namen_[0], u"neu"_s}), vorher, u"Der Ordner"_s);
    erwarte_Ablehnung(kvobild({u"aufraeumen"_s, u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(),
                          u"--bilder"_s, wurzel(), u"--ordner"_s, name}),
        vorher, u"Der Ordner"_s);
  }
}

TEST_F(KvobildHochkomma, AForeignRowOfTheRecordTakesNoOtherAlongWhenRemoved) {
  for (const QString& spalte : {u"Bildname"_s, u"BildExt"_s}) {
    fremde_Zeile(spalte, Weit);
    const QString vorher = stand();
    erwarte_Ablehnung(entfernen({u"--alle"_s}), vorher, spalte);
    sql(u"delete from Bild_Zuordnungen where SortIndex = 9"_s);
  }
  fremde_Zeile(u"Bildname"_s, Weit);
  const QString vorher = stand();
  erwarte_Ablehnung(entfernen({Weit + u".jpg"_s}), vorher, u"Bildname"_s);
  EXPECT_EQ(entfernen({namen_[0]}).code, 0) << "the others can go";
  EXPECT_EQ(zeilen().size(), 2);
}

TEST_F(KvobildHochkomma, WhatDoesNotGetIntoTheStatementDoesNotHinderRemoving) {
  fremde_Zeile(u"BildPfad"_s, u"O'Neil"_s);
  EXPECT_EQ(entfernen({u"fremd.jpg"_s}).code, 0);
  EXPECT_EQ(zeilen().size(), 2);
}

TEST_F(KvobildHochkomma, AForeignRowIsNotWrittenWhenChanging) {
  for (const QString& spalte : {u"Bildname"_s, u"BildExt"_s, u"BildPfad"_s, u"Grafik_Ursprung"_s, u"GrafikAnbNr"_s}) {
    SCOPED_TRACE(spalte.toStdString());
    fremde_Zeile(spalte, Weit);
    ASSERT_EQ(zeilen().size(), 3);
    const QJsonObject zeile = zeilen().last();
    const QString vorher = stand();
    erwarte_Ablehnung(aendern({u"--beschreibung"_s, u"neu"_s, name_von(zeile)}), vorher, spalte);
    // Moved up, another picture makes it change its place.
    erwarte_Ablehnung(aendern({u"--sortierung"_s, u"2"_s, namen_[0]}), vorher, spalte);
    EXPECT_EQ(aendern({u"--beschreibung"_s, u"nur diese"_s, namen_[1]}).code, 0);
    ASSERT_EQ(zeilen().size(), 3);
    EXPECT_EQ(zeilen()[1][u"beschreibung"_s].toString(), u"nur diese"_s);
    EXPECT_EQ(zeilen()[0][u"beschreibung"_s].toString(), QString());
    EXPECT_EQ(aendern({u"--beschreibung"_s, QString(), namen_[1]}).code, 0);
    sql(u"delete from Bild_Zuordnungen where SortIndex = 9"_s);
  }
}

TEST_F(KvobildHochkomma, APictureThatBelongsToSuchARecordTooIsNotRenamed) {
  for (const QString& spalte : {u"Key1"_s, u"Key2"_s, u"Key3"_s, u"key4"_s, u"Typ1"_s, u"Typ2"_s}) {
    SCOPED_TRACE(spalte.toStdString());
    const QString name = QString(namen_[0]).chopped(4);
    fremde_Zeile(spalte, Weit, u"fremd"_s);
    sql(u"update Bild_Zuordnungen set Bildname = '%1' where Bildname = 'fremd'"_s.arg(name));
    const QString vorher = stand();
    erwarte_Ablehnung(umbenennen({namen_[0], u"neu"_s}), vorher, spalte == "key4"_L1 ? u"Key4"_s : spalte);
    sql(u"delete from Bild_Zuordnungen where SortIndex = 9"_s);
  }
  EXPECT_EQ(umbenennen({namen_[0], u"neu"_s}).code, 0);
}

TEST_F(KvobildHochkomma, PicturesWithAnApostropheKeepItFromClearingAndAreNamed) {
  const auto aufraeumen = [&](const QStringList& mehr) {
    return kvobild(QStringList{u"aufraeumen"_s, u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(),
                       u"--bilder"_s, wurzel()} +
        mehr);
  };
  for (const QString& datei :
      {u"Belege/1/o'neil.jpg"_s, u"Belege/1/x.j'g"_s, u"Belege/O'Neil/x.jpg"_s, u"Belege/O'Neil/tief/x.jpg"_s,
          u"oben'.jpg"_s, u"Belege/1/x'; Delete from Bild_Zuordnungen --.jpg"_s, u"Belege/1/%1.jpg"_s.arg(Weit)}) {
    SCOPED_TRACE(datei.toStdString());
    ordner_.schreibe(u"bild.ablage/"_s + datei, "x");
    ordner_.schreibe(u"bild.ablage/Belege/2/frei.jpg"_s, "x");
    const QString vorher = stand();
    const Lauf lauf = aufraeumen({});
    erwarte_Ablehnung(lauf, vorher, QString(datei).replace(u'/', u'\\'));
    EXPECT_EQ(lauf.code, 4);
    EXPECT_TRUE(lauf.ausgabe.isEmpty());
    EXPECT_EQ(aufraeumen({u"--ordner"_s, u"Belege/2"_s}).code, 0) << "a folder without such names can be cleared";
    ASSERT_TRUE(QFile::remove(wurzel() + u'/' + datei));
  }
}

TEST_F(KvobildHochkomma, WhatIsNotAskedForDoesNotHinderClearing) {
  for (const QString& datei : {u"ohne'Punkt"_s, u"not'iz.txt"_s, u"a.jpg.o'neil"_s})
    ordner_.schreibe(u"bild.ablage/Belege/1/"_s + datei, "x");
  ordner_.schreibe(u"bild.ablage/Belege/O'Neil/ohne_Punkt"_s, "x");
  const Lauf lauf = kvobild(
      {u"aufraeumen"_s, u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.zeilen(), (QStringList{u"Belege\\1\\a.jpg.o'neil"_s, u"Belege\\1\\not'iz.txt"_s}));
}
