// Rows of other programs whose folder leads out of the picture root: no command looks at what stands there, and none
// takes the rows for ones that are to go.
#include <QDir>
#include <QImage>
#include <QJsonArray>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// As a row names it, and what of it stands there.
const QString Hinaus = u"..\\draussen"_s;

class KvobildAusserhalb : public Betrieb {
 protected:
  void SetUp() override {
    ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
    QImage(20, 10, QImage::Format_RGB32).save(ordner_.pfad(u"b.png"_s));
    // Also where a path ends that can't lead above its drive.
    for (const QString& ort : {u"draussen/"_s, u"bild.ablage/draussen/"_s}) {
      ordner_.schreibe(ort + u"geheim.png"_s, ordner_.lies(u"b.png"_s));
      ordner_.schreibe(ort + u"geheimpng.txt"_s, "Vertraulich");
    }
    ordner_.schreibe(u"bild.ablage/Belege/1/geheim.png"_s, ordner_.lies(u"b.png"_s));
    fremde_Zeile(Hinaus);
  }
  void fremde_Zeile(const QString& ordner, const QString& name = u"geheim"_s) const {
    sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
        u"Druckkennzeichen, Grafik_Ursprung, SortIndex) Values ('AB','1','-','-','%1','png','BEL','-','%2','0001','-',9)"_s
            .arg(name, ordner));
  }
  /// All the ways in which a folder leads out; the last one has a name that does.
  void alle_Wege() const {
    fremde_Zeile(u"\\Belege\\1"_s);
    fremde_Zeile(u"/Belege/1"_s);
    fremde_Zeile(u"C:"_s + QString(ordner_.pfad(u"draussen"_s)).replace(u'/', u'\\'));
    fremde_Zeile(u"\\\\server\\freigabe"_s);
    fremde_Zeile(u"Belege\\..\\..\\draussen"_s);
    fremde_Zeile(u"Belege"_s, u"..\\..\\draussen\\geheim"_s);
  }
  Lauf mit_Bildern(const QString& befehl, const QStringList& argumente) const {
    return fuehre(befehl, QStringList{u"--bilder"_s, wurzel()} + argumente);
  }
};

}  // namespace

TEST_F(KvobildAusserhalb, ReadingShowsThemAsMissingWithoutTheirTexts) {
  alle_Wege();
  const Lauf lauf = mit_Bildern(u"lesen"_s, {u"--json"_s});
  ASSERT_EQ(lauf.objekte().size(), 8) << lauf.meldungen.toStdString();
  for (const QJsonObject& zeile : lauf.objekte()) {
    const bool eigenes = zeile[u"bildext"_s].toString() == "jpg"_L1;
    EXPECT_EQ(zeile[u"vorhanden"_s].toBool(), eigenes) << zeile[u"bildpfad"_s].toString().toStdString();
    EXPECT_TRUE(zeile[u"text"_s].isNull());
  }
  const Lauf gelesen = mit_Bildern(u"lesen"_s, {});
  EXPECT_EQ(gelesen.ausgabe.count(u"Die Bilddatei fehlt in der Ablage."_s), 7) << gelesen.ausgabe.toStdString();
  EXPECT_FALSE(gelesen.ausgabe.contains(u"Vertraulich"_s));
}

TEST_F(KvobildAusserhalb, HandingOutLeavesThemOutAndNamesThem) {
  alle_Wege();
  const Lauf lauf = mit_Bildern(u"ausgeben"_s, {u"--ziel"_s, ordner_.pfad(u"aus"_s), u"--mit-texten"_s, u"--json"_s});
  EXPECT_EQ(lauf.code, 1);
  ASSERT_EQ(lauf.objekte().size(), 1) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.objekte().first()[u"bilder"_s].toInt(), 1);
  const QJsonArray fehlend = lauf.objekte().first()[u"fehlend"_s].toArray();
  ASSERT_EQ(fehlend.size(), 7);
  for (const QJsonValue eines : fehlend)
    EXPECT_EQ(eines[u"grund"_s].toString(), u"Die Datei fehlt in der Bildablage."_s);
  EXPECT_EQ(QDir(ordner_.pfad(u"aus"_s)).entryList(QDir::Files).size(), 1);
}

