// Manual pages and shell proposals say what the help says.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include "host/betrieb/Fassung.h"
#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/befehl/Dialogbefehle.h"
#include "host/kvobild/Befehle.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Ordner = QStringLiteral(SEITEN);

QString seite(const QString& name) {
  QFile datei(Ordner + u"/man/"_s + name + u".1"_s);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly)) << datei.fileName().toStdString();
  return QString::fromUtf8(datei.readAll());
}

/// The words of a page without what a formatter reads, on one line.
QString worte(QString text) {
  text.remove(u"\\fI"_s).remove(u"\\fR"_s).remove(u"\\fB"_s).remove(u"\\&"_s);
  text.replace(u"\\-"_s, u"-"_s).replace(u"\\e"_s, u"\\"_s);
  QStringList zeilen = text.split(u'\n');
  for (QString& zeile : zeilen)
    if (zeile.startsWith(".B "_L1)) zeile.remove(0, 3);
  zeilen.removeIf([](const QString& zeile) { return zeile.startsWith(u'.'); });
  return zeilen.join(u' ').simplified();
}

void erwarte_Optionen(const QString& text, const QList<Option>& optionen) {
  for (const Option& option : optionen)
    EXPECT_TRUE(text.contains((u"--"_s + option.name + u' ' + option.wert + u' ' + option.hilfe).simplified()))
        << option.name.toStdString() << " in " << text.toStdString();
}

/// What bash proposes behind these words, the last of which is being typed.
QStringList vorschlaege(const QString& programm, const QStringList& angefangen) {
  QStringList aufruf{programm};
  aufruf += angefangen;
  QProcess bash;
  bash.setWorkingDirectory(Ordner + u"/man"_s);
  bash.start(u"bash"_s,
      QStringList{u"--norc"_s, u"-c"_s,
          u"source \"$0\"; COMP_WORDS=(\"$@\"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _%1; printf '%s\\n' "
          "\"${COMPREPLY[@]}\""_s.arg(programm),
          Ordner + u"/bash/"_s + programm} +
          aufruf);
  EXPECT_TRUE(bash.waitForFinished());
  EXPECT_EQ(bash.readAllStandardError(), QByteArray());
  return QString::fromUtf8(bash.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

}  // namespace

TEST(Handbuchseiten, EachCommandHasAPageWithEachWordOfItsHelp) {
  const QString uebersicht = worte(seite(u"kvobild"_s));
  EXPECT_TRUE(uebersicht.contains(befehle::programm().schluss.simplified())) << uebersicht.toStdString();
  const QList<Befehl> alle = befehle::alle();
  EXPECT_EQ(QDir(Ordner + u"/man"_s, u"kvobild-*.1"_s).entryList().size(), alle.size());
  for (const Befehl& befehl : alle) {
    const QString name = u"kvobild-"_s + QString(befehl.name).replace(u' ', u'-');
    const QString text = worte(seite(name));
    EXPECT_TRUE(uebersicht.contains(befehl.name + u' ' + befehl.kurz)) << befehl.name.toStdString();
    EXPECT_TRUE(uebersicht.contains(name + u"(1)"_s)) << name.toStdString();
    EXPECT_TRUE(text.contains(befehl.erklaerung.simplified())) << text.toStdString();
    EXPECT_TRUE(text.contains(u"kvobild %1 [Optionen] %2"_s.arg(befehl.name, befehl.argumente).simplified()));
    erwarte_Optionen(text, befehl.optionen);
  }
}

TEST(Handbuchseiten, TheWindowsPageHasItsOptionsAndEachDialog) {
  const QString text = worte(seite(u"bildzuordnung"_s));
  EXPECT_TRUE(text.contains(wirtsoptionen::beschreibung().erklaerung.simplified())) << text.toStdString();
  erwarte_Optionen(text, wirtsoptionen::beschreibung().optionen);
  for (const Befehl& dialog : dialogbefehle::alle()) {
    EXPECT_TRUE(text.contains(dialog.erklaerung.simplified())) << dialog.name.toStdString();
    erwarte_Optionen(text, dialog.optionen);
  }
}

TEST(Handbuchseiten, TheHelpIsMadeOfTheSameWords) {
  const QString hilfe = wirtsoptionen::hilfetext().simplified();
  EXPECT_TRUE(hilfe.contains(wirtsoptionen::beschreibung().erklaerung.simplified()));
  erwarte_Optionen(hilfe, wirtsoptionen::beschreibung().optionen);
}

TEST(Handbuchseiten, AFormatterReadsThemWithoutAWarning) {
  const QString groff = QStandardPaths::findExecutable(u"groff"_s);
  if (groff.isEmpty()) GTEST_SKIP() << "groff is missing";
  for (const QString& name : QDir(Ordner + u"/man"_s, u"*.1"_s).entryList()) {
    QProcess lauf;
    lauf.start(groff, {u"-Kutf8"_s, u"-Tutf8"_s, u"-man"_s, u"-ww"_s, u"-P-cbou"_s, Ordner + u"/man/"_s + name});
    ASSERT_TRUE(lauf.waitForFinished());
    EXPECT_EQ(lauf.readAllStandardError(), QByteArray()) << name.toStdString();
    EXPECT_TRUE(lauf.readAllStandardOutput().contains("SIEHE AUCH")) << name.toStdString();
  }
}

TEST(Bashvorschlaege, CommandsTheirOptionsAndTheValuesOfThese) {
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"zu"_s}), QStringList{u"zuordnen"_s});
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"datenbank"_s, QString()}), (QStringList{u"anlegen"_s, u"pruefen"_s}));
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"zuordnen"_s, u"--ty"_s}), (QStringList{u"--typ1"_s, u"--typ2"_s}));
  const QStringList arten{u"BEL"_s, u"MON"_s, u"ART"_s, u"ANL"_s};
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"zuordnen"_s, u"--typ1"_s, QString()}), arten);
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"lesen"_s, u"--typ1"_s, u"="_s}), arten);
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"lesen"_s, u"--typ1"_s, u"="_s, u"M"_s}), QStringList{u"MON"_s});
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"aendern"_s, u"--drucken"_s, QString()}), (QStringList{u"ja"_s, u"nein"_s}));
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"bericht"_s, u"--je-seite"_s, QString()}),
      (QStringList{u"1"_s, u"2"_s, u"4"_s, u"6"_s}));
}

