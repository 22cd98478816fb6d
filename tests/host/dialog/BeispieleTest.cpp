// The callers that the guide for hosts shows, as they stand there.
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "tests/host/dialog/Dialogtest.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString lies(const QString& name) {
  QFile datei(QStringLiteral(KVO_QUELLORDNER "/") + name);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly)) << name.toStdString();
  return QString::fromUtf8(datei.readAll());
}

}  // namespace

class Dialogbeispiele : public Dialogtest {
 protected:
  /// Runs a caller of the guide, which finds the program on the search path and the database in the environment.
  Dialogende rufe_Beispiel(const QString& name, const QStringList& argumente, const QString& fuehrung) const {
    QProcess prozess;
    QProcessEnvironment umgebung = this->umgebung();
    umgebung.insert(u"PATH"_s,
        QFileInfo(QStringLiteral(DIALOG_PROGRAMM)).path() + u':' + umgebung.value(u"PATH"_s, u"/usr/bin:/bin"_s));
    umgebung.insert(u"KVOBILD_VERBINDUNG"_s, datenordner() + u"/betrieb.db"_s);
    umgebung.insert(u"KVOBILD_BILDER"_s, bilder());
    umgebung.insert(u"KVO_FUEHRUNG"_s, fuehrung);
    prozess.setProcessEnvironment(umgebung);
    prozess.start(QStringLiteral(KVO_QUELLORDNER "/docs/beispiele/") + name, argumente);
    prozess.closeWriteChannel();
    return beende(prozess);
  }
};

TEST_F(Dialogbeispiele, ThePythonCallerTellsWhatWasSaved) {
  if (QStandardPaths::findExecutable(u"python3"_s).isEmpty()) GTEST_SKIP() << "python3 is missing";
  const Dialogende ende = rufe_Beispiel(u"zuordnen.py"_s, {u"AB"_s, u"24-1001"_s},
      u"fenster frm_BildZuordnung|klicke txt_BildText|taste Ctrl+A|tippe Aus Python|klicke SSC_ZuordnungSpeichern"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_EQ(ende.ausgabe, u"1 Zeile geschrieben: 1 geändert.\n  Heizkessel_0120240305_081500.jpg: geaendert\n"_s);
  EXPECT_EQ(zeilen().first(), u"Heizkessel_0120240305_081500.jpg|Aus Python"_s);
  const Dialogende falsch = rufe_Beispiel(u"zuordnen.py"_s, {u"AB"_s, u"24'1001"_s}, {});
  EXPECT_EQ(falsch.code, 2);
  EXPECT_TRUE(falsch.fehlerausgabe.contains(u"enthält ein Hochkomma"_s)) << falsch.fehlerausgabe.toStdString();
}

TEST_F(Dialogbeispiele, TheShellCallerOpensOneDialogAfterTheOther) {
  const Dialogende ende = rufe_Beispiel(u"zuordnen.sh"_s, {u"AB"_s, u"24-1001"_s}, u"klicke cmd_Abbruch"_s);
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_EQ(ende.ausgabe, u"Bilder suchen: nichts gewählt.\nNichts geändert.\n"_s);
  const Dialogende falsch = rufe_Beispiel(u"zuordnen.sh"_s, {u"AB"_s, u"24'1001"_s}, u"klicke cmd_Abbruch"_s);
  EXPECT_EQ(falsch.code, 2);
  EXPECT_TRUE(falsch.fehlerausgabe.contains(u"Der Aufruf ist falsch"_s)) << falsch.fehlerausgabe.toStdString();
}

TEST(Dialogkapitel, TheGuideShowsTheCallersAsTheyAreRun) {
  for (const auto& [datei, sprache] :
      {std::pair{u"zuordnen.py"_s, u"python"_s}, std::pair{u"zuordnen.sh"_s, u"sh"_s}}) {
    const QString beispiel = lies(u"docs/beispiele/"_s + datei);
    EXPECT_TRUE(lies(u"docs/EINBETTEN.md"_s).contains(u"\n```"_s + sprache + u'\n' + beispiel + u"```\n"_s))
        << datei.toStdString();
  }
}
