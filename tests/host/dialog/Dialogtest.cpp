#include "tests/host/dialog/Dialogtest.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QJsonDocument>

#include "platform/adodb/Connection.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Geduld = 120'000;

/// Runs a program of the system that the tests rely on.
void verlange(const QString& programm, const QStringList& argumente) {
  QProcess lauf;
  lauf.start(programm, argumente);
  ASSERT_TRUE(lauf.waitForFinished(Geduld)) << programm.toStdString();
  ASSERT_EQ(lauf.exitCode(), 0) << lauf.readAllStandardError().toStdString();
}

}  // namespace

QJsonObject Dialogende::json() const {
  EXPECT_EQ(ausgabe.count(u'\n'), 1) << ausgabe.toStdString() << fehlerausgabe.toStdString();
  QJsonParseError fehler;
  const QJsonObject objekt = QJsonDocument::fromJson(ausgabe.toUtf8(), &fehler).object();
  EXPECT_EQ(fehler.error, QJsonParseError::NoError) << ausgabe.toStdString() << fehlerausgabe.toStdString();
  return objekt;
}

std::unique_ptr<Testordner>& Dialogtest::vorlage() {
  static std::unique_ptr<Testordner> eine;
  return eine;
}

void Dialogtest::SetUpTestSuite() {
  vorlage() = std::make_unique<Testordner>();
  verlange(QStringLiteral(KVOBILD_PROGRAMM), {u"beispieldaten"_s, vorlage()->pfad(u"daten"_s)});
}

void Dialogtest::TearDownTestSuite() {
  vorlage().reset();
}

void Dialogtest::SetUp() {
  QDir().mkpath(ordner_.pfad(u"heim"_s));
  verlange(u"cp"_s, {u"-a"_s, vorlage()->pfad(u"daten"_s), datenordner()});
}

QStringList Dialogtest::beleg() const {
  return {u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s, u"--key2"_s, u"24-1001"_s, u"--datenordner"_s, datenordner()};
}

QProcessEnvironment Dialogtest::umgebung() const {
  QProcessEnvironment umgebung;
  umgebung.insert(u"TZ"_s, u"Europe/Berlin"_s);
  umgebung.insert(u"HOME"_s, ordner_.pfad(u"heim"_s));
  umgebung.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
  for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
    if (qEnvironmentVariableIsSet(name)) umgebung.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
  return umgebung;
}

Dialogende Dialogtest::rufe(const QStringList& argumente, const QString& fuehrung) const {
  QProcessEnvironment umgebung = this->umgebung();
  umgebung.insert(u"KVO_FUEHRUNG"_s, fuehrung);
  return rufe(argumente, umgebung);
}

Dialogende Dialogtest::rufe(
    const QStringList& argumente, const QProcessEnvironment& umgebung, const QByteArray& eingabe) const {
  QProcess prozess;
  prozess.setProcessEnvironment(umgebung);
  prozess.setWorkingDirectory(ordner_.pfad());
  prozess.start(QStringLiteral(DIALOG_PROGRAMM), QStringList{u"dialog"_s} + argumente);
  prozess.write(eingabe);
  prozess.closeWriteChannel();
  return beende(prozess);
}

Dialogende Dialogtest::beende(QProcess& prozess) {
  const bool fertig = prozess.waitForFinished(Geduld);
  if (!fertig) prozess.kill();
  const bool normal = fertig && prozess.exitStatus() == QProcess::NormalExit;
  return {normal ? prozess.exitCode() : -1, QString::fromUtf8(prozess.readAllStandardOutput()),
      QString::fromUtf8(prozess.readAllStandardError())};
}

std::unique_ptr<QProcess> Dialogtest::beginne(
    const QStringList& argumente, const QString& fuehrung, const QString& worte) const {
  auto prozess = std::make_unique<QProcess>();
  QProcessEnvironment umgebung = this->umgebung();
  umgebung.insert(u"KVO_FUEHRUNG"_s, fuehrung);
  prozess->setProcessEnvironment(umgebung);
  prozess->start(QStringLiteral(DIALOG_PROGRAMM), QStringList{u"dialog"_s} + argumente);
  prozess->closeWriteChannel();
  prozess->setReadChannel(QProcess::StandardError);
  QByteArray gesagt;
  for (const QDeadlineTimer frist(Geduld); !frist.hasExpired() && !gesagt.contains(worte.toUtf8());)
    if (prozess->waitForReadyRead(100)) gesagt += prozess->readAllStandardError();
  EXPECT_TRUE(gesagt.contains(worte.toUtf8())) << gesagt.toStdString();
  return prozess;
}

QStringList Dialogtest::zeilen() const {
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Data Source="_s + datenordner() + u"/betrieb.db"_s);
  const auto satz = verbindung.Execute(
      u"select Bildname, BildExt, Beschreibung from Bild_Zuordnungen where Key2 = '24-1001' and Typ1 = 'BEL' order by "
      "SortIndex, Bildname"_s);
  QStringList liste;
  for (; !satz->Eof(); satz->MoveNext()) liste.append(satz->Text(0) + u'.' + satz->Text(1) + u'|' + satz->Text(2));
  return liste;
}

void Dialogtest::sql(const QString& anweisung) const {
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Data Source="_s + datenordner() + u"/betrieb.db"_s);
  verbindung.Execute(anweisung);
}
