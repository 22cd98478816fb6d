#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildZuordnen : public Betrieb {};

TEST_F(KvobildZuordnen, TheWholeWayOfAPicture) {
  const QString quelle = bild(u"Kessel.jpg"_s, u"Baujahr 1987"_s);
  const Lauf neu = zuordnen({u"--beschreibung"_s, u"vorher"_s, quelle});
  ASSERT_EQ(neu.code, 0) << neu.meldungen.toStdString();
  ASSERT_EQ(neu.zeilen().size(), 1);
  const QString name = neu.zeilen().first();
  EXPECT_TRUE(QRegularExpression(u"^Kessel\\d{8}_\\d{6}\\.jpg$"_s).match(name).hasMatch()) << name.toStdString();

  QList<QJsonObject> zeile = zeilen();
  ASSERT_EQ(zeile.size(), 1);
  EXPECT_EQ(name_von(zeile[0]), name);
  EXPECT_EQ(zeile[0][u"bildpfad"_s].toString(), u"Belege\\1"_s);
  EXPECT_EQ(zeile[0][u"key3"_s].toString(), u"-"_s);
  EXPECT_EQ(zeile[0][u"beschreibung"_s].toString(), u"vorher"_s);
  EXPECT_TRUE(zeile[0][u"drucken"_s].toBool());
  EXPECT_TRUE(zeile[0][u"vorhanden"_s].toBool());
  EXPECT_EQ(zeile[0][u"text"_s].toString(), u"Baujahr 1987"_s);

  ASSERT_EQ(aendern({u"--beschreibung"_s, u"nachher"_s, u"--anhang"_s, u"ja"_s, name}).code, 0);
  ASSERT_EQ(umbenennen({name, u"Heizraum"_s}).code, 0);
  zeile = zeilen();
  ASSERT_EQ(zeile.size(), 1);
  EXPECT_EQ(name_von(zeile[0]), u"Heizraum.jpg"_s);
  EXPECT_EQ(zeile[0][u"beschreibung"_s].toString(), u"nachher"_s);
  EXPECT_TRUE(zeile[0][u"anhang"_s].toBool());
  EXPECT_EQ(dateien(), (QStringList{u"Heizraum.jpg"_s, u"Heizraumjpg.txt"_s}));

  ASSERT_EQ(entfernen({u"Heizraum.jpg"_s}).code, 0);
  EXPECT_TRUE(zeilen().isEmpty());
  EXPECT_EQ(dateien().size(), 2) << "the files belong to the tree, not to the assignment";
  EXPECT_TRUE(QFile::exists(quelle));
}

TEST_F(KvobildZuordnen, PictureAndTextAreCopiedByteByByte) {
  const QByteArray text(
      "Gr\xF6\xDF"
      "e \x80 \x81\r\n  ",
      13);
  const QString quelle = bild(u"a.jpg"_s);
  ordner_.schreibe(u"eingang.neu/ajpg.txt"_s, text);
  ASSERT_EQ(zuordnen({quelle}).code, 0);
  ASSERT_EQ(dateien().size(), 2);
  EXPECT_EQ(ordner_.lies(u"bild.ablage/Belege/1/"_s + dateien()[0]), "a.jpg");
  EXPECT_EQ(ordner_.lies(u"bild.ablage/Belege/1/"_s + dateien()[1]), text);
}

TEST_F(KvobildZuordnen, WithoutATextFileNoneComesIntoBeing) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  EXPECT_EQ(dateien().size(), 1);
  EXPECT_TRUE(zeilen()[0][u"text"_s].isNull());
}

TEST_F(KvobildZuordnen, TwoPicturesOfOneNameInOneCallStayTwo) {
  bild(u"eins/foto.jpg"_s);
  bild(u"zwei/foto.JPG"_s);
  const Lauf lauf =
      zuordnen({ordner_.pfad(u"eingang.neu/eins/foto.jpg"_s), ordner_.pfad(u"eingang.neu/zwei/foto.JPG"_s)});
  ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  ASSERT_EQ(dateien().size(), 2);
  ASSERT_EQ(zeilen().size(), 2);
  EXPECT_EQ(ordner_.lies(u"bild.ablage/Belege/1/"_s + lauf.zeilen()[0]), "eins/foto.jpg");
  EXPECT_EQ(ordner_.lies(u"bild.ablage/Belege/1/"_s + lauf.zeilen()[1]), "zwei/foto.JPG");
}

TEST_F(KvobildZuordnen, NewPicturesStandBehindTheOldOnesAndDoNotChangeThem) {
  ASSERT_EQ(zuordnen({u"--beschreibung"_s, u"Bob's"_s, bild(u"a.jpg"_s), bild(u"b.jpg"_s)}).code, 0);
  const QList<QJsonObject> vorher = zeilen();
  ASSERT_EQ(zuordnen({bild(u"c.jpg"_s)}).code, 0);
  const QList<QJsonObject> nachher = zeilen();
  ASSERT_EQ(nachher.size(), 3);
  EXPECT_EQ(nachher.first(2), vorher);
  EXPECT_TRUE(name_von(nachher[2]).startsWith(u'c'));
  EXPECT_EQ(nachher[2][u"sortindex"_s].toInt(), 2);
}

