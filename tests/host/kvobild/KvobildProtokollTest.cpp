// The journal: what is written to it, by whom, and how it is read.
#include <pwd.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QProcess>
#include <QSysInfo>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class KvobildProtokoll : public Betrieb {
 protected:
  QString datei() const { return ordner_.pfad(u"protokoll.jsonl"_s); }
  QList<QJsonObject> protokoll(const QStringList& argumente = {}) const {
    return lauf(QStringList{u"--json"_s} + argumente).objekte();
  }
  Lauf lauf(const QStringList& argumente = {}) const {
    return kvobild(QStringList{u"protokoll"_s, u"--verbindung"_s, datenbank()} + argumente);
  }
  /// What was done to which picture, one line each.
  QStringList taten(const QStringList& argumente = {}) const {
    QStringList liste;
    for (const QJsonObject& zeile : protokoll(argumente))
      liste.append(zeile[u"tat"_s].toString() + u' ' + zeile[u"bild"_s].toString());
    return liste;
  }
  Lauf aufraeumen(const QStringList& argumente) const {
    return kvobild(QStringList{u"aufraeumen"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()} + argumente);
  }
  void fuege_an(const QByteArray& zeilen) const {
    QFile f(datei());
    ASSERT_TRUE(f.open(QIODevice::Append) && f.write(zeilen) == zeilen.size());
  }
  static QByteArray zeile(const QString& zeit, const QString& bild) {
    return QJsonDocument(QJsonObject{{u"zeit"_s, zeit}, {u"tat"_s, u"zuordnen"_s}, {u"bild"_s, bild},
                             {u"ergebnis"_s, u"erledigt"_s}})
               .toJson(QJsonDocument::Compact) +
        '\n';
  }
};

}  // namespace

TEST_F(KvobildProtokoll, EveryDeedHasItsLineWithTimeUserDeskRecordPictureAndResult) {
  const QDateTime vorher = QDateTime::currentDateTime().addSecs(-1);
  const Lauf neu = zuordnen({bild(u"a.jpg"_s, u"Infotext"_s), bild(u"b.jpg"_s), u"--beschreibung"_s, u"geheim"_s});
  ASSERT_EQ(neu.code, 0) << neu.meldungen.toStdString();
  const QString a = u"Belege\\1\\"_s + neu.zeilen()[0];
  const QString b = u"Belege\\1\\"_s + neu.zeilen()[1];
  ASSERT_EQ(umbenennen({neu.zeilen()[0], u"neu"_s}).code, 0);
  ASSERT_EQ(entfernen({neu.zeilen()[1]}).code, 0);
  ASSERT_EQ(aufraeumen({u"--ja"_s, u"--schonfrist"_s, u"0"_s}).code, 0);
  ASSERT_EQ(aufraeumen({u"--zurueckholen"_s}).code, 0);
  ASSERT_EQ(aufraeumen({u"--ja"_s, u"--schonfrist"_s, u"0"_s}).code, 0);
  ASSERT_EQ(aufraeumen({u"--endgueltig"_s, u"--tage"_s, u"0"_s, u"--ja"_s}).code, 0);
  EXPECT_EQ(taten(),
      (QStringList{u"zuordnen "_s + a, u"zuordnen "_s + b, u"umbenennen "_s + a, u"entfernen "_s + b,
          u"aufraeumen "_s + b, u"zurueckholen "_s + b, u"aufraeumen "_s + b, u"endgueltig_loeschen "_s + b}));
  const QList<QJsonObject> zeilen = protokoll();
  const QJsonObject& erste = zeilen.first();
  EXPECT_EQ(erste[u"benutzer"_s], QString::fromLocal8Bit(::getpwuid(::geteuid())->pw_name));
  EXPECT_EQ(erste[u"platz"_s], QSysInfo::machineHostName());
  EXPECT_EQ(erste[u"ergebnis"_s], u"erledigt"_s);
  EXPECT_EQ(erste[u"vorgang"_s], (QJsonObject{{u"typ1"_s, u"BEL"_s}, {u"key1"_s, u"AB"_s}, {u"key2"_s, u"1"_s}}));
  const QString zeit = erste[u"zeit"_s].toString();
  EXPECT_TRUE(zeit.contains(u'+') && QDateTime::fromString(zeit, Qt::ISODateWithMs) >= vorher) << zeit.toStdString();
  EXPECT_EQ(zeilen[2][u"neu"_s], u"Belege\\1\\neu.jpg"_s);
  EXPECT_FALSE(zeilen[4][u"lauf"_s].toString().isEmpty());
  EXPECT_EQ(zeilen[4][u"lauf"_s], zeilen[5][u"lauf"_s]);
  for (const char* wort : {"geheim", "Infotext"})
    EXPECT_FALSE(ordner_.lies(u"protokoll.jsonl"_s).contains(wort)) << "no text of the user's";
  const QStringList fuer_Menschen = lauf().zeilen();
  ASSERT_EQ(fuer_Menschen.size(), 8);
  EXPECT_TRUE(fuer_Menschen[2].contains(u"umbenannt: %1 → Belege\\1\\neu.jpg"_s.arg(a)));
  EXPECT_TRUE(fuer_Menschen[3].endsWith(u"(BEL AB 1)"_s)) << fuer_Menschen[3].toStdString();
}

