// What a clearing puts away, and how it comes back or goes for good.
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildPapierkorb : public Betrieb {
 protected:
  KvobildPapierkorb() {
    for (const QString& name :
        {u"Belege/1/a.jpg"_s, u"Belege/1/b.jpg"_s, u"Belege/1/bjpg.txt"_s, u"Belege/2/Tief/c.jpg"_s})
      ordner_.schreibe(u"bild.ablage/"_s + name, name.toUtf8());
    QDir().mkpath(wurzel() + u"/Belege/leer"_s);
    sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        "Values ('AB','1','-','-','a','jpg','BEL','-','Belege\\1',0)"_s);
  }
  Lauf aufraeumen(const QStringList& argumente, const QString& eingabe = {}) const {
    return kvobild(
        QStringList{u"aufraeumen"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()} + argumente, {}, eingabe);
  }
  Lauf raeume(const QStringList& mehr = {}) const {
    return aufraeumen(QStringList{u"--ja"_s, u"--schonfrist"_s, u"0"_s} + mehr);
  }
  QString korb() const { return wurzel() + u".papierkorb"_s; }
  static QStringList laeufe(const QString& korb) { return QDir(korb).entryList(QDir::Dirs | QDir::NoDotAndDotDot); }
  /// Paths below a folder with the contents and time stamps of the files.
  static QStringList baum(const QString& ordner) {
    QStringList pfade;
    QDirIterator lauf(ordner, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (lauf.hasNext()) {
      QString zeile = lauf.next().mid(ordner.size() + 1);
      if (lauf.fileInfo().isFile()) {
        QFile datei(lauf.filePath());
        EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
        zeile += u' ' + QString::fromUtf8(datei.readAll()) + lauf.fileInfo().lastModified().toString(Qt::ISODateWithMs);
      }
      pfade.append(zeile);
    }
    pfade.sort();
    return pfade;
  }
};

}  // namespace

TEST_F(KvobildPapierkorb, WhatGoesLiesBesideTheRootWithAListAndComesBackByteForByte) {
  const QStringList vorher = baum(wurzel());
  const Lauf lauf = raeume();
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
  ASSERT_EQ(laeufe(korb()).size(), 1);
  const QString name = laeufe(korb()).first();
  EXPECT_TRUE(QDateTime::fromString(name, u"yyyy-MM-dd_HHmmss"_s).isValid()) << name.toStdString();
  EXPECT_TRUE(lauf.meldungen.contains(u"--zurueckholen "_s + name)) << lauf.meldungen.toStdString();
  for (const char* pfad : {"/Belege/1/b.jpg", "/Belege/1/bjpg.txt", "/Belege/2/Tief/c.jpg"})
    EXPECT_TRUE(QFile::exists(korb() + u'/' + name + QString::fromUtf8(pfad))) << pfad;
  QFile datei(korb() + u'/' + name + u".json"_s);
  ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
  const QJsonArray posten = QJsonDocument::fromJson(datei.readAll()).object()[u"posten"_s].toArray();
  ASSERT_EQ(posten.size(), lauf.zeilen().size());
  EXPECT_EQ(posten[0].toObject(),
      (QJsonObject{{u"pfad"_s, u"Belege\\1\\b.jpg"_s}, {u"art"_s, u"datei"_s}, {u"grund"_s, u"ohne_zuordnung"_s},
          {u"bytes"_s, 14}}));
  EXPECT_NE(baum(wurzel()), vorher);
  const Lauf probe = aufraeumen({u"--zurueckholen"_s, u"--probe"_s});
  EXPECT_TRUE(probe.zeilen().contains(u"Belege\\2\\Tief\\c.jpg"_s));
  EXPECT_NE(baum(wurzel()), vorher);
  const Lauf zurueck = aufraeumen({u"--zurueckholen"_s});
  EXPECT_EQ(zurueck.code, 0) << zurueck.meldungen.toStdString();
  EXPECT_EQ(baum(wurzel()), vorher);
  EXPECT_FALSE(QDir(korb()).exists()) << "an empty one goes";
  EXPECT_TRUE(kvobild({u"aufraeumen"_s, u"--probe"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()})
                  .meldungen.contains(u"„Belege\\1\\b.jpg“ bleibt: eben erst dazugekommen."_s));
}