TEST_F(KvobildZuordnen, ALongNameIsShortenedAndFileAndRowAgree) {
  const QString lang = QString(60, u'x');
  const Lauf lauf = zuordnen({bild(lang + u".jpg"_s, u"Text"_s)});
  ASSERT_EQ(lauf.code, 0);
  EXPECT_TRUE(lauf.meldungen.contains(u"gekürzt"_s));
  const QList<QJsonObject> zeile = zeilen();
  ASSERT_EQ(zeile.size(), 1);
  EXPECT_EQ(zeile[0][u"bildname"_s].toString().size(), 50);
  EXPECT_TRUE(zeile[0][u"vorhanden"_s].toBool());
  EXPECT_EQ(zeile[0][u"text"_s].toString(), u"Text"_s);
}

TEST_F(KvobildZuordnen, NamesMayHoldUmlautsDotsAndBlanks) {
  for (const QString& name : {u"Übergabe ß.jpg"_s, u"plan.v2.JPG"_s, u" vorn.jpeg"_s}) {
    const Lauf lauf = zuordnen({bild(name, u"Text"_s)});
    EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  }
  const QList<QJsonObject> alle = zeilen();
  ASSERT_EQ(alle.size(), 3);
  for (const QJsonObject& zeile : alle) {
    EXPECT_TRUE(zeile[u"vorhanden"_s].toBool()) << name_von(zeile).toStdString();
    EXPECT_EQ(zeile[u"text"_s].toString(), u"Text"_s) << name_von(zeile).toStdString();
  }
  EXPECT_TRUE(name_von(alle[1]).startsWith(u"plan.v2"_s));
}

TEST_F(KvobildZuordnen, ARecordWithoutAKeyIsAnotherThanWithIt) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  satz_ += {u"--key3"_s, u"7"_s};
  ASSERT_EQ(zuordnen({bild(u"b.jpg"_s)}).code, 0);
  EXPECT_EQ(zeilen().size(), 1);
  EXPECT_EQ(zeilen({u"--key1"_s, u"AB"_s}).size(), 2);
  EXPECT_EQ(zeilen({u"--key1"_s, u"AB"_s, u"--key3"_s, QString()}).size(), 1);
}

TEST_F(KvobildZuordnen, WhereTheTableTakesNothingNoCopyStays) {
  sql(u"CREATE TRIGGER voll BEFORE INSERT ON Bild_Zuordnungen BEGIN SELECT RAISE(ABORT, 'voll'); END"_s);
  const QString quelle = bild(u"a.jpg"_s, u"Text"_s);
  ASSERT_TRUE(QFile::setPermissions(quelle, QFile::ReadOwner));
  const QString vorher = stand();
  const Lauf lauf = zuordnen({quelle});
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.ausgabe.isEmpty());
  EXPECT_TRUE(lauf.meldungen.contains(u"voll"_s)) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.meldungen.contains(u"wieder entfernt"_s)) << lauf.meldungen.toStdString();
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildZuordnen, WhereTheTableTakesAPartTheFilesOfThatPartStay) {
  sql(u"CREATE TRIGGER halb BEFORE INSERT ON Bild_Zuordnungen WHEN NEW.Bildname LIKE 'b%' "
      u"BEGIN SELECT RAISE(ABORT, 'kein b'); END"_s);
  const Lauf lauf = zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s, u"Text"_s), bild(u"c.jpg"_s)});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(lauf.zeilen().size(), 2);
  EXPECT_EQ(dateien(), lauf.zeilen());
  EXPECT_EQ(zeilen().size(), 2);
}

TEST_F(KvobildZuordnen, ASourceThatIsMissingStopsAll) {
  const QString da = bild(u"a.jpg"_s);
  const QString vorher = stand();
  const Lauf lauf = zuordnen({da, ordner_.pfad(u"eingang.neu/nicht_da.jpg"_s)});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_TRUE(lauf.meldungen.contains(u"nicht_da.jpg"_s));
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildZuordnen, ASourceInTheRecordsFolderIsCopiedAndStays) {
  ordner_.schreibe(u"bild.ablage/Belege/1/schon.jpg"_s, "da");
  ASSERT_EQ(zuordnen({wurzel() + u"/Belege/1/schon.jpg"_s}).code, 0);
  EXPECT_EQ(dateien().size(), 2);
  EXPECT_TRUE(zeilen()[0][u"vorhanden"_s].toBool());
}

namespace {

struct Ablehnung {
  const char* name;
  QStringList argumente;
  int code;
  QString meldung;
};

void PrintTo(const Ablehnung& fall, std::ostream* os) {
  *os << fall.name;
}

}  // namespace

