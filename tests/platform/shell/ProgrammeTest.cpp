#include <gtest/gtest.h>

#include <QFile>
#include <QTest>

#include "platform/files/Pfadkarte.h"
#include "platform/shell/Programme.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using shell::Befehlszeile;
using shell::Programm;

namespace {

/// Sets a variable for as long as it lives.
class Umgebungswert {
 public:
  Umgebungswert(const char* name, const QString& wert) : name_(name), vorher_(qgetenv(name)) {
    qputenv(name, wert.toUtf8());
  }
  ~Umgebungswert() { vorher_.isNull() ? qunsetenv(name_) : qputenv(name_, vorher_); }
  Umgebungswert(const Umgebungswert&) = delete;
  Umgebungswert& operator=(const Umgebungswert&) = delete;

 private:
  const char* name_;
  const QByteArray vorher_;
};

/// A folder with the system's table of file types and nothing else; one for all tests, since Qt keeps its place.
QString Dateitypen() {
  static const Testordner Ordner;
  static const bool Verbunden = QFile::link(u"/usr/share/mime"_s, Ordner.pfad(u"mime"_s));
  EXPECT_TRUE(Verbunden);
  return Ordner.pfad();
}

/// A desktop with the entries of the test and no others.
class Programme : public ::testing::Test {
 protected:
  void lege_Eintrag(const QString& name, const QByteArray& zeilen, bool des_Benutzers = false) {
    ordner.schreibe((des_Benutzers ? u"benutzer/"_s : u"system/"_s) + u"applications/"_s + name + u".desktop"_s,
        "[Desktop Entry]\nType=Application\n" + zeilen);
  }
  /// An entry for JPEG files.
  void lege_Jpeg(const QString& name, const QByteArray& dazu = {}, const QByteArray& exec = "/bin/true %f") {
    lege_Eintrag(name, "Name=" + name.toUtf8() + "\nExec=" + exec + "\nMimeType=image/jpeg;\n" + dazu);
  }
  QStringList namen(const QString& datei = u"foto.jpg"_s) {
    QStringList alle;
    for (const Programm& p : shell::Programme_fuer(ordner.schreibe(datei, {}))) alle.append(p.name);
    return alle;
  }
  /// A program that writes each of its arguments, and where it was started, as lines into a file.
  QString lege_Skript(const QString& name) {
    const QString skript = ordner.schreibe(name,
        "#!/bin/sh\n{ pwd; for a in \"$@\"; do printf '%s\\n' \"$a\"; done; } > '" +
            ordner.pfad(u"rufe.tmp"_s).toUtf8() + "' && mv '" + ordner.pfad(u"rufe.tmp"_s).toUtf8() + "' '" +
            ordner.pfad(u"rufe"_s).toUtf8() + "'\n");
    EXPECT_TRUE(QFile::setPermissions(skript, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    return skript;
  }
  QStringList warte_auf_Ruf() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return ordner.vorhanden(u"rufe"_s); }, 20'000));
    return ordner.vorhanden(u"rufe"_s) ? QString::fromUtf8(ordner.lies(u"rufe"_s)).split(u'\n', Qt::SkipEmptyParts)
                                       : QStringList();
  }

  Testordner ordner;
  Umgebungswert system_{"XDG_DATA_DIRS", ordner.pfad(u"system"_s) + u':' + Dateitypen()};
  Umgebungswert benutzer_{"XDG_DATA_HOME", ordner.pfad(u"benutzer"_s)};
  Umgebungswert einstellungen_{"XDG_CONFIG_HOME", ordner.pfad(u"config"_s)};
  Umgebungswert vorgaben_{"XDG_CONFIG_DIRS", ordner.pfad(u"config-system"_s)};
};

QStringList zeile(const QString& befehl, const QString& datei = u"/b/f.jpg"_s) {
  return Befehlszeile({u"Malen"_s, befehl, u"pinsel"_s, u"/e/malen.desktop"_s, {}}, datei);
}

}  // namespace

