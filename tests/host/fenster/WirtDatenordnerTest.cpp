#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QProcess>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "platform/adodb/Connection.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList dateien_unter(const QString& ordner) {
  QStringList liste;
  QDirIterator lauf(ordner, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (lauf.hasNext()) liste.append(QDir(ordner).relativeFilePath(lauf.next()));
  liste.sort();
  return liste;
}

QString abgelehnt(const std::function<void()>& versuch) {
  try {
    versuch();
  } catch (const Abbruch& abbruch) {
    return abbruch.text();
  }
  ADD_FAILURE() << "nothing was refused";
  return {};
}

}  // namespace

class WirtDatenordner : public ::testing::Test {
 protected:
  void richte_ein() const { datenordner::richte_ein(namen::tabellenpfad(daten())); }
  QString daten() const { return ordner_.pfad(u"heim/kvobildzuordnung"_s); }
  QStringList daneben() const {
    return QDir(ordner_.pfad(u"heim"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
  }
  Testordner ordner_;
};

TEST_F(WirtDatenordner, TheFirstStartCreatesEverythingAndLeavesNothingBesideIt) {
  richte_ein();
  EXPECT_EQ(QDir(daten()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
      (QStringList{u"betrieb.db"_s, u"bilder"_s, u"eingang"_s}));
  EXPECT_EQ(daneben(), QStringList{u"kvobildzuordnung"_s});
}

TEST_F(WirtDatenordner, ExactlyOneAssignedPictureIsMissing) {
  richte_ein();
  adodb::Connection verbindung;
  verbindung.Open(datenordner::verbindung(namen::tabellenpfad(daten())));
  QStringList fehlende;
  int zeilen = 0;
  for (const auto satz = verbindung.Execute(u"Select BildPfad, Bildname, BildExt from Bild_Zuordnungen"_s);
       !satz->Eof(); satz->MoveNext(), ++zeilen) {
    const QString datei = satz->Text(0).replace(u'\\', u'/') + u'/' + satz->Text(1) + u'.' + satz->Text(2);
    if (!QFile::exists(daten() + u"/bilder/"_s + datei)) fehlende.append(datei);
  }
  EXPECT_EQ(zeilen, 22);
  EXPECT_EQ(fehlende, QStringList{u"Belege/24-2003/Fliesen_0820240305_100000.jpg"_s});
}

TEST_F(WirtDatenordner, ASecondStartLeavesEverythingAsItIs) {
  richte_ein();
  ordner_.schreibe(u"heim/kvobildzuordnung/bilder/Belege/mein.jpg"_s, "meins");
  const QStringList vorher = dateien_unter(daten());
  richte_ein();
  EXPECT_EQ(dateien_unter(daten()), vorher);
}

TEST_F(WirtDatenordner, AnEmptyFolderIsTaken) {
  ASSERT_TRUE(QDir().mkpath(daten()));
  richte_ein();
  EXPECT_TRUE(QFile::exists(daten() + u"/betrieb.db"_s));
}

TEST_F(WirtDatenordner, AFolderWithOtherContentStaysAndIsNamed) {
  ordner_.schreibe(u"heim/kvobildzuordnung/wichtig.txt"_s, "bleibt");
  EXPECT_TRUE(abgelehnt([&] { richte_ein(); }).contains(u"liegt anderes"_s));
  EXPECT_EQ(dateien_unter(daten()), QStringList{u"wichtig.txt"_s});
  EXPECT_EQ(daneben(), QStringList{u"kvobildzuordnung"_s});
}

TEST_F(WirtDatenordner, AFailedCreationLeavesNoHalfFolder) {
  ordner_.schreibe(u"heim/kvobildzuordnung.neu-%1"_s.arg(QCoreApplication::applicationPid()), "im Weg");
  abgelehnt([&] { richte_ein(); });
  EXPECT_FALSE(QFile::exists(daten()));
}

TEST_F(WirtDatenordner, TheRestOfAnInterruptedCreationDoesNoHarm) {
  ordner_.schreibe(
      u"heim/kvobildzuordnung.neu-%1/bilder/Belege/halb.jpg"_s.arg(QCoreApplication::applicationPid()), "halb");
  richte_ein();
  EXPECT_FALSE(QFile::exists(daten() + u"/bilder/Belege/halb.jpg"_s));
  EXPECT_EQ(daneben(), QStringList{u"kvobildzuordnung"_s});
}

TEST_F(WirtDatenordner, WhatAKilledStartLeftBehindGoesAtTheNextOne) {
  QProcess fertig;
  fertig.start(u"true"_s, QStringList());
  ASSERT_TRUE(fertig.waitForStarted());
  const qint64 tot = fertig.processId();
  ASSERT_TRUE(fertig.waitForFinished());
  ordner_.schreibe(u"heim/kvobildzuordnung.neu-%1/bilder/halb.jpg"_s.arg(tot), "halb");
  // The first process runs as long as the machine does.
  ordner_.schreibe(u"heim/kvobildzuordnung.neu-1/bilder/halb.jpg"_s, "noch in Arbeit");
  ordner_.schreibe(u"heim/kvobildzuordnung.neu-meins/bild.jpg"_s, "bleibt");
  richte_ein();
  EXPECT_EQ(
      daneben(), (QStringList{u"kvobildzuordnung"_s, u"kvobildzuordnung.neu-1"_s, u"kvobildzuordnung.neu-meins"_s}));
}

TEST(WirtOptionen, AWrongCallIsRefusedWithWords) {
  const QList<std::pair<QStringList, QString>> faelle{
      {{u"--gibtsnicht"_s}, u"Die Option „gibtsnicht“ gibt es nicht."_s},
      {{u"--bilder"_s}, u"Hinter „--bilder“ fehlt der Wert."_s},
      {{u"--datenordner="_s}, u"„--datenordner“ ist leer."_s}, {{u"foto.jpg"_s}, u"„foto.jpg“ ist zu viel."_s},
      {{u"--suchen"_s, u"--neuer-vorgang"_s}, u"„--suchen“ und „--neuer-vorgang“ schließen sich aus."_s},
      {{u"--rundgang"_s, u"r"_s, QCoreApplication::applicationFilePath()},
          u"„--rundgang“ hat eigene Daten und nimmt keine Dateien an."_s}};
  for (const auto& [argumente, worte] : faelle) {
    try {
      wirtsoptionen::lies(argumente);
      ADD_FAILURE() << worte.toStdString();
    } catch (const Abbruch& abbruch) {
      EXPECT_EQ(abbruch.ausgang(), Ausgang::Aufruf);
      EXPECT_EQ(abbruch.text(), worte + u" Hilfe gibt „bildzuordnung --hilfe“."_s);
    }
  }
}

TEST(WirtOptionen, AFileNameMeansAnSQLiteFile) {
  EXPECT_EQ(
      wirtsoptionen::lies({u"--verbindung"_s, u"/d/a.db"_s}).verbindung, u"Provider=SQLite;Data Source=\"/d/a.db\""_s);
  EXPECT_EQ(wirtsoptionen::lies({u"--verbindung"_s, u"Driver={X};Server=s"_s}).verbindung, u"Driver={X};Server=s"_s);
}

TEST(WirtOptionen, WithoutAnArgumentTheDataFolderLiesUnderTheApplicationData) {
  const QByteArray vorher = qgetenv("XDG_DATA_HOME");
  qputenv("XDG_DATA_HOME", "/tmp/heim");
  EXPECT_EQ(wirtsoptionen::lies({}).datenordner, u"/tmp/heim/kvobildzuordnung"_s);
  qputenv("XDG_DATA_HOME", vorher);
}

TEST(WirtOptionen, TheHelpNamesEveryOption) {
  EXPECT_TRUE(wirtsoptionen::lies({u"--hilfe"_s}).hilfe);
  for (const QString& option :
      {u"--verbindung"_s, u"--bilder"_s, u"--eingebettet"_s, u"--datenordner"_s, u"--vorgang"_s, u"--hilfe"_s})
    EXPECT_TRUE(wirtsoptionen::hilfetext().contains(option)) << option.toStdString();
}
