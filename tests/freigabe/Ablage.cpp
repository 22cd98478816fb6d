#include "tests/freigabe/Ablage.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <algorithm>
#include <utility>

#include "imaging/Aufrichtung.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Frist = 120'000;

bool ist_Rest(const QString& relativ) {
  return relativ.section(u'/', -1).startsWith(u".kvo-"_s);
}

QByteArray text_von(const QString& name) {
  return u"Text zu %1: Größe, Straße"_s.arg(name).toLatin1();
}

}  // namespace

Ablage::Ablage() {
  EXPECT_TRUE(QDir().mkpath(baum()));
  EXPECT_EQ(fuehre(baum(), u"anlegen"_s, {}), 0) << gesagt_.toStdString();
}

QString Ablage::wartendes(const QString& name, bool gedreht) {
  QByteArray bytes = handyfoto::foto({240, 160}, gedreht ? 6 : 1);
  // No two pictures have the same bytes, so that one in the other's place shows; and each takes a while.
  bytes += QByteArray(100'000, 'x') + name.toUtf8();
  ganze_.insert(bytes);
  if (const auto ergebnis = aufrichtung::richte_auf(bytes); !ergebnis.bytes.isEmpty()) ganze_.insert(ergebnis.bytes);
  const qsizetype punkt = name.lastIndexOf(u'.');
  ordner_.schreibe(u"eingang/"_s + name.left(punkt) + name.mid(punkt + 1) + u".txt"_s, text_von(name));
  ganze_.insert(text_von(name));
  return ordner_.schreibe(u"eingang/"_s + name, bytes);
}

void Ablage::schreibe_freies(const QString& relativ) {
  const QByteArray bytes = handyfoto::foto({240, 160}, 1) + relativ.toUtf8();
  ganze_.insert(bytes);
  ordner_.schreibe(u"baum/"_s + relativ, bytes);
}

std::unique_ptr<QProcess> Ablage::beginne(
    const QString& baum, const QString& befehl, const QStringList& argumente) const {
  static const QStringList Satz{u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s, u"--key2"_s, u"1"_s};
  static const QStringList Ohne_Verbindung{u"drehen"_s};
  static const QStringList Mit_Satz{u"zuordnen"_s, u"aendern"_s, u"entfernen"_s, u"lesen"_s, u"ausgeben"_s};
  static const QStringList Mit_Baum{u"zuordnen"_s, u"umbenennen"_s, u"lesen"_s, u"aufraeumen"_s, u"ausgeben"_s};
  static const QStringList Mit_Ordner{u"zuordnen"_s, u"umbenennen"_s};
  QStringList worte{befehl};
  if (!Ohne_Verbindung.contains(befehl)) worte += {u"--verbindung"_s, datenbank()};
  if (Mit_Satz.contains(befehl)) worte += Satz;
  if (Mit_Baum.contains(befehl)) worte += {u"--bilder"_s, baum};
  if (Mit_Ordner.contains(befehl)) worte += {u"--ordner"_s, u"Belege/1"_s};
  auto prozess = std::make_unique<QProcess>();
  // The journal that the commands write is not its user's.
  QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
  umgebung.insert(u"XDG_DATA_HOME"_s, ordner_.pfad(u"daten"_s));
  prozess->setProcessEnvironment(umgebung);
  prozess->setStandardInputFile(QProcess::nullDevice());
  prozess->start(QStringLiteral(KVOBILD_PROGRAMM), worte + argumente);
  EXPECT_TRUE(prozess->waitForStarted());
  return prozess;
}

bool Ablage::endet(QProcess& prozess) {
  return prozess.state() == QProcess::NotRunning || prozess.waitForFinished(Frist);
}

int Ablage::fuehre(const QString& baum, const QString& befehl, const QStringList& argumente) const {
  const auto prozess = beginne(baum, befehl, argumente);
  EXPECT_TRUE(prozess->waitForFinished(Frist)) << befehl.toStdString() << " does not end";
  gesagt_ = QString::fromUtf8(prozess->readAllStandardError());
  return prozess->exitCode();
}

QList<QJsonObject> Ablage::zeilen() const {
  const auto prozess = beginne(baum(), u"lesen"_s, {u"--json"_s});
  EXPECT_TRUE(prozess->waitForFinished(Frist));
  QList<QJsonObject> alle;
  for (const QByteArray& zeile : prozess->readAllStandardOutput().split('\n'))
    if (!zeile.isEmpty()) alle.append(QJsonDocument::fromJson(zeile).object());
  return alle;
}

QStringList Ablage::alle_Dateien() const {
  QStringList alle;
  QDirIterator lauf(baum(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (lauf.hasNext()) alle.append(QDir(baum()).relativeFilePath(lauf.next()));
  alle.sort();
  return alle;
}

QStringList Ablage::dateien() const {
  QStringList alle = alle_Dateien();
  alle.removeIf(ist_Rest);
  return alle;
}

QStringList Ablage::reste() const {
  QStringList alle = alle_Dateien();
  alle.removeIf([](const QString& name) { return !ist_Rest(name); });
  return alle;
}

QStringList Ablage::weggelegte() const {
  const QDir korb(baum() + u".papierkorb"_s);
  QStringList alle;
  QDirIterator lauf(korb.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (lauf.hasNext()) alle.append(korb.relativeFilePath(lauf.next()));
  // The lists stand beside what they name.
  alle.removeIf([](const QString& name) { return !name.contains(u'/'); });
  return alle;
}

bool Ablage::ist_ganz(const QString& relativ) const {
  const QFileInfo datei(baum() + u'/' + relativ);
  const std::pair stand{datei.size(), datei.lastModified()};
  if (gesehen_.value(relativ) == stand) return true;
  const bool ganz = ganze_.contains(inhalt(relativ));
  if (ganz) gesehen_.insert(relativ, stand);
  return ganz;
}

QStringList Ablage::schlechte() const {
  QStringList schlecht;
  const QStringList angekuendigt = reste().filter(u"-p-"_s);
  for (const QString& name : dateien()) {
    // Empty files that keep a name free are announced, and go with what announces them.
    const bool platzhalter = inhalt(name).isEmpty() &&
        std::any_of(angekuendigt.begin(), angekuendigt.end(),
            [&](const QString& rest) { return rest.endsWith(u"-p-"_s + name.section(u'/', -1)); });
    if (!platzhalter && !ist_ganz(name)) schlecht.append(name);
  }
  for (const QString& name : weggelegte())
    if (!ganze_.contains(inhalt(u"../baum.papierkorb/"_s + name))) schlecht.append(u"im Papierkorb "_s + name);
  for (const QJsonObject& zeile : zeilen()) {
    const QString name = zeile[u"bildpfad"_s].toString().replace(u'\\', u'/') + u'/' + zeile[u"bildname"_s].toString();
    const QString endung = zeile[u"bildext"_s].toString();
    for (const QString& datei : {name + u'.' + endung, name + endung + u".txt"_s})
      if (!QFile::exists(baum() + u'/' + datei)) schlecht.append(u"Zeile ohne "_s + datei);
  }
  return schlecht;
}
