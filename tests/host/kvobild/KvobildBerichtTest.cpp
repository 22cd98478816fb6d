#include <QFile>
#include <QImage>
#include <QJsonArray>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildBericht : public Betrieb {
 protected:
  /// Three pictures of the record; the second is not to be printed.
  void SetUp() override {
    for (const QString& name : {u"kessel.png"_s, u"bad.png"_s, u"dach.png"_s}) {
      QImage bild(60, 40, QImage::Format_RGB32);
      bild.fill(Qt::red);
      ASSERT_TRUE(bild.save(ordner_.pfad(name)));
      ASSERT_EQ(zuordnen({ordner_.pfad(name)}).code, 0);
    }
    ASSERT_EQ(aendern({u"--drucken"_s, u"nein"_s, name_von(zeilen()[1])}).code, 0);
  }
  Lauf bericht(const QStringList& argumente = {}) const {
    return fuehre(u"bericht"_s, QStringList{u"--bilder"_s, wurzel(), u"--ziel"_s, ziel_} + argumente);
  }
  /// What the command tells with --json; empty, with a failed test, when it tells nothing.
  QJsonObject ergebnis(const QStringList& argumente = {}) const {
    const Lauf lauf = bericht(argumente + QStringList{u"--json"_s});
    EXPECT_EQ(lauf.objekte().size(), 1) << lauf.meldungen.toStdString();
    return lauf.objekte().value(0);
  }
  QString seiten() const {
    return QString::fromLatin1(ordner_.lies(u"bericht.pdf"_s)).contains(u"/Count 2") ? u"2"_s : u"1"_s;
  }

  const QString ziel_ = ordner_.pfad(u"bericht.pdf"_s);
};

TEST_F(KvobildBericht, WritesTheMarkedPicturesAndTellsWhat) {
  const QJsonObject objekt = ergebnis();
  EXPECT_EQ(objekt[u"seiten"_s].toInt(), 1);
  EXPECT_EQ(objekt[u"bilder"_s].toInt(), 2);
  EXPECT_TRUE(objekt[u"fehlend"_s].toArray().isEmpty());
  EXPECT_TRUE(ordner_.lies(u"bericht.pdf"_s).startsWith("%PDF-1.4"));
}

TEST_F(KvobildBericht, AllPicturesAndTheirNumberOnAPageAreAChoice) {
  EXPECT_EQ(ergebnis({u"--alle"_s})[u"bilder"_s].toInt(), 3);
  EXPECT_EQ(seiten(), u"2"_s);
  EXPECT_EQ(ergebnis({u"--alle"_s, u"--je-seite"_s, u"4"_s})[u"seiten"_s].toInt(), 1);
  EXPECT_EQ(ergebnis({u"--je-seite"_s, u"1"_s})[u"seiten"_s].toInt(), 2);
}

TEST_F(KvobildBericht, AMissingPictureIsNamedAndEndsWithOne) {
  ASSERT_TRUE(QFile::remove(
      wurzel() + u'/' + zeilen()[0][u"bildpfad"_s].toString().replace(u'\\', u'/') + u'/' + name_von(zeilen()[0])));
  const Lauf lauf = bericht({u"--json"_s});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(u"Die Datei fehlt.")) << lauf.meldungen.toStdString();
  EXPECT_EQ(lauf.objekte().value(0)[u"fehlend"_s].toArray().size(), 1);
  EXPECT_TRUE(ordner_.vorhanden(u"bericht.pdf"_s));
}

TEST_F(KvobildBericht, WithoutAMarkedPictureThereIsNoReport) {
  for (const QJsonObject& zeile : zeilen()) ASSERT_EQ(aendern({u"--drucken"_s, u"nein"_s, name_von(zeile)}).code, 0);
  const Lauf lauf = bericht();
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(u"ist kein Bild zum Drucken gekennzeichnet")) << lauf.meldungen.toStdString();
  EXPECT_FALSE(ordner_.vorhanden(u"bericht.pdf"_s));
}

TEST_F(KvobildBericht, TheHeadComesFromAFileOfItsOwn) {
  QImage zeichen(30, 30, QImage::Format_ARGB32);
  zeichen.fill(Qt::transparent);
  ASSERT_TRUE(zeichen.save(ordner_.pfad(u"zeichen.png"_s)));
  const QString kopf = ordner_.schreibe(u"kopf.ini"_s, "Zeile1=Müller, Söhne\nZeile2=Weg 1\nZeichen=zeichen.png\n"_ba);
  EXPECT_EQ(bericht({u"--kopf"_s, kopf}).code, 0);
  EXPECT_TRUE(ordner_.lies(u"bericht.pdf"_s).contains("<rdf:li>M\xc3\xbcller, S\xc3\xb6hne</rdf:li>"));
  const Lauf ohne = bericht({u"--kopf"_s, ordner_.pfad(u"fehlt.ini"_s)});
  EXPECT_EQ(ohne.code, 4);
  EXPECT_TRUE(ohne.meldungen.contains(u"ist nicht zu lesen")) << ohne.meldungen.toStdString();
  const QString falsch = ordner_.schreibe(u"falsch.ini"_s, "Zeichen=gibt es nicht.png\n");
  EXPECT_EQ(bericht({u"--kopf"_s, falsch}).code, 4);
}

TEST_F(KvobildBericht, WrongCallsEndBeforeAnythingIsWritten) {
  for (const QStringList& falsch : {QStringList{u"--je-seite"_s, u"3"_s}, QStringList{u"--dpi"_s, u"72"_s}}) {
    const Lauf lauf = bericht(falsch);
    EXPECT_EQ(lauf.code, 2) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(falsch.first()));
  }
  EXPECT_EQ(fuehre(u"bericht"_s, {}).code, 2);
  EXPECT_EQ(fuehre(u"bericht"_s, {u"--bilder"_s, wurzel(), u"--ziel"_s, ordner_.pfad(u"foto.jpg"_s)}).code, 2);
  EXPECT_FALSE(ordner_.vorhanden(u"bericht.pdf"_s));
}

TEST_F(KvobildBericht, ARecordWithoutRowsHasNoReport) {
  satz_[3] = u"ZZ"_s;
  const Lauf lauf = bericht();
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(u"Keine Zuordnung gefunden.")) << lauf.meldungen.toStdString();
}

}  // namespace
