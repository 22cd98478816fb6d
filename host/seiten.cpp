// Writes the manual pages of both programs and what bash proposes for them into a folder. Runs while they are built.

#include <QDir>
#include <QFile>
#include <cstdio>

#include "host/beschreibung/Handbuchseite.h"
#include "host/beschreibung/Vorschlaege.h"
#include "host/betrieb/Fassung.h"
#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/befehl/Dialogbefehle.h"
#include "host/kvobild/Befehle.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool schreibe(const QString& ort, const QString& text) {
  QFile datei(ort);
  const QByteArray bytes = text.toUtf8();
  if (datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size()) return true;
  static_cast<void>(std::fprintf(stderr, "%s: %s\n", qPrintable(ort), qPrintable(datei.errorString())));
  return false;
}

/// As the program with the window is called.
QList<Befehl> dialoge_als_Befehle() {
  QList<Befehl> liste = dialogbefehle::alle();
  for (Befehl& befehl : liste) befehl.name.prepend(u"dialog "_s);
  return liste;
}

bool schreibe_alle(const QString& ordner) {
  const QDir ziel(ordner);
  if (!ziel.mkpath(u"man"_s) || !ziel.mkpath(u"bash"_s)) return false;
  const Befehl& fenster = wirtsoptionen::beschreibung();
  const QString nummer = fassung::nummer();
  QList<Handbuchseite> seiten = handbuchseiten::mit_Befehlen(befehle::programm(), befehle::alle(), nummer);
  seiten.append(handbuchseiten::mit_Dialogen(fenster, dialogbefehle::programm(), dialogbefehle::alle(), nummer));
  for (const Handbuchseite& seite : seiten)
    if (!schreibe(ziel.filePath(u"man/"_s + seite.datei), seite.text)) return false;
  return schreibe(ziel.filePath(u"bash/kvobild"_s),
             vorschlaege::bash(u"kvobild"_s, befehlszeile::programm_Optionen(), befehle::alle())) &&
      schreibe(ziel.filePath(u"bash/bildzuordnung"_s),
          vorschlaege::bash(u"bildzuordnung"_s, fenster.optionen, dialoge_als_Befehle()));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && schreibe_alle(QString::fromLocal8Bit(argv[1]))) return 0;
  static_cast<void>(std::fputs("Aufruf: kvo_seiten ORDNER\n", stderr));
  return 1;
}
