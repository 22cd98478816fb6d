#include "host/fenster/bericht/Berichtspost.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Programm = u"xdg-email"_s;

}  // namespace

bool berichtspost::moeglich() {
  return !QStandardPaths::findExecutable(Programm).isEmpty();
}

QString berichtspost::ordner() {
  QTemporaryDir neuer(QDir::tempPath() + u"/bildbericht-XXXXXX"_s);
  if (!neuer.isValid())
    throw Abbruch(
        Ausgang::Datei, u"Im Ordner „%1“ ist nicht zu schreiben: %2"_s.arg(QDir::tempPath(), neuer.errorString()));
  neuer.setAutoRemove(false);
  return neuer.path();
}

void berichtspost::raeume_weg(const QString& ordner) {
  QDir(ordner).removeRecursively();
}

void berichtspost::sende(const QString& betreff, const QString& datei) {
  QProcess prozess;
  prozess.setProgram(QStandardPaths::findExecutable(Programm));
  prozess.setArguments({u"--subject"_s, betreff, u"--attach"_s, datei});
  prozess.setStandardInputFile(QProcess::nullDevice());
  prozess.setStandardOutputFile(QProcess::nullDevice());
  if (!prozess.startDetached()) throw Abbruch(Ausgang::Datei, u"Das Mailprogramm lässt sich nicht öffnen."_s);
}