TEST_F(Programme, ProgramsForTheTypeComeByTheirNames) {
  lege_Jpeg(u"zeichnen"_s);
  lege_Jpeg(u"Ansehen"_s);
  lege_Eintrag(u"text"_s, "Name=Text\nExec=/bin/true\nMimeType=text/plain;\n");
  EXPECT_EQ(namen(), (QStringList{u"Ansehen"_s, u"zeichnen"_s}));
  EXPECT_EQ(namen(u"liste.csv"_s), QStringList{u"Text"_s}) << "a kind of text";
}

TEST_F(Programme, AliasesAndGeneralTypesCountToo) {
  lege_Eintrag(u"a"_s, "Name=A\nExec=/bin/true\nMimeType=image/x-bmp;\n");
  lege_Eintrag(u"b"_s, "Name=B\nExec=/bin/true\nMimeType=application/octet-stream;\n");
  ordner.schreibe(u"x.bmp"_s, "BM");
  EXPECT_EQ(namen(u"x.bmp"_s), (QStringList{u"A"_s, u"B"_s}));
}

TEST_F(Programme, DeletedMissingAndTerminalProgramsAreLeftOut) {
  lege_Jpeg(u"geht"_s);
  lege_Jpeg(u"geloescht"_s, "Hidden=true\n");
  lege_Jpeg(u"terminal"_s, "Terminal=true\n");
  lege_Jpeg(u"fehlt"_s, {}, "/gibt/es/nicht %f");
  lege_Jpeg(u"ohne Befehl"_s, {}, "");
  lege_Jpeg(u"Probe fehlt"_s, "TryExec=/gibt/es/nicht\n");
  lege_Eintrag(u"ordner"_s, "Name=O\nExec=/bin/true\nMimeType=image/jpeg;\nType=Link\n");
  EXPECT_EQ(namen(), (QStringList{u"geht"_s, u"O"_s})) << "of a key that stands twice the first counts";
}

TEST_F(Programme, AProgramThatIsKeptOutOfTheMenusStillOpensFiles) {
  lege_Jpeg(u"nur Dateien"_s, "NoDisplay=true\n");
  EXPECT_EQ(namen(), QStringList{u"nur Dateien"_s});
}

TEST_F(Programme, TheUsersEntryGoesBeforeTheSystemsOfTheSameName) {
  lege_Jpeg(u"malen"_s);
  lege_Eintrag(u"malen"_s, "Name=Meins\nExec=/bin/true\nMimeType=image/jpeg;\n", true);
  lege_Jpeg(u"weg"_s);
  lege_Eintrag(u"weg"_s, "Name=Weg\nExec=/bin/true\nHidden=true\nMimeType=image/jpeg;\n", true);
  EXPECT_EQ(namen(), QStringList{u"Meins"_s});
}

TEST_F(Programme, AnEntryInAFolderIsKnownByItsPathWithDashes) {
  lege_Jpeg(u"a"_s);
  ordner.schreibe(u"system/applications/firma/b.desktop"_s,
      "[Desktop Entry]\nType=Application\nName=B\nExec=/bin/true\nMimeType=image/jpeg;\n");
  ordner.schreibe(u"config/mimeapps.list"_s, "[Default Applications]\nimage/jpeg=firma-b.desktop\n");
  EXPECT_EQ(namen(), (QStringList{u"B"_s, u"a"_s}));
}

TEST_F(Programme, DefaultsComeFirstAddedOnesAreOfferedRemovedOnesNot) {
  for (const auto& name : {u"a"_s, u"b"_s, u"c"_s}) lege_Jpeg(name);
  lege_Eintrag(u"dazu"_s, "Name=Dazu\nExec=/bin/true\n");
  ordner.schreibe(u"config/mimeapps.list"_s,
      "[Default Applications]\nimage/jpeg=c.desktop;gibtsnicht.desktop\n"
      "[Added Associations]\nimage/jpeg=dazu.desktop\n[Removed Associations]\nimage/jpeg=a.desktop;\n");
  EXPECT_EQ(namen(), (QStringList{u"c"_s, u"Dazu"_s, u"b"_s}));
}