TEST_F(KvobildPapierkorb, ARowThatNamesWhatCameBackFindsItAgainWithItsText) {
  ASSERT_EQ(raeume().code, 0);
  sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
      "Values ('AB','1','-','-','b','jpg','BEL','-','Belege\\1',1)"_s);
  const auto zeile = [&] { return zeilen().value(1); };
  EXPECT_FALSE(zeile()[u"vorhanden"_s].toBool(true));
  ASSERT_EQ(aufraeumen({u"--zurueckholen"_s}).code, 0);
  EXPECT_TRUE(zeile()[u"vorhanden"_s].toBool());
  EXPECT_EQ(zeile()[u"text"_s], u"Belege/1/bjpg.txt"_s);
  EXPECT_EQ(ordner_.lies(u"bild.ablage/Belege/1/b.jpg"_s), "Belege/1/b.jpg");
}

TEST_F(KvobildPapierkorb, NothingComesBackOverAFileThatIsThere) {
  ASSERT_EQ(raeume().code, 0);
  ordner_.schreibe(u"bild.ablage/Belege/1/B.jpg"_s, "neues");
  const Lauf lauf = aufraeumen({u"--zurueckholen"_s});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(
      u"„Belege\\1\\b.jpg“ bleibt im Papierkorb: in der Bildablage steht inzwischen eine Datei dieses Namens."_s))
      << lauf.meldungen.toStdString();
  EXPECT_EQ(ordner_.lies(u"bild.ablage/Belege/1/B.jpg"_s), "neues");
  EXPECT_FALSE(ordner_.vorhanden(u"bild.ablage/Belege/1/b.jpg"_s));
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/Belege/2/Tief/c.jpg"_s));
  ASSERT_EQ(laeufe(korb()).size(), 1);
  EXPECT_EQ(baum(korb() + u'/' + laeufe(korb()).first()).filter(u"b.jpg"_s).size(), 1);
  ASSERT_TRUE(QFile::remove(ordner_.pfad(u"bild.ablage/Belege/1/B.jpg"_s)));
  EXPECT_EQ(aufraeumen({u"--zurueckholen"_s}).code, 0);
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/Belege/1/b.jpg"_s));
}