TEST_F(KvobildProtokoll, WhatFailedIsToldAsFailedAndTheJournalOutlivesTheRecord) {
  const QString name = zuordnen({bild(u"a.jpg"_s)}).zeilen().value(0);
  sql(u"create trigger fest before delete on Bild_Zuordnungen begin select raise(abort, 'fest'); end"_s);
  EXPECT_EQ(entfernen({name}).code, 3);
  sql(u"drop trigger fest"_s);
  sql(u"delete from Bild_Zuordnungen"_s);
  const QList<QJsonObject> zeilen = protokoll();
  ASSERT_EQ(zeilen.size(), 2);
  EXPECT_EQ(zeilen[1][u"tat"_s], u"entfernen"_s);
  EXPECT_EQ(zeilen[1][u"ergebnis"_s], u"gescheitert"_s);
  EXPECT_TRUE(lauf().zeilen().value(1).endsWith(u"GESCHEITERT"_s));
}

TEST_F(KvobildProtokoll, ItIsReadFromADayOnAndByPicture) {
  fuege_an(zeile(u"2024-02-29T23:59:59.000+01:00"_s, u"Belege\\1\\foto.jpg"_s) +
      zeile(u"2024-02-29T23:30:00.000+00:00"_s, u"Belege\\2\\Foto.JPG"_s) +
      zeile(u"2024-03-02T08:00:00.000+01:00"_s, u"Belege\\2\\fotos.jpg"_s));
  EXPECT_EQ(protokoll().size(), 3);
  for (const QString& tag : {u"2024-03-01"_s, u"1.3.2024"_s})
    EXPECT_EQ(
        taten({u"--seit"_s, tag}), (QStringList{u"zuordnen Belege\\2\\Foto.JPG"_s, u"zuordnen Belege\\2\\fotos.jpg"_s}))
        << "the offset counts";
  EXPECT_EQ(taten({u"--bild"_s, u"FOTO.jpg"_s}).size(), 2);
  EXPECT_EQ(taten({u"--bild"_s, u"belege/1/foto.jpg"_s}), QStringList{u"zuordnen Belege\\1\\foto.jpg"_s});
  const Lauf keine = lauf({u"--bild"_s, u"fremd.jpg"_s});
  EXPECT_EQ(keine.code, 1);
  EXPECT_TRUE(keine.meldungen.contains(u"steht dazu nichts."_s)) << keine.meldungen.toStdString();
  EXPECT_EQ(lauf({u"--seit"_s, u"gestern"_s}).code, 2);
}

TEST_F(KvobildProtokoll, DamagedLinesAreCountedAndTheFormerFileIsReadFirst) {
  ordner_.schreibe(u"protokoll.1.jsonl"_s, zeile(u"2024-01-01T00:00:00.000+01:00"_s, u"alt.jpg"_s));
  fuege_an("{\"zeit\":\"2024-01-01T00:0");
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  fuege_an("[]\nkein JSON\n{\"zeit\":\"2024-01-01T00:0");
  const Lauf alles = lauf();
  EXPECT_EQ(alles.code, 0);
  ASSERT_EQ(alles.zeilen().size(), 2) << alles.ausgabe.toStdString();
  EXPECT_TRUE(alles.zeilen()[0].contains(u"alt.jpg"_s));
  EXPECT_TRUE(alles.meldungen.contains(u"Beschädigte Zeilen des Protokolls, die übergangen sind: 3."_s))
      << alles.meldungen.toStdString();
}

