#include "host/fenster/Wirtsoptionen.h"

#include <QCommandLineParser>
#include <QStandardPaths>

#include "host/Ausgang.h"
#include "host/Datenbank.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Abbruch falscher_aufruf(const QString& text) {
  return {Ausgang::Aufruf, text + u" Hilfe gibt „bildzuordnung --hilfe“."_s};
}

const QStringList& mit_Wert() {
  static const QStringList Namen{u"verbindung"_s, u"bilder"_s, u"datenordner"_s, u"vorgang"_s};
  return Namen;
}

/// What is wrong with arguments that the parser refuses, in words of our own: Qt's are English.
QString grund(const QCommandLineParser& leser, const QStringList& argumente) {
  const QStringList unbekannte = leser.unknownOptionNames();
  if (!unbekannte.isEmpty()) return u"Die Option „%1“ gibt es nicht."_s.arg(unbekannte.first());
  for (const QString& name : mit_Wert())
    if (!argumente.isEmpty() && argumente.last() == u"--"_s + name) return u"Hinter „--%1“ fehlt der Wert."_s.arg(name);
  return u"Der Aufruf ist nicht zu verstehen."_s;
}

QString wert(const QCommandLineParser& leser, const QString& name) {
  if (!leser.isSet(name)) return {};
  if (leser.value(name).isEmpty()) throw falscher_aufruf(u"„--%1“ ist leer."_s.arg(name));
  return leser.value(name);
}

}  // namespace

Wirtsoptionen wirtsoptionen::lies(const QStringList& argumente) {
  QCommandLineParser leser;
  leser.addOption(QCommandLineOption(QStringList{u"h"_s, u"hilfe"_s}));
  for (const QString& name : mit_Wert()) leser.addOption(QCommandLineOption(name, {}, u"WERT"_s));
  if (!leser.parse(QStringList{u"bildzuordnung"_s} + argumente)) throw falscher_aufruf(grund(leser, argumente));
  if (!leser.positionalArguments().isEmpty())
    throw falscher_aufruf(u"„%1“ ist zu viel."_s.arg(leser.positionalArguments().first()));
  Wirtsoptionen optionen;
  optionen.hilfe = leser.isSet(u"hilfe"_s);
  const QString angabe = wert(leser, u"verbindung"_s);
  if (!angabe.isEmpty()) optionen.verbindung = verbindung_aus_angabe(angabe);
  optionen.bilder = wert(leser, u"bilder"_s);
  optionen.vorgang = wert(leser, u"vorgang"_s);
  optionen.datenordner = wert(leser, u"datenordner"_s);
  if (optionen.datenordner.isEmpty())
    optionen.datenordner =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/kvobildzuordnung"_s;
  return optionen;
}

QString wirtsoptionen::hilfetext() {
  return u"bildzuordnung zeigt die Vorgänge eines Betriebs und ordnet ihnen Bilder zu.\n\n"
         "Aufruf: bildzuordnung [Optionen]\n\n"
         "Optionen:\n"
         "  --verbindung DATENBANK   die Datenbank, etwa \"Provider=SQLite;Data Source=/pfad/bilder.db\";\n"
         "                           ein bloßer Dateiname meint eine SQLite-Datei\n"
         "  --bilder ORDNER          Wurzel der Bildablage\n"
         "  --datenordner ORDNER     eigener Ordner des Programms; der erste Start legt darin Datenbank und\n"
         "                           Bildablage mit Beispielen an. Sonst „kvobildzuordnung“ im Ordner\n"
         "                           für Anwendungsdaten\n"
         "  --vorgang NUMMER         beginnt mit diesem Vorgang, etwa \"AB 24-1001\"\n"
         "  -h, --hilfe              diese Hilfe\n\n"
         "Ohne --verbindung gilt die Datenbank im Datenordner, ohne beides auch dessen Bildablage; wer die\n"
         "Datenbank nennt, nennt auch die Bildablage.\n\n"
         "Ausgang: 0 beendet, 2 falscher Aufruf.\n"_s;
}