TEST_F(KvobildPapierkorb, NamesThatDifferInCaseAloneBothGoAndBothComeBack) {
  for (const char* name : {"B.jpg", "B.JPG"})
    ordner_.schreibe(u"bild.ablage/Belege/1/"_s + QString::fromUtf8(name), name);
  const QStringList vorher = baum(wurzel());
  ASSERT_EQ(raeume().code, 0);
  EXPECT_EQ(dateien(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(aufraeumen({u"--zurueckholen"_s}).code, 0);
  EXPECT_EQ(baum(wurzel()), vorher);
}

TEST_F(KvobildPapierkorb, ARunIsNamedOrItIsTheLastOne) {
  ASSERT_EQ(raeume().code, 0);
  ordner_.schreibe(u"bild.ablage/Belege/3/d.jpg"_s, "d");
  ASSERT_EQ(raeume().code, 0);
  const QStringList zwei = laeufe(korb());
  ASSERT_EQ(zwei.size(), 2);
  const Lauf falsch = aufraeumen({u"--zurueckholen"_s, u"1999-01-01_000000"_s});
  EXPECT_EQ(falsch.code, 1);
  EXPECT_TRUE(falsch.meldungen.contains(zwei.join(u", "_s))) << falsch.meldungen.toStdString();
  EXPECT_EQ(aufraeumen({u"--zurueckholen"_s, zwei.first()}).code, 0);
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/Belege/1/b.jpg"_s));
  EXPECT_FALSE(ordner_.vorhanden(u"bild.ablage/Belege/3/d.jpg"_s));
  EXPECT_EQ(aufraeumen({u"--zurueckholen"_s}).code, 0);
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/Belege/3/d.jpg"_s));
  EXPECT_EQ(aufraeumen({u"--zurueckholen"_s}).code, 1) << "nothing is left";
}

TEST_F(KvobildPapierkorb, OnlyWhatIsOldEnoughGoesForGoodAndOnlyAfterAYes) {
  ASSERT_EQ(raeume().code, 0);
  const auto benenne = [&](int tage) {
    const QString neu = QDateTime::currentDateTime().addDays(-tage).addSecs(-60).toString(u"yyyy-MM-dd_HHmmss"_s);
    const QString alt = laeufe(korb()).first();
    EXPECT_TRUE(QDir(korb()).rename(alt, neu));
    EXPECT_TRUE(QDir(korb()).rename(alt + u".json"_s, neu + u".json"_s));
  };
  benenne(29);
  ordner_.schreibe(u"bild.ablage.papierkorb/von Hand/x.jpg"_s, "x");
  const QStringList vorher = baum(korb());
  const Lauf zu_jung = aufraeumen({u"--endgueltig"_s, u"--ja"_s});
  EXPECT_EQ(zu_jung.code, 0);
  EXPECT_TRUE(zu_jung.meldungen.contains(u"älter als 30 Tage"_s)) << zu_jung.meldungen.toStdString();
  EXPECT_EQ(baum(korb()), vorher);
  EXPECT_EQ(aufraeumen({u"--endgueltig"_s, u"--tage"_s, u"28"_s}).code, 1) << "nobody there to answer";
  EXPECT_EQ(baum(korb()), vorher);
  EXPECT_EQ(aufraeumen({u"--endgueltig"_s, u"--tage"_s, u"28"_s, u"--ja"_s}).code, 0);
  EXPECT_EQ(baum(korb()).size(), 2) << "what is no run of a clearing is not touched";
}

TEST_F(KvobildPapierkorb, WhereThereCanBeNoneTheQuestionSaysThatItIsForGood) {
  ordner_.schreibe(u"bild.ablage.papierkorb"_s, "a file");
  const QString nein = ordner_.schreibe(u"antwort"_s, "nein\n");
  const Lauf lauf = aufraeumen({u"--schonfrist"_s, u"0"_s}, nein);
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.meldungen.contains(u"ist endgültig fort"_s)) << lauf.meldungen.toStdString();
  EXPECT_TRUE(lauf.meldungen.contains(u"Endgültig löschen (Dateien: 3, Ordner: 3, "_s)) << lauf.meldungen.toStdString();
  EXPECT_TRUE(ordner_.vorhanden(u"bild.ablage/Belege/1/b.jpg"_s));
  EXPECT_EQ(raeume().code, 0);
  EXPECT_FALSE(ordner_.vorhanden(u"bild.ablage/Belege/1/b.jpg"_s));
  QFile::remove(korb());
  EXPECT_TRUE(aufraeumen({u"--schonfrist"_s, u"0"_s}, nein).meldungen.contains(u"nichts aufzuräumen"_s));
  ordner_.schreibe(u"bild.ablage/Belege/3/d.jpg"_s, "d");
  EXPECT_TRUE(aufraeumen({u"--schonfrist"_s, u"0"_s}, nein)
                  .meldungen.contains(u"In den Papierkorb „%1“ verschieben (Dateien: 1, Ordner: 1, "_s.arg(korb())));
}

TEST_F(KvobildPapierkorb, AnotherPlaceIsNamedAlsoOnAnotherFileSystem) {
  const QString fremd = u"/dev/shm/kvo_papierkorb_%1"_s.arg(QCoreApplication::applicationPid());
  for (const QString& platz : {ordner_.pfad(u"anderswo"_s), fremd}) {
    SCOPED_TRACE(platz.toStdString());
    ASSERT_TRUE(QDir().mkpath(platz));
    const QStringList vorher = baum(wurzel());
    EXPECT_EQ(raeume({u"--papierkorb"_s, platz}).code, 0);
    EXPECT_FALSE(ordner_.vorhanden(u"bild.ablage/Belege/1/b.jpg"_s));
    EXPECT_FALSE(QDir(korb()).exists());
    EXPECT_EQ(laeufe(platz + u"/bild.ablage.papierkorb"_s).size(), 1);
    EXPECT_EQ(aufraeumen({u"--zurueckholen"_s, u"--papierkorb"_s, platz}).code, 0);
    EXPECT_EQ(baum(wurzel()), vorher);
    EXPECT_TRUE(QDir(platz).removeRecursively());
  }
  const QStringList vorher = baum(wurzel());
  EXPECT_EQ(raeume({u"--papierkorb"_s, wurzel() + u"/Belege"_s}).code, 2);
  EXPECT_EQ(raeume({u"--papierkorb"_s, ordner_.pfad(u"fehlt"_s)}).code, 4);
  EXPECT_EQ(baum(wurzel()), vorher);
}

TEST_F(KvobildPapierkorb, WrongCallsAreRefused) {
  for (const QStringList& falsch : {QStringList{u"--zurueckholen"_s, u"--endgueltig"_s}, {u"--tage"_s, u"3"_s},
           {u"2024-01-01_000000"_s}, {u"--zurueckholen"_s, u"--ordner"_s, u"Belege"_s},
           {u"--endgueltig"_s, u"--schonfrist"_s, u"0"_s}, {u"--endgueltig"_s, u"--tage"_s, u"viele"_s}})
    EXPECT_EQ(aufraeumen(falsch).code, 2) << falsch.join(u' ').toStdString();
}