TEST_F(KvobildProtokoll, WhereItCannotBeWrittenTheWorkGoesOnAndItIsSaidOnce) {
  ASSERT_TRUE(QDir().mkpath(datei()));
  const Lauf neu = zuordnen({bild(u"a.jpg"_s), bild(u"b.jpg"_s)});
  EXPECT_EQ(neu.code, 0);
  EXPECT_EQ(neu.zeilen().size(), 2);
  EXPECT_EQ(neu.meldungen.count(u"ist nicht zu schreiben"_s), 1) << neu.meldungen.toStdString();
}

TEST_F(KvobildProtokoll, TurningWritesToTheJournalOfTheDatabaseThatTheSurroundingsName) {
  QImage grau(64, 48, QImage::Format_RGB32);
  grau.fill(Qt::gray);
  const QString foto = ordner_.pfad(u"foto.jpg"_s);
  ASSERT_TRUE(grau.save(foto));
  const QStringList aufruf{u"drehen"_s, u"--um"_s, u"180"_s, foto, ordner_.pfad(u"gedreht.jpg"_s)};
  EXPECT_EQ(kvobild(aufruf).code, 0);
  EXPECT_FALSE(QFile::exists(datei()));
  EXPECT_EQ(kvobild(aufruf, {}, {}, {{u"KVOBILD_VERBINDUNG"_s, datenbank()}}).code, 0);
  EXPECT_EQ(taten(), QStringList{u"drehen "_s + ordner_.pfad(u"gedreht.jpg"_s)});
}

TEST_F(KvobildProtokoll, ManyCallsAtOnceEachLeaveTheirLine) {
  constexpr int Viele = 6;
  QList<QProcess*> laeufe;
  for (int i = 0; i < Viele; ++i) {
    auto* prozess = new QProcess;
    prozess->start(QStringLiteral(KVOBILD_PROGRAMM),
        QStringList{u"zuordnen"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel(), u"--ordner"_s,
            u"Belege\\%1"_s.arg(i), u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s, u"--key2"_s, QString::number(i),
            bild(u"%1.jpg"_s.arg(i))});
    laeufe.append(prozess);
  }
  for (QProcess* prozess : laeufe) {
    EXPECT_TRUE(prozess->waitForFinished(60'000));
    EXPECT_EQ(prozess->exitCode(), 0) << prozess->readAllStandardError().toStdString();
    delete prozess;
  }
  EXPECT_EQ(protokoll().size(), Viele);
  EXPECT_FALSE(lauf().meldungen.contains(u"Beschädigte"_s));
}

TEST_F(KvobildProtokoll, BeforeARemovalItIsSaidInHowManyOtherRecordsThePictureIsUsed) {
  const QString name = zuordnen({bild(u"a.jpg"_s)}).zeilen().value(0);
  const QString allein = zuordnen({bild(u"b.jpg"_s)}).zeilen().value(0);
  const auto auch = [&](const QString& key2, const QString& pfad) {
    sql(u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
        "Values ('AB','%1','-','-','%2','jpg','BEL','-','%3',0)"_s.arg(key2, name.chopped(4), pfad));
  };
  auch(u"1"_s, u"Belege\\9"_s);
  auch(u"2"_s, u"Belege\\1"_s);
  const auto sagt = [&](const QStringList& welche) { return entfernen(welche).meldungen; };
  EXPECT_EQ(sagt({allein}), QString());
  auch(u"2"_s, u"Belege\\1"_s);
  const QString eines = u"kvobild: Das Bild „%1“ wird noch in einem anderen Vorgang verwendet.\n"_s.arg(name);
  sql(u"delete from Bild_Zuordnungen where BildPfad = 'Belege\\9'"_s);
  EXPECT_EQ(sagt({name}), eines) << "the same record twice is one";
  auch(u"1"_s, u"Belege\\1"_s);
  auch(u"3"_s, u"Belege\\1"_s);
  auch(u"4"_s, u"BELEGE\\1"_s);
  EXPECT_EQ(sagt({name}), u"kvobild: Das Bild „%1“ wird noch in 3 anderen Vorgängen verwendet.\n"_s.arg(name));
}
