#include "tests/host/kvobild/Kvobild.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "platform/adodb/Connection.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList dateien_unter(const QString& ordner) {
  QStringList liste;
  QDirIterator lauf(ordner, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (lauf.hasNext()) liste.append(QDir(ordner).relativeFilePath(lauf.next()));
  liste.sort();
  return liste;
}

}  // namespace

QList<QJsonObject> Lauf::objekte() const {
  QList<QJsonObject> liste;
  for (const QString& zeile : zeilen()) {
    QJsonParseError fehler{};
    const QJsonDocument dokument = QJsonDocument::fromJson(zeile.toUtf8(), &fehler);
    EXPECT_EQ(fehler.error, QJsonParseError::NoError) << zeile.toStdString();
    EXPECT_TRUE(dokument.isObject()) << zeile.toStdString();
    liste.append(dokument.object());
  }
  return liste;
}

QStringList kennungen(const Lauf& lauf, const QString& art) {
  QStringList liste;
  for (const QJsonObject& objekt : lauf.objekte())
    if (objekt[u"art"_s] == art) liste.append(objekt[u"kennung"_s].toString());
  return liste;
}

QJsonObject befund(const Lauf& lauf, const QString& kennung) {
  for (const QJsonObject& objekt : lauf.objekte())
    if (objekt[u"kennung"_s] == kennung) return objekt;
  return {};
}

Lauf kvobild(const QStringList& argumente, const QString& ausgabedatei, const QString& eingabe,
    const QMap<QString, QString>& dazu) {
  QProcess prozess;
  QProcessEnvironment umgebung;
  umgebung.insert(u"TZ"_s, u"Europe/Berlin"_s);
  // The sanitizers' settings are the only surroundings that count.
  for (const QString& name : {u"ASAN_OPTIONS"_s, u"UBSAN_OPTIONS"_s, u"XDG_RUNTIME_DIR"_s})
    if (qEnvironmentVariableIsSet(name.toUtf8().constData()))
      umgebung.insert(name, qEnvironmentVariable(name.toUtf8().constData()));
  static const QTemporaryDir heimat;
  umgebung.insert(u"XDG_DATA_HOME"_s, heimat.path());
  for (auto i = dazu.begin(); i != dazu.end(); ++i) umgebung.insert(i.key(), i.value());
  prozess.setProcessEnvironment(umgebung);
  prozess.setStandardInputFile(eingabe.isEmpty() ? QProcess::nullDevice() : eingabe);
  if (!ausgabedatei.isEmpty()) prozess.setStandardOutputFile(ausgabedatei);
  prozess.start(QStringLiteral(KVOBILD_PROGRAMM), argumente);
  EXPECT_TRUE(prozess.waitForFinished(120'000)) << "kvobild does not end";
  EXPECT_EQ(prozess.exitStatus(), QProcess::NormalExit);
  return {prozess.exitCode(), QString::fromUtf8(prozess.readAllStandardOutput()),
      QString::fromUtf8(prozess.readAllStandardError())};
}

Betrieb::Betrieb() {
  EXPECT_TRUE(QDir().mkpath(wurzel()));
  EXPECT_EQ(kvobild({u"anlegen"_s, u"--verbindung"_s, datenbank()}).code, 0);
}

QString Betrieb::bild(const QString& name, const QString& text) const {
  const QString pfad = ordner_.schreibe(u"eingang.neu/"_s + name, name.toUtf8());
  if (text.isEmpty()) return pfad;
  const qsizetype punkt = name.lastIndexOf(u'.');
  ordner_.schreibe(u"eingang.neu/"_s + name.left(punkt) + name.mid(punkt + 1) + u".txt"_s, text.toLatin1());
  return pfad;
}

Lauf Betrieb::fuehre(const QString& befehl, const QStringList& argumente) const {
  return kvobild(QStringList{befehl, u"--verbindung"_s, datenbank()} + satz_ + argumente);
}

Lauf Betrieb::zuordnen(const QStringList& argumente) const {
  return fuehre(u"zuordnen"_s, QStringList{u"--bilder"_s, wurzel(), u"--ordner"_s, u"Belege/1"_s} + argumente);
}

Lauf Betrieb::umbenennen(const QStringList& argumente) const {
  return kvobild(QStringList{u"umbenennen"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel(), u"--ordner"_s,
                     u"Belege\\1"_s} +
      argumente);
}

QList<QJsonObject> Betrieb::zeilen(const QStringList& satz) const {
  return kvobild(QStringList{u"lesen"_s, u"--json"_s, u"--verbindung"_s, datenbank(), u"--bilder"_s, wurzel()} + satz)
      .objekte();
}

QString Betrieb::stand() const {
  const Lauf lauf = kvobild({u"lesen"_s, u"--json"_s, u"--verbindung"_s, datenbank()});
  return lauf.ausgabe +
      dateien_unter(ordner_.pfad()).filter(QRegularExpression(u"^(?!betrieb|protokoll)"_s)).join(u'\n');
}

QStringList Betrieb::dateien() const {
  return dateien_unter(wurzel() + u"/Belege/1"_s);
}

void Betrieb::sql(const QString& anweisung) const {
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Data Source="_s + datenbank());
  verbindung.Execute(anweisung);
}

QString name_von(const QJsonObject& zeile) {
  return zeile[u"bildname"_s].toString() + u'.' + zeile[u"bildext"_s].toString();
}