TEST_F(Programme, WhatTheUserSaysTheSystemCannotTakeBack) {
  for (const auto& name : {u"a"_s, u"b"_s}) lege_Jpeg(name);
  ordner.schreibe(u"config/mimeapps.list"_s,
      "[Added Associations]\nimage/jpeg=a.desktop;\n[Removed Associations]\nimage/jpeg=b.desktop;\n");
  ordner.schreibe(u"config-system/mimeapps.list"_s,
      "[Default Applications]\nimage/jpeg=b.desktop;\n[Removed Associations]\nimage/jpeg=a.desktop;\n");
  EXPECT_EQ(namen(), QStringList{u"a"_s});
}

TEST_F(Programme, NamesAreInTheUsersLanguage) {
  lege_Eintrag(
      u"a"_s, "Name=Viewer\nName[de]=Betrachter\\sNeu\nName[fr]=Visionneur\nExec=/bin/true\nMimeType=image/jpeg;\n");
  EXPECT_EQ(namen(), QStringList{u"Betrachter Neu"_s});
}

TEST(Befehlszeilen, FieldCodesAreReplaced) {
  EXPECT_EQ(zeile(u"malen %f"_s), (QStringList{u"malen"_s, u"/b/f.jpg"_s}));
  EXPECT_EQ(zeile(u"malen %F"_s), (QStringList{u"malen"_s, u"/b/f.jpg"_s}));
  EXPECT_EQ(zeile(u"malen %u"_s, u"/b/ä b.jpg"_s), (QStringList{u"malen"_s, u"file:///b/%C3%A4%20b.jpg"_s}));
  EXPECT_EQ(zeile(u"malen --titel %c --eintrag %k %U"_s),
      (QStringList{u"malen"_s, u"--titel"_s, u"Malen"_s, u"--eintrag"_s, u"/e/malen.desktop"_s, u"file:///b/f.jpg"_s}));
  EXPECT_EQ(zeile(u"malen --datei=%f"_s), (QStringList{u"malen"_s, u"--datei=/b/f.jpg"_s}));
}

TEST(Befehlszeilen, ThePercentSignAndTheIconAreWrittenOut) {
  EXPECT_EQ(
      zeile(u"malen 100%% %i %f"_s), (QStringList{u"malen"_s, u"100%"_s, u"--icon"_s, u"pinsel"_s, u"/b/f.jpg"_s}));
  EXPECT_EQ(Befehlszeile({u"M"_s, u"malen %i %f"_s, {}, {}, {}}, u"/f"_s), (QStringList{u"malen"_s, u"/f"_s}));
}

TEST(Befehlszeilen, OldCodesVanishAndAFileThatNobodyAsksForComesLast) {
  EXPECT_EQ(zeile(u"malen %d %m -x"_s), (QStringList{u"malen"_s, u"-x"_s, u"/b/f.jpg"_s}));
}

