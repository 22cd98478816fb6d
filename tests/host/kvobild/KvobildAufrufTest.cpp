#include <QDir>
#include <QFile>

#include "tests/host/kvobild/Kvobild.h"

using namespace Qt::Literals::StringLiterals;

class KvobildAufruf : public Betrieb {};

TEST_F(KvobildAufruf, EveryCommandHasItsHelp) {
  const Lauf liste = kvobild({u"--hilfe"_s});
  EXPECT_EQ(liste.code, 0);
  for (const QString& befehl : {u"anlegen"_s, u"zuordnen"_s, u"lesen"_s, u"aendern"_s, u"umbenennen"_s, u"entfernen"_s,
           u"aufraeumen"_s, u"exif"_s, u"drehen"_s, u"thumbnail"_s, u"beispieldaten"_s}) {
    EXPECT_TRUE(liste.ausgabe.contains(u"  "_s + befehl + u' ')) << befehl.toStdString();
    const Lauf lauf = kvobild({befehl, u"--hilfe"_s});
    EXPECT_EQ(lauf.code, 0);
    EXPECT_TRUE(lauf.ausgabe.startsWith(u"Aufruf: kvobild "_s + befehl + u" [Optionen]"_s)) << befehl.toStdString();
    EXPECT_TRUE(lauf.ausgabe.contains(u"Ausgang:"_s));
    EXPECT_TRUE(lauf.meldungen.isEmpty()) << lauf.meldungen.toStdString();
  }
}

TEST_F(KvobildAufruf, AWrongCallIsExplainedInGerman) {
  const QList<std::pair<QStringList, QString>> faelle{{{}, u"Es fehlt der Befehl"_s},
      {{u"loeschen"_s}, u"Den Befehl „loeschen“ gibt es nicht"_s},
      {{u"lesen"_s, u"--farbe"_s, u"rot"_s}, u"„farbe“ gibt es bei „lesen“ nicht"_s},
      {{u"lesen"_s, u"--verbindung"_s}, u"Hinter „--verbindung“ fehlt"_s},
      {{u"lesen"_s, u"--json=ja"_s}, u"nimmt keinen Wert"_s}, {{u"lesen"_s, u"etwas"_s}, u"zu viel"_s},
      {{u"lesen"_s}, u"Es fehlt „--verbindung“"_s}, {{u"exif"_s}, u"DATEI"_s},
      {{u"zuordnen"_s, u"--verbindung"_s, datenbank(), u"a.jpg"_s}, u"Es fehlt „--key1“"_s},
      {{u"zuordnen"_s, u"--verbindung"_s, datenbank(), u"--key1"_s, u"A"_s, u"a.jpg"_s}, u"Es fehlt „--typ1“"_s}};
  for (const auto& [argumente, meldung] : faelle) {
    const Lauf lauf = kvobild(argumente);
    EXPECT_EQ(lauf.code, 2) << argumente.join(u' ').toStdString();
    EXPECT_TRUE(lauf.meldungen.contains(meldung)) << lauf.meldungen.toStdString();
    EXPECT_TRUE(lauf.ausgabe.isEmpty());
  }
}

TEST_F(KvobildAufruf, CreatingLeavesATableThatExists) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  const QString vorher = stand();
  const Lauf lauf = kvobild({u"anlegen"_s, u"--verbindung"_s, datenbank()});
  EXPECT_EQ(lauf.code, 0);
  EXPECT_TRUE(lauf.meldungen.contains(u"besteht schon"_s));
  EXPECT_EQ(stand(), vorher);
}

TEST_F(KvobildAufruf, OnlyCreatingMakesADatabase) {
  const QString fehlt = ordner_.pfad(u"fehlt.db"_s);
  for (const QString& befehl : {u"lesen"_s, u"entfernen"_s}) {
    QStringList argumente{befehl, u"--verbindung"_s, fehlt};
    if (befehl == u"entfernen"_s) argumente += satz_ + QStringList{u"--alle"_s};
    const Lauf lauf = kvobild(argumente);
    EXPECT_EQ(lauf.code, 3);
    EXPECT_TRUE(lauf.meldungen.contains(u"anlegen"_s)) << lauf.meldungen.toStdString();
    EXPECT_FALSE(QFile::exists(fehlt));
  }
  EXPECT_EQ(kvobild({u"anlegen"_s, u"--verbindung"_s, ordner_.pfad(u"kein/Ordner/x.db"_s)}).code, 3);
}

TEST_F(KvobildAufruf, ADatabaseWithoutTheTableIsExplained) {
  sql(u"DROP TABLE Bild_Zuordnungen"_s);
  const Lauf lauf = kvobild({u"lesen"_s, u"--verbindung"_s, datenbank()});
  EXPECT_EQ(lauf.code, 3);
  EXPECT_TRUE(lauf.meldungen.contains(u"kvobild anlegen"_s)) << lauf.meldungen.toStdString();
}

TEST_F(KvobildAufruf, AFileThatIsNoDatabaseIsExplainedAndStays) {
  const QString datei = ordner_.schreibe(u"brief.txt"_s, QByteArray(2000, 'x'));
  EXPECT_EQ(kvobild({u"lesen"_s, u"--verbindung"_s, datei}).code, 3);
  EXPECT_EQ(kvobild({u"anlegen"_s, u"--verbindung"_s, datei}).code, 3);
  EXPECT_EQ(ordner_.lies(u"brief.txt"_s), QByteArray(2000, 'x'));
}

