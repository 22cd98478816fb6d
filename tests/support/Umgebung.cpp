#include "tests/support/Umgebung.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <ostream>

using namespace Qt::Literals::StringLiterals;

Testordner::Testordner() {
  if (!ordner_.isValid()) qFatal("no temporary folder");
}

QString Testordner::schreibe(const QString& name, const QByteArray& inhalt) const {
  const QString ziel = pfad(name);
  if (!QDir().mkpath(QFileInfo(ziel).path())) qFatal("no folder for %s", qUtf8Printable(ziel));
  QFile datei(ziel);
  if (!datei.open(QIODevice::WriteOnly) || datei.write(inhalt) != inhalt.size())
    qFatal("cannot write %s", qUtf8Printable(ziel));
  return ziel;
}

QByteArray Testordner::lies(const QString& name) const {
  QFile datei(pfad(name));
  if (!datei.open(QIODevice::ReadOnly)) {
    ADD_FAILURE() << "cannot read " << qUtf8Printable(name);
    return {};
  }
  return datei.readAll();
}

bool Testordner::vorhanden(const QString& name) const {
  return QFileInfo::exists(pfad(name));
}

QString testdaten(const QString& name) {
  QString wurzel = qEnvironmentVariable("KVO_TESTDATEN");
  if (wurzel.isEmpty()) wurzel = QStringLiteral(KVO_QUELLORDNER "/../shared/testdata");
  const QString ziel = wurzel + u'/' + name;
  return QFileInfo::exists(ziel) ? ziel : QString();
}

void PrintTo(const QString& text, std::ostream* os) {
  *os << '"' << text.toStdString() << '"';
}