TEST(Befehlszeilen, QuotesHoldAnArgumentTogetherAndEscapesAreTakenAsTheyStand) {
  EXPECT_EQ(zeile(u"\"/opt/mein programm/malen\" \"\" -a %f"_s),
      (QStringList{u"/opt/mein programm/malen"_s, QString(), u"-a"_s, u"/b/f.jpg"_s}));
  EXPECT_EQ(
      zeile(uR"(malen "a \"b\" \\ \$c \`d" %f)"_s), (QStringList{u"malen"_s, uR"(a "b" \ $c `d)"_s, u"/b/f.jpg"_s}));
  EXPECT_EQ(zeile(u"malen   a\tb %f"_s), (QStringList{u"malen"_s, u"a"_s, u"b"_s, u"/b/f.jpg"_s}));
}

TEST(Befehlszeilen, ACommandThatCannotBeReadGivesNothing) {
  EXPECT_EQ(zeile(u"malen \"offen %f"_s), QStringList());
  EXPECT_EQ(zeile({}), QStringList());
}

TEST(Befehlszeilen, AnyPathCanBeWrittenAsACommand) {
  for (const QString& pfad : {u"/opt/a b"_s, u"/opt/100%"_s, uR"(/opt/"a"\$`)"_s})
    EXPECT_EQ(zeile(shell::als_Argument(pfad) + u" %f"_s), (QStringList{pfad, u"/b/f.jpg"_s}));
}

TEST_F(Programme, AProgramStartsDetachedInItsFolderAndItsNameComesBack) {
  const QString skript = lege_Skript(u"mal programm.sh"_s);
  const QString wo = ordner.pfad(u"system"_s);
  ordner.schreibe(u"system/x"_s, {});
  EXPECT_EQ(shell::starte({skript, u"eins zwei"_s, u"$HOME"_s}, wo), skript);
  EXPECT_EQ(warte_auf_Ruf(), (QStringList{wo, u"eins zwei"_s, u"$HOME"_s}));
}

TEST_F(Programme, WhatCannotStartGivesNoName) {
  EXPECT_EQ(shell::starte({}, {}), QString());
  EXPECT_EQ(shell::starte({u"/gibt/es/nicht"_s}, {}), QString());
  EXPECT_EQ(shell::starte({ordner.schreibe(u"nicht ausführbar"_s, "x")}, {}), QString());
}

// ── Open With ───────────────────────────────────────────────────────────────────────────────────────────────────────

namespace {

class Wahldoppel final : public shell::Programmwahl {
 public:
  QStringList waehle(const QString& datei, const QList<Programm>& programme, QString& wo) override {
    gefragt = datei;
    for (const Programm& p : programme) angeboten.append(p.name);
    wo = verzeichnis;
    return befehlszeile;
  }
  QString gefragt;
  QStringList angeboten;
  QStringList befehlszeile;
  QString verzeichnis;
};

class OeffnenMit : public Programme {
 protected:
  OeffnenMit() : vorher_(shell::setze(wahl)) {
    Pfadkarte::aktuell().setze(u"P:"_s, ordner.pfad());
    ordner.schreibe(u"foto.jpg"_s, {});
  }
  ~OeffnenMit() override {
    shell::setze(vorher_);
    Pfadkarte::aktuell().entferne(u"P:"_s);
  }
  const std::shared_ptr<Wahldoppel> wahl = std::make_shared<Wahldoppel>();
  MeldungsDoppel meldungen;

 private:
  std::shared_ptr<shell::Programmwahl> vorher_;
};

}  // namespace

TEST_F(OeffnenMit, TheChosenProgramStartsOnTheFile) {
  lege_Jpeg(u"malen"_s);
  const QString skript = lege_Skript(u"malen.sh"_s);
  wahl->befehlszeile = {skript, ordner.pfad(u"foto.jpg"_s)};
  wahl->verzeichnis = ordner.pfad();
  EXPECT_EQ(shell::OpenAs(u"P:\\FOTO.jpg"_s), skript);
  EXPECT_EQ(wahl->gefragt, ordner.pfad(u"foto.jpg"_s));
  EXPECT_EQ(wahl->angeboten, QStringList{u"malen"_s});
  EXPECT_EQ(warte_auf_Ruf(), (QStringList{ordner.pfad(), ordner.pfad(u"foto.jpg"_s)}));
}

TEST_F(OeffnenMit, WhoChoosesNothingStartsNothing) {
  EXPECT_EQ(shell::OpenAs(u"P:\\foto.jpg"_s), QString());
}

TEST_F(OeffnenMit, AMissingFileIsToldAndNothingIsAsked) {
  meldungen.erwarte({u"Die Datei „P:\\weg.jpg“ gibt es nicht."_s, u"Achtung"_s, oberflaeche::Symbol::Ausrufezeichen});
  EXPECT_EQ(shell::OpenAs(u"P:\\weg.jpg"_s), QString());
  EXPECT_TRUE(wahl->gefragt.isEmpty());
}

TEST_F(OeffnenMit, AProgramThatDoesNotStartIsTold) {
  wahl->befehlszeile = {u"/gibt/es/nicht"_s};
  meldungen.erwarte(
      {u"Das Programm „/gibt/es/nicht“ ließ sich nicht starten."_s, u"Achtung"_s, oberflaeche::Symbol::Ausrufezeichen});
  EXPECT_EQ(shell::OpenAs(u"P:\\foto.jpg"_s), QString());
}

TEST_F(OeffnenMit, WithoutAServiceNothingIsChosen) {
  shell::setze(std::shared_ptr<shell::Programmwahl>());
  EXPECT_EQ(shell::OpenAs(u"P:\\foto.jpg"_s), QString());
  shell::setze(wahl);
}
