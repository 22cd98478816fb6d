// Pictures of a record handed out by a script.
#include <QDir>
#include <QJsonArray>

#include "tests/host/bericht/ausgabe/Ortsbild.h"
#include "tests/host/kvobild/Kvobild.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildAusgeben : public Betrieb {
 protected:
  Lauf ausgeben(const QStringList& argumente) const {
    return fuehre(u"ausgeben"_s, QStringList{u"--bilder"_s, wurzel()} + argumente);
  }
  QString ziel(const QString& name) const { return ordner_.pfad(name); }
  QStringList inhalt(const QString& name) const {
    return QDir(ziel(name)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
};

}  // namespace

TEST_F(KvobildAusgeben, ThePicturesComeOutNumberedWithTheirTexts) {
  ASSERT_EQ(zuordnen({bild(u"Keller.jpg"_s, u"Heizöl"_s), bild(u"Bad.jpg"_s)}).code, 0);
  const Lauf lauf = ausgeben({u"--ziel"_s, ziel(u"für Müller"_s), u"--mit-texten"_s});
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.ausgabe, u"2 Bilder ausgegeben nach „%1“.\n"_s.arg(ziel(u"für Müller"_s)));
  const QStringList namen = inhalt(u"für Müller"_s);
  ASSERT_EQ(namen.size(), 3) << namen.join(u' ').toStdString();
  EXPECT_TRUE(namen[0].startsWith(u"01_Keller"_s) && namen[0].endsWith(u".jpg"_s));
  EXPECT_TRUE(namen[1].startsWith(u"01_Keller"_s) && namen[1].endsWith(u".txt"_s));
  EXPECT_TRUE(namen[2].startsWith(u"02_Bad"_s));
  EXPECT_EQ(ordner_.lies(u"für Müller/"_s + namen[0]), "Keller.jpg");
  EXPECT_EQ(QString::fromUtf8(ordner_.lies(u"für Müller/"_s + namen[1])), u"Heizöl\r\n"_s);
}

TEST_F(KvobildAusgeben, AZipComesOutAndJsonTellsWhatIsMissing) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s)}).code, 0);
  const QString weg = name_von(zeilen().first());
  ASSERT_TRUE(QFile::remove(wurzel() + u"/Belege/1/"_s + weg));
  const Lauf lauf = ausgeben({u"--ziel"_s, ziel(u"aus.zip"_s), u"--json"_s});
  EXPECT_EQ(lauf.code, 1);
  ASSERT_EQ(lauf.objekte().size(), 1);
  const QJsonObject objekt = lauf.objekte().first();
  EXPECT_EQ(objekt[u"ziel"_s].toString(), ziel(u"aus.zip"_s));
  EXPECT_EQ(objekt[u"bilder"_s].toInt(), 1);
  const QJsonArray fehlend = objekt[u"fehlend"_s].toArray();
  ASSERT_EQ(fehlend.size(), 1);
  EXPECT_EQ(fehlend[0][u"name"_s].toString(), u"Belege\\1\\"_s + weg);
  EXPECT_EQ(fehlend[0][u"grund"_s].toString(), u"Die Datei fehlt in der Bildablage."_s);
  EXPECT_EQ(lauf.meldungen,
      u"kvobild: „Belege\\1\\%1“ ist nicht ausgegeben: Die Datei fehlt in der Bildablage.\n"_s.arg(weg));
  EXPECT_TRUE(ordner_.lies(u"aus.zip"_s).startsWith("PK"));
}

TEST_F(KvobildAusgeben, OnlyMarkedOnesAndPlaceDataOnDemand) {
  const QByteArray foto = ortsbild::mit(
      handyfoto::jpeg(handyfoto::motiv({32, 24})), ortsbild::exif_Segment(ortsbild::tiff(ortsbild::Folge::Gross)));
  ASSERT_EQ(zuordnen({ordner_.schreibe(u"eingang.neu/a.jpg"_s, foto), u"--drucken"_s, u"nein"_s}).code, 0);
  ASSERT_EQ(zuordnen({ordner_.schreibe(u"eingang.neu/b.jpg"_s, foto), u"--wie-aufgenommen"_s}).code, 0);
  EXPECT_EQ(ausgeben({u"--ziel"_s, ziel(u"ohne"_s), u"--nur-gekennzeichnete"_s}).code, 0);
  ASSERT_EQ(inhalt(u"ohne"_s).size(), 1);
  EXPECT_TRUE(inhalt(u"ohne"_s).first().startsWith(u"01_b"_s));
  EXPECT_FALSE(ortsbild::nennt_Ort(ordner_.lies(u"ohne/"_s + inhalt(u"ohne"_s).first())));
  EXPECT_EQ(ausgeben({u"--ziel"_s, ziel(u"mit/"_s), u"--mit-ort"_s}).code, 0);
  ASSERT_EQ(inhalt(u"mit"_s).size(), 2);
  EXPECT_EQ(ordner_.lies(u"mit/"_s + inhalt(u"mit"_s).last()), foto);
}

TEST_F(KvobildAusgeben, WhatIsInTheWayIsNamedAndStays) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  ASSERT_EQ(ausgeben({u"--ziel"_s, ziel(u"aus"_s)}).code, 0);
  const QStringList vorher = inhalt(u"aus"_s);
  const Lauf lauf = ausgeben({u"--ziel"_s, ziel(u"aus"_s), u"--mit-texten"_s});
  EXPECT_EQ(lauf.code, 4);
  EXPECT_EQ(lauf.meldungen,
      u"kvobild: „%1“ gibt es im Ordner „%2“ schon; es ist nichts ausgegeben.\n"_s.arg(vorher.first(), ziel(u"aus"_s)));
  EXPECT_EQ(inhalt(u"aus"_s), vorher);
}

TEST_F(KvobildAusgeben, AWrongCallOrAnEmptyRecordIsTold) {
  EXPECT_EQ(ausgeben({u"--ziel"_s, ziel(u"aus"_s)}).code, 1);
  EXPECT_EQ(ausgeben({}).code, 2);
  EXPECT_EQ(kvobild({u"ausgeben"_s, u"--verbindung"_s, datenbank(), u"--ziel"_s, ziel(u"aus"_s)}).code, 2);
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s), u"--drucken"_s, u"nein"_s}).code, 0);
  const Lauf lauf = ausgeben({u"--ziel"_s, ziel(u"aus"_s), u"--nur-gekennzeichnete"_s});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_EQ(lauf.meldungen, u"kvobild: Kein Bild des Vorgangs ist zum Drucken gekennzeichnet.\n"_s);
  EXPECT_FALSE(ordner_.vorhanden(u"aus"_s));
}