TEST(Bashvorschlaege, FilesAndFolders) {
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"zuordnen"_s, u"kvobild-zuo"_s}), QStringList{u"kvobild-zuordnen.1"_s});
  EXPECT_EQ(vorschlaege(u"kvobild"_s, {u"lesen"_s, u"--bilder"_s, Ordner + u"/m"_s}), QStringList{Ordner + u"/man"_s});
  EXPECT_EQ(
      vorschlaege(u"kvobild"_s, {u"lesen"_s, u"--verbindung"_s, u"kvobild-les"_s}), QStringList{u"kvobild-lesen.1"_s});
}

TEST(Bashvorschlaege, TheWindowAndItsDialogs) {
  EXPECT_EQ(vorschlaege(u"bildzuordnung"_s, {u"di"_s}), QStringList{u"dialog"_s});
  EXPECT_EQ(vorschlaege(u"bildzuordnung"_s, {u"dialog"_s, u"s"_s}), QStringList{u"suche"_s});
  EXPECT_EQ(vorschlaege(u"bildzuordnung"_s, {u"--vor"_s}), QStringList{u"--vorgang"_s});
  EXPECT_EQ(vorschlaege(u"bildzuordnung"_s, {u"dialog"_s, u"suche"_s, u"--ei"_s}),
      (QStringList{u"--eines"_s, u"--eingebettet"_s}));
}

TEST(Bashvorschlaege, EachCommandProposesAllOfItsOptions) {
  for (const Befehl& befehl : befehle::alle()) {
    QStringList soll;
    for (const Option& option : befehl.optionen) soll.append(u"--"_s + option.name);
    soll.append(u"--hilfe"_s);
    EXPECT_EQ(vorschlaege(u"kvobild"_s, befehl.name.split(u' ') + QStringList{u"--"_s}), soll)
        << befehl.name.toStdString();
  }
}