TEST_F(KvobildAufruf, APasswordStandsInNoMessage) {
  for (const QString& befehl : {u"lesen"_s, u"anlegen"_s}) {
    const Lauf lauf = kvobild({befehl, u"--verbindung"_s, u"Provider=Gibtsnicht;User ID=sa;Password=geheim99"_s});
    EXPECT_NE(lauf.code, 0);
    EXPECT_FALSE((lauf.meldungen + lauf.ausgabe).contains(u"geheim99"_s)) << lauf.meldungen.toStdString();
  }
  const QString verbindung = u"Server=s;UID=sa;Pass word = geheim99"_s;
  for (const QStringList& falsch :
      {QStringList{verbindung}, QStringList{u"lesen"_s, verbindung}, QStringList{u"lesen"_s, u"--"_s + verbindung},
          QStringList{u"datenbank"_s, verbindung}, QStringList{u"datenbank"_s, u"pruefen"_s, verbindung},
          QStringList{u"lesen"_s, u"--verbindung"_s, u"Provider=SQLite;Data Source=x.db PWD=geheim99"_s}}) {
    const Lauf lauf = kvobild(falsch);
    EXPECT_NE(lauf.code, 0);
    EXPECT_FALSE((lauf.meldungen + lauf.ausgabe).contains(u"geheim99"_s)) << lauf.meldungen.toStdString();
  }
}

TEST_F(KvobildAufruf, ReadingWithoutAMatchIsExitCode1) {
  const Lauf lauf = kvobild({u"lesen"_s, u"--verbindung"_s, datenbank()});
  EXPECT_EQ(lauf.code, 1);
  EXPECT_TRUE(lauf.ausgabe.isEmpty());
  EXPECT_TRUE(lauf.meldungen.contains(u"Keine Zuordnung"_s));
}

TEST_F(KvobildAufruf, ReadingSaysWhenAFileIsMissing) {
  const Lauf neu = zuordnen({u"--anhang"_s, u"ja"_s, bild(u"a.jpg"_s)});
  ASSERT_TRUE(QFile::remove(wurzel() + u"/Belege/1/"_s + neu.zeilen().value(0)));
  EXPECT_FALSE(zeilen().value(0)[u"vorhanden"_s].toBool());
  const Lauf lauf = fuehre(u"lesen"_s, {u"--bilder"_s, wurzel()});
  EXPECT_TRUE(lauf.ausgabe.contains(u"Die Bilddatei fehlt"_s));
  EXPECT_TRUE(lauf.ausgabe.contains(u"Druck, Anhang"_s));
  EXPECT_TRUE(lauf.ausgabe.startsWith(u"BEL AB 1\n"_s));
}

TEST_F(KvobildAufruf, AnOutputThatCannotBeWrittenIsNoticed) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  EXPECT_EQ(kvobild({u"lesen"_s, u"--verbindung"_s, datenbank()}, u"/dev/full"_s).code, 4);
}

TEST_F(KvobildAufruf, AnApostropheInThePathOfTheDatabaseOrTheRootDoesNoHarm) {
  const QString ordner = ordner_.pfad(u"Bob's \"Daten\"; a=b"_s);
  ASSERT_TRUE(QDir().mkpath(ordner + u"/bilder"_s));
  // In the connect string the value stands in quotes, its own quotes doubled.
  const QString verbindung =
      u"Provider=SQLite;Data Source=\""_s + QString(ordner).replace(u'"', u"\"\""_s) + u"/x.db\""_s;
  ASSERT_EQ(kvobild({u"anlegen"_s, u"--verbindung"_s, verbindung}).code, 0);
  const Lauf lauf = kvobild(QStringList{u"zuordnen"_s, u"--verbindung"_s, verbindung, u"--bilder"_s,
                                ordner + u"/bilder"_s, u"--ordner"_s, u"a"_s, bild(u"a.jpg"_s)} +
      satz_);
  EXPECT_EQ(lauf.code, 0) << lauf.meldungen.toStdString();
}

TEST_F(KvobildAufruf, WhatTheFirmGivesHoldsWhereTheCallIsSilentAndWhatItLocksHoldsAlways) {
  ASSERT_EQ(zuordnen({bild(u"a.jpg"_s)}).code, 0);
  const QMap<QString, QString> vorgaben{{u"XDG_CONFIG_DIRS"_s, ordner_.pfad(u"xdg"_s)}};
  const QByteArray verbindung =
      "[Verbindung]\nVerbindung=" + QFile::encodeName(datenbank()) + "\nBilder=" + QFile::encodeName(wurzel()) + "\n";
  ordner_.schreibe(u"xdg/bildzuordnung/betrieb.ini"_s, verbindung);
  const QStringList lesen = QStringList{u"lesen"_s} + satz_;
  const Lauf stille = kvobild(lesen, {}, {}, vorgaben);
  EXPECT_EQ(stille.code, 0) << stille.meldungen.toStdString();
  EXPECT_TRUE(stille.ausgabe.contains(u".jpg"_s));
  const QStringList andere = lesen + QStringList{u"--verbindung"_s, ordner_.pfad(u"andere.db"_s)};
  EXPECT_EQ(kvobild(andere, {}, {}, vorgaben).code, 3);
  ordner_.schreibe(u"xdg/bildzuordnung/betrieb.ini"_s, verbindung + "[Betrieb]\ngesperrt=Verbindung,Bilder\n");
  EXPECT_EQ(kvobild(lesen, {}, {}, vorgaben).code, 0);
  const Lauf gesperrte = kvobild(andere, {}, {}, vorgaben);
  EXPECT_EQ(gesperrte.code, 2);
  EXPECT_TRUE(gesperrte.meldungen.contains(u"„--verbindung“ geht hier nicht"_s)) << gesperrte.meldungen.toStdString();
  EXPECT_EQ(kvobild(lesen + QStringList{u"--bilder"_s, ordner_.pfad()}, {}, {}, vorgaben).code, 2);
}
