// A server's password reaches a dialog by the environment or by standard input, and nothing else knows it.
#include <QDirIterator>
#include <QFile>
#include <QTest>
#include <csignal>
#include <optional>

#include "tests/host/dialog/Dialogtest.h"
#include "tests/support/Tdsserver.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Kennwort = u"Zwetschge;Spargel'Rettich ä€"_s;
const QStringList Stuecke{u"Zwetschge"_s, u"Spargel"_s, u"Rettich"_s};

}  // namespace

class Dialogserver : public Dialogtest {
 protected:
  void SetUp() override {
    if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    Dialogtest::SetUp();
    server_.emplace(u"buero"_s, Kennwort, Tdsserver::Maschine::Sqlite,
        QStringList{u"--datei"_s, datenordner() + u"/betrieb.db"_s, u"--ohne-tabellen"_s});
    ASSERT_TRUE(server_->laeuft());
  }

  QStringList vom_Server(const QString& dialog) const {
    return {dialog, u"--json"_s, u"--typ1=BEL"_s, u"--key1=AB"_s, u"--key2=24-1001"_s, u"--bilder"_s, bilder(),
        u"--verbindung"_s,
        u"Provider=SQLOLEDB;Driver=FreeTDS;Data Source=127.0.0.1,%1;Initial Catalog=betrieb;User ID=buero;Connect Timeout=3"_s
            .arg(server_->port())};
  }
  QProcessEnvironment mit_Kennwort(const QString& kennwort, const QString& fuehrung) const {
    QProcessEnvironment umgebung = this->umgebung();
    umgebung.insert(u"KVO_FUEHRUNG"_s, fuehrung);
    if (!kennwort.isNull()) umgebung.insert(u"KVOBILD_KENNWORT"_s, kennwort);
    return umgebung;
  }
  static void pruefe(const QString& text, const char* was) {
    for (const QString& stueck : Stuecke)
      EXPECT_FALSE(text.contains(stueck, Qt::CaseInsensitive)) << was << ": " << text.toStdString();
  }
  void pruefe(const Dialogende& ende) const {
    pruefe(ende.ausgabe, "standard output");
    pruefe(ende.fehlerausgabe, "standard error");
    QDirIterator dateien(ordner_.pfad(u"heim"_s), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (dateien.hasNext()) {
      QFile datei(dateien.next());
      ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
      pruefe(QString::fromUtf8(datei.readAll()), "a file of the home");
    }
  }

  const QString zurueck_ = u"fenster frm_BildZuordnung|klicke cmd_Abbruch"_s;
  std::optional<Tdsserver> server_;
};

TEST_F(Dialogserver, ThePasswordComesByEnvironmentOrByStandardInput) {
  const QStringList aufruf = vom_Server(u"zuordnung"_s);
  const Dialogende umgebung = rufe(aufruf, mit_Kennwort(Kennwort, zurueck_));
  EXPECT_EQ(umgebung.code, 0) << umgebung.fehlerausgabe.toStdString();
  pruefe(umgebung);
  for (const QByteArray& ende : {QByteArray("\n"), QByteArray("\r\n"), QByteArray(), QByteArray("\nzweite Zeile\n")}) {
    const Dialogende eingabe =
        rufe(aufruf + QStringList{u"--kennwort-von-stdin"_s}, mit_Kennwort({}, zurueck_), Kennwort.toUtf8() + ende);
    EXPECT_EQ(eingabe.code, 0) << eingabe.fehlerausgabe.toStdString();
    EXPECT_TRUE(eingabe.json()[u"geoeffnet"_s].toBool());
    pruefe(eingabe);
  }
  const Dialogende beide = rufe(
      aufruf + QStringList{u"--kennwort-von-stdin"_s}, mit_Kennwort(u"falsch"_s, zurueck_), Kennwort.toUtf8() + '\n');
  EXPECT_EQ(beide.code, 0) << "standard input counts before the environment: " << beide.fehlerausgabe.toStdString();
}

TEST_F(Dialogserver, AWrongOrMissingPasswordEndsWith3AndIsNotShown) {
  const QStringList aufruf = vom_Server(u"zuordnung"_s);
  const Dialogende falsches = rufe(aufruf, mit_Kennwort(Kennwort + u'x', {}));
  EXPECT_EQ(falsches.code, 3);
  EXPECT_TRUE(falsches.fehlerausgabe.contains(u"hat die Anmeldung abgelehnt"_s))
      << falsches.fehlerausgabe.toStdString();
  EXPECT_FALSE(falsches.json()[u"geoeffnet"_s].toBool(true));
  pruefe(falsches);
  const Dialogende keines = rufe(aufruf, mit_Kennwort({}, {}));
  EXPECT_EQ(keines.code, 3);
  EXPECT_EQ(keines.fehlerausgabe,
      u"bildzuordnung: Der Datenbank fehlt das Kennwort; KVOBILD_KENNWORT oder „--kennwort-von-stdin“ nennt es.\n"_s);
}

TEST_F(Dialogserver, ADeadServerIsToldAndEndsWith3) {
  QStringList aufruf = vom_Server(u"weitere"_s);
  aufruf.last().replace(QString::number(server_->port()), u"1"_s);
  const Dialogende ende = rufe(aufruf, mit_Kennwort(Kennwort, {}));
  EXPECT_EQ(ende.code, 3);
  EXPECT_TRUE(ende.json()[u"text"_s].toString().contains(u"ist nicht zu erreichen"_s)) << ende.ausgabe.toStdString();
  pruefe(ende);
}

TEST_F(Dialogserver, NoListOfProcessesShowsThePassword) {
  QProcess prozess;
  prozess.setProcessEnvironment(mit_Kennwort({}, u"fenster frm_BildZuordnung|sage"_s));
  prozess.start(QStringLiteral(DIALOG_PROGRAMM),
      QStringList{u"dialog"_s} + vom_Server(u"zuordnung"_s) + QStringList{u"--kennwort-von-stdin"_s});
  prozess.write(Kennwort.toUtf8() + '\n');
  prozess.closeWriteChannel();
  prozess.setReadChannel(QProcess::StandardError);
  while (!prozess.canReadLine()) ASSERT_TRUE(prozess.waitForReadyRead(60'000));
  pruefe(QString::fromUtf8(prozess.readAllStandardError()), "the window");
  for (const QString& liste : {u"cmdline"_s, u"environ"_s}) {
    QFile datei(u"/proc/%1/"_s.arg(prozess.processId()) + liste);
    ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
    const QByteArray inhalt = datei.readAll();
    EXPECT_TRUE(inhalt.contains(liste == "cmdline"_L1 ? "--kennwort-von-stdin" : "KVO_FUEHRUNG"));
    pruefe(QString::fromUtf8(inhalt), "the list of processes");
  }
  prozess.terminate();
  pruefe(beende(prozess));
}

TEST_F(Dialogserver, WhatIsBeingWrittenWhenTheSignalComesIsWrittenToItsEnd) {
  server_->steuere(u"langsam 1/Update 2"_s);
  server_->steuere(u"protokoll-leeren"_s);
  QProcess prozess;
  prozess.setProcessEnvironment(mit_Kennwort(Kennwort,
      u"fenster frm_BildZuordnung|klicke txt_BildText|taste Ctrl+A|tippe geschrieben|klicke SSC_ZuordnungSpeichern"_s));
  prozess.start(QStringLiteral(DIALOG_PROGRAMM), QStringList{u"dialog"_s} + vom_Server(u"zuordnung"_s));
  prozess.closeWriteChannel();
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return !server_->stapel().filter(u"update"_s, Qt::CaseInsensitive).isEmpty(); }, 60'000));
  ASSERT_GT(prozess.processId(), 0);
  ASSERT_EQ(::kill(static_cast<pid_t>(prozess.processId()), SIGTERM), 0);
  const Dialogende ende = beende(prozess);
  // Nothing was left to be cut off.
  EXPECT_EQ(ende.code, 0) << ende.fehlerausgabe.toStdString();
  EXPECT_EQ(ende.json()[u"geaendert"_s].toInt(), 1);
  EXPECT_TRUE(ende.json()[u"geprueft"_s].toBool());
  EXPECT_EQ(
      server_->steuere(u"sql select count(*) from Bild_Zuordnungen where Beschreibung = 'geschrieben'"_s), u"[[1]]"_s);
}