class KvobildZuordnenAblehnung : public Betrieb, public ::testing::WithParamInterface<Ablehnung> {};

TEST_P(KvobildZuordnenAblehnung, SaysTheReasonAndLeavesEverythingAsItWas) {
  bild(u"gut.jpg"_s);
  bild(u"o'neil.jpg"_s);
  bild(u"ohne_endung"_s);
  bild(u"notiz.txt"_s);
  bild(u"ordner.jpg/innen.jpg"_s);
  bild(u"a:b.jpg"_s);
  ordner_.schreibe(u"bild.ablage/Datei"_s, "im Weg");
  const QString vorher = stand();
  QStringList argumente = GetParam().argumente;
  argumente.replaceInStrings(u"@"_s, ordner_.pfad(u"eingang.neu"_s));
  const Lauf lauf = zuordnen(argumente);
  EXPECT_EQ(lauf.code, GetParam().code) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.meldungen.contains(GetParam().meldung)) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.ausgabe.isEmpty());
  EXPECT_EQ(stand(), vorher);
}

INSTANTIATE_TEST_SUITE_P(Alle, KvobildZuordnenAblehnung,
    ::testing::Values(
        Ablehnung{"Hochkomma_im_Schluessel", {u"--key1"_s, u"A' or '1'='1"_s, u"@/gut.jpg"_s}, 2, u"Hochkomma"_s},
        Ablehnung{"Hochkomma_im_Typ", {u"--typ2"_s, u"'"_s, u"@/gut.jpg"_s}, 2, u"--typ2"_s},
        Ablehnung{"Hochkomma_im_Namen", {u"@/o'neil.jpg"_s}, 2, u"Hochkomma"_s},
        Ablehnung{"Hochkomma_im_Ordner", {u"--ordner"_s, u"Bel'ege"_s, u"@/gut.jpg"_s}, 2, u"Hochkomma"_s},
        Ablehnung{"Doppelpunkt_im_Namen", {u"@/a:b.jpg"_s}, 2, u"nicht erlaubt"_s},
        Ablehnung{"Langer_Schluessel", {u"--key2"_s, QString(51, u'1'), u"@/gut.jpg"_s}, 2, u"50 Zeichen"_s},
        Ablehnung{"Ohne_Endung", {u"@/ohne_endung"_s}, 2, u"Endung"_s},
        Ablehnung{"Textdatei", {u"@/notiz.txt"_s}, 2, u"kein Bild"_s},
        Ablehnung{"Ordner_als_Quelle", {u"@/ordner.jpg"_s}, 4, u"ist ein Ordner"_s},
        Ablehnung{"Ordner_nach_oben", {u"--ordner"_s, u"../anderswo"_s, u"@/gut.jpg"_s}, 2, u"Punkt"_s},
        Ablehnung{"Ordner_leer", {u"--ordner"_s, u"\\"_s, u"@/gut.jpg"_s}, 2, u"keinen Ordner"_s},
        Ablehnung{"Datei_im_Weg", {u"--ordner"_s, u"Datei/Unter"_s, u"@/gut.jpg"_s}, 4, u"nicht anzulegen"_s},
        Ablehnung{"Lange_Beschreibung", {u"--beschreibung"_s, QString(251, u'b'), u"@/gut.jpg"_s}, 2, u"250"_s},
        Ablehnung{"Beschreibung_mit_Hochkommas", {u"--beschreibung"_s, QString(247, u'b') + u"''"_s, u"@/gut.jpg"_s}, 2,
            u"doppelt"_s},
        Ablehnung{"Weder_ja_noch_nein", {u"--anhang"_s, u"vielleicht"_s, u"@/gut.jpg"_s}, 2, u"--anhang"_s},
        Ablehnung{"Ablage_fehlt", {u"--bilder"_s, u"@/fehlt"_s, u"@/gut.jpg"_s}, 4, u"Bildablage"_s},
        Ablehnung{"Datenbank_fehlt", {u"--verbindung"_s, u"@/fehlt.db"_s, u"@/gut.jpg"_s}, 3, u"anlegen"_s}),
    [](const auto& fall) { return fall.param.name; });

TEST_F(KvobildZuordnen, ADescriptionOf250CharactersStaysWhole) {
  const QString text = QString(248, u'b') + u'\'';
  ASSERT_EQ(zuordnen({u"--beschreibung"_s, text, bild(u"a.jpg"_s)}).code, 0);
  EXPECT_EQ(zeilen()[0][u"beschreibung"_s].toString(), text);
}

TEST_F(KvobildZuordnen, ThePictureRootMayBeNamedWithADriveLetter) {
  const Lauf lauf = zuordnen({u"--bilder"_s, u"C:"_s + QString(wurzel()).replace(u'/', u'\\'), bild(u"a.jpg"_s)});
  ASSERT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(dateien().size(), 1);
}