TEST_F(KvobildAusserhalb, AReportShowsThemAsMissing) {
  alle_Wege();
  ASSERT_EQ(aendern({u"--drucken"_s, u"nein"_s, name_von(zeilen()[0])}).code, 0);
  const Lauf lauf = mit_Bildern(u"bericht"_s, {u"--ziel"_s, ordner_.pfad(u"b.pdf"_s), u"--json"_s});
  EXPECT_EQ(lauf.code, 1);
  ASSERT_EQ(lauf.objekte().size(), 1) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.objekte().first()[u"fehlend"_s].toArray().size(), 7);
  EXPECT_FALSE(ordner_.lies(u"b.pdf"_s).contains("/Subtype /Image"));
}

TEST_F(KvobildAusserhalb, NoCommandWritesOutOfTheRootOrTakesTheRowsAway) {
  alle_Wege();
  const QString vorher = stand();
  for (const QString& ordner : {Hinaus, u"../draussen"_s, u"Belege\\..\\..\\draussen"_s}) {
    const Lauf lauf =
        fuehre(u"umbenennen"_s, {u"--bilder"_s, wurzel(), u"--ordner"_s, ordner, u"geheim.png"_s, u"anders"_s});
    EXPECT_EQ(lauf.code, 2) << lauf.meldungen.toStdString();
    EXPECT_EQ(kvobild({u"aufraeumen"_s, u"--ja"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel(),
                          u"--ordner"_s, ordner})
                  .code,
        2);
    EXPECT_EQ(
        fuehre(u"zuordnen"_s, {u"--bilder"_s, wurzel(), u"--ordner"_s, ordner, ordner_.pfad(u"b.png"_s)}).code, 2);
  }
  EXPECT_EQ(stand(), vorher);
  ASSERT_EQ(zuordnen({ordner_.pfad(u"b.png"_s)}).code, 0);
  EXPECT_EQ(zeilen().size(), 9) << "a new picture leaves the others as they are";
  EXPECT_EQ(kvobild({u"aufraeumen"_s, u"--ja"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()}).code, 0);
  EXPECT_EQ(zeilen().size(), 9);
  EXPECT_TRUE(ordner_.vorhanden(u"draussen/geheim.png"_s) && ordner_.vorhanden(u"draussen/geheimpng.txt"_s));
}

TEST_F(KvobildAusserhalb, TheUserMayTakeTheRowAwayAndTheFileStays) {
  EXPECT_EQ(aendern({u"--beschreibung"_s, u"gehört hier nicht her"_s, u"geheim.png"_s}).code, 0);
  EXPECT_EQ(entfernen({u"geheim.png"_s}).code, 0);
  EXPECT_EQ(zeilen().size(), 1);
  EXPECT_TRUE(ordner_.vorhanden(u"draussen/geheim.png"_s));
}

TEST_F(KvobildAusserhalb, CheckingCountsThemAndThoseWithAnApostrophe) {
  alle_Wege();
  sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Beschreibung, "
      u"SortIndex) Values ('O''Neil','-','-','-','a','jpg','BEL','-','Belege\\1','',0), "
      u"('AB','2','-','-','b','jpg','BEL','-','Kunde ''A''','',0), ('AB','3','-','-','c','jpg','BEL','-','x','O''Neil',0)"_s);
  const Lauf lauf =
      kvobild({u"datenbank"_s, u"pruefen"_s, u"--json"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()});
  const QJsonObject draussen = befund(lauf, u"bild_ausserhalb"_s);
  EXPECT_EQ(draussen[u"anzahl"_s].toInt(), 7) << lauf.ausgabe.toStdString();
  EXPECT_EQ(draussen[u"zeilen"_s].toArray().size(), 7);
  EXPECT_EQ(draussen[u"text"_s].toString(),
      u"Zeilen, deren Ordner die Bildablage verlässt: 7. Ihre Bilder gelten als fehlend; dort wird nichts geöffnet."_s);
  EXPECT_EQ(befund(lauf, u"zeile_hochkomma"_s)[u"anzahl"_s].toInt(), 2) << "a description may hold one";
  EXPECT_EQ(befund(lauf, u"bild_fehlt"_s)[u"anzahl"_s].toInt(), 3) << "each row is told once";
  EXPECT_EQ(kennungen(kvobild({u"datenbank"_s, u"pruefen"_s, u"--json"_s, u"--verbindung"_s, datenbank()}))
                .filter(u"bild_"_s),
      QStringList(u"bild_ausserhalb"_s))
      << "without a root as well";
}
