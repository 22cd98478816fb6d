#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>

#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Ergebnis {
  int ausgang = -1;
  QString ausgabe;
  QString fehlerausgabe;
};

/// The program in a bare container's surroundings, with what is given besides.
Ergebnis starte(const QStringList& argumente, const QString& heim, const QString& bildschirm = {}) {
  QProcessEnvironment umgebung;
  umgebung.insert(u"TZ"_s, u"Europe/Berlin"_s);
  umgebung.insert(u"HOME"_s, heim);
  if (!bildschirm.isEmpty()) umgebung.insert(u"DISPLAY"_s, bildschirm);
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS"})
    if (qEnvironmentVariableIsSet(name)) umgebung.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
  QProcess prozess;
  prozess.setProcessEnvironment(umgebung);
  prozess.start(QStringLiteral(BILDZUORDNUNG_PROGRAMM), argumente);
  const bool fertig = prozess.waitForFinished(240'000);
  EXPECT_TRUE(fertig) << "the tour does not end";
  if (!fertig) prozess.kill();
  return {prozess.exitStatus() == QProcess::NormalExit ? prozess.exitCode() : -1,
      QString::fromUtf8(prozess.readAllStandardOutput()), QString::fromUtf8(prozess.readAllStandardError())};
}

/// The pictures' names that the tour printed.
QStringList gemeldete_Bilder(const QString& ausgabe) {
  QStringList bilder;
  for (const QString& zeile : ausgabe.split(u'\n'))
    if (zeile.startsWith("    Bild "_L1)) bilder.append(zeile.mid(9));
  return bilder;
}

int farbenzahl(const QImage& bild) {
  QSet<QRgb> farben;
  for (int y = 0; y < bild.height(); y += 3)
    for (int x = 0; x < bild.width(); x += 3) farben.insert(bild.pixel(x, y));
  return static_cast<int>(farben.size());
}

void pruefe_Bilder(const QString& ordner, const QString& ausgabe) {
  const QStringList bilder = gemeldete_Bilder(ausgabe);
  EXPECT_EQ(bilder.size(), 51);
  EXPECT_EQ(QDir(ordner).entryList({u"*.png"_s}, QDir::Files), bilder);
  QImage voriges;
  for (const QString& name : bilder) {
    const QImage bild(ordner + u'/' + name);
    EXPECT_GE(bild.width(), 400) << name.toStdString();
    EXPECT_GT(farbenzahl(bild), 50) << name.toStdString() << " is blank";
    EXPECT_NE(bild, voriges) << name.toStdString() << " shows what the one before it does";
    voriges = bild;
  }
}

const QString Endstand =
    u"Die Datenbank hielt vorher zu RE 24-2003:\n"
    "    0 Belege\\24-2003\\Bad_0520240305_091500.jpg „Vor der Sanierung“ Druck 0001\n"
    "    1 Belege\\24-2003\\Bad_0620240305_093000.jpg „Nach der Sanierung“ Druck 0001\n"
    "    2 Belege\\24-2003\\Dusche_0720240305_094500.jpg „Bodengleich, Rinne an der Wand“ Druck 0001\n"
    "    3 Belege\\24-2003\\Fliesen_0820240305_100000.jpg „Muster, 30 × 60 cm“ Druck 0001\n"
    "Die Datenbank hält jetzt zu RE 24-2003:\n"
    "    0 Belege\\24-2003\\Gästebad_06.jpg „Übergabe an Frau Öztürk: / schön geworden, „weiß“ passt“ Druck 1000\n"
    "    1 Belege\\24-2003\\Bad_0520240305_091500.jpg „Vor der Sanierung“ Druck 0001\n"_s;

/// An X server of its own for as long as it lives.
class Xserver {
 public:
  bool starte() {
    const QString programm = QStandardPaths::findExecutable(u"Xvfb"_s);
    if (programm.isEmpty()) return false;
    // It picks a free number itself and tells it when it is ready.
    prozess_.start(
        programm, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1600x1200x24"_s, u"-nolisten"_s, u"tcp"_s});
    if (!prozess_.waitForReadyRead(30'000)) return false;
    nummer_ = u':' + QString::fromLatin1(prozess_.readLine()).trimmed();
    return nummer_.size() > 1;
  }
  ~Xserver() {
    prozess_.terminate();
    prozess_.waitForFinished();
  }
  const QString& nummer() const { return nummer_; }

 private:
  QProcess prozess_;
  QString nummer_;
};

}  // namespace

TEST(Rundgang, ItRunsThroughWithoutAScreenAndItsPicturesShowSomething) {
  const Testordner ordner;
  ordner.schreibe(u"bilder/01_fenster_leer.png"_s, "alt");
  ordner.schreibe(u"bilder/fremd.txt"_s, "fremd");
  const Ergebnis lauf = starte({u"--rundgang"_s, ordner.pfad(u"bilder"_s)}, ordner.pfad(u"heim"_s));
  EXPECT_EQ(lauf.ausgang, 0) << lauf.ausgabe.toStdString();
  EXPECT_EQ(lauf.fehlerausgabe, QString());
  EXPECT_TRUE(lauf.ausgabe.contains(Endstand)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.endsWith(u", 0 Fehler\n"_s)) << lauf.ausgabe.toStdString();
  pruefe_Bilder(ordner.pfad(u"bilder"_s), lauf.ausgabe);
  EXPECT_EQ(ordner.lies(u"bilder/fremd.txt"_s), "fremd");
  // Nothing of the user's is read or written.
  EXPECT_FALSE(ordner.vorhanden(u"heim"_s));
}

TEST(Rundgang, ASecondOneInTheSameFolderBeginsAgainWithNewData) {
  const Testordner ordner;
  ordner.schreibe(u"daten/Rundgang.txt"_s, "von einem fr\xC3\xBCheren");
  ordner.schreibe(u"daten/betrieb/betrieb.db"_s, "halb");
  const Ergebnis lauf = starte({u"--rundgang"_s, ordner.pfad()}, ordner.pfad(u"heim"_s));
  EXPECT_EQ(lauf.ausgang, 0) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(Endstand)) << lauf.ausgabe.toStdString();
}

TEST(Rundgang, WhatItDoesNotSeeMakesTheExitCode1) {
  const Testordner ordner;
  // A folder stands where a picture should.
  ordner.schreibe(u"05_filter.png/im_Weg.txt"_s, "x");
  const Ergebnis lauf = starte({u"--rundgang"_s, ordner.pfad()}, ordner.pfad(u"heim"_s));
  EXPECT_EQ(lauf.ausgang, 1) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(u"    FEHLER: "_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.endsWith(u", 1 Fehler\n"_s)) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(ordner.vorhanden(u"fehler.png"_s));
}

TEST(Rundgang, AForeignFolderNamedDatenStaysAsItIs) {
  const Testordner ordner;
  ordner.schreibe(u"daten/betrieb/wichtig.txt"_s, "wichtig");
  const Ergebnis lauf = starte({u"--rundgang"_s, ordner.pfad()}, ordner.pfad(u"heim"_s));
  EXPECT_EQ(lauf.ausgang, 4);
  EXPECT_EQ(lauf.fehlerausgabe,
      u"bildzuordnung: Der Ordner „%1“ ist nicht von einem Rundgang; er bleibt, wie er ist.\n"_s.arg(
          ordner.pfad(u"daten"_s)));
  EXPECT_EQ(ordner.lies(u"daten/betrieb/wichtig.txt"_s), "wichtig");
}

TEST(Rundgang, ItDoesNotRunWithTheUsersData) {
  const Testordner ordner;
  for (const QString& option : {u"--datenordner"_s, u"--verbindung"_s, u"--bilder"_s, u"--vorgang"_s}) {
    const Ergebnis lauf = starte({u"--rundgang"_s, ordner.pfad(), option, u"x"_s}, ordner.pfad(u"heim"_s));
    EXPECT_EQ(lauf.ausgang, 2) << option.toStdString();
    EXPECT_TRUE(lauf.fehlerausgabe.contains(u"verträgt kein „%1“"_s.arg(option))) << lauf.fehlerausgabe.toStdString();
  }
  EXPECT_FALSE(ordner.vorhanden(u"daten"_s));
}

TEST(RundgangUnterX, ItRunsThroughInRealWindows) {
  Xserver server;
  if (!server.starte()) GTEST_SKIP() << "no X server to be had: install xvfb";
  const Testordner ordner;
  const Ergebnis lauf = starte({u"--rundgang"_s, ordner.pfad()}, ordner.pfad(u"heim"_s), server.nummer());
  EXPECT_EQ(lauf.ausgang, 0) << lauf.ausgabe.toStdString();
  EXPECT_TRUE(lauf.ausgabe.contains(Endstand)) << lauf.ausgabe.toStdString();
  pruefe_Bilder(ordner.pfad(), lauf.ausgabe);
}
