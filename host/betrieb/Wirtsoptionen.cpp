#include "host/betrieb/Wirtsoptionen.h"

#include <QCommandLineParser>
#include <QStandardPaths>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Abbruch falscher_Aufruf(const QString& text) {
  return {Ausgang::Aufruf, text + u" Hilfe gibt „bildzuordnung --hilfe“."_s};
}

const QString Eingebettet = u"eingebettet"_s;
const QString Leer = u"leer"_s;
const QString Beispiele = u"beispiele"_s;

const QStringList& mit_Wert() {
  static const QStringList Namen{u"verbindung"_s, u"bilder"_s, u"datenordner"_s, u"vorgang"_s, u"rundgang"_s};
  return Namen;
}

/// Why the parser refuses the arguments, in words of our own: Qt's are English.
QString grund(const QCommandLineParser& leser, const QStringList& argumente) {
  const QStringList unbekannte = leser.unknownOptionNames();
  if (!unbekannte.isEmpty()) return u"Die Option „%1“ gibt es nicht."_s.arg(unbekannte.first());
  for (const QString& name : mit_Wert())
    if (!argumente.isEmpty() && argumente.last() == u"--"_s + name) return u"Hinter „--%1“ fehlt der Wert."_s.arg(name);
  return u"Der Aufruf ist nicht zu verstehen."_s;
}

QString wert(const QCommandLineParser& leser, const QString& name) {
  if (!leser.isSet(name)) return {};
  if (leser.value(name).isEmpty()) throw falscher_Aufruf(u"„--%1“ ist leer."_s.arg(name));
  return leser.value(name);
}

/// A tour has data of its own and must not come near the user's.
void pruefe_Rundgang(const QCommandLineParser& leser) {
  if (!leser.isSet(u"rundgang"_s)) return;
  for (const QString& name : mit_Wert())
    if (name != "rundgang"_L1 && leser.isSet(name))
      throw falscher_Aufruf(u"„--rundgang“ hat eigene Daten und verträgt kein „--%1“."_s.arg(name));
}

/// What the first start makes; a program without a window to ask in chooses the samples.
Anfangsbestand lies_Anfang(const QCommandLineParser& leser) {
  if (leser.isSet(Leer) && leser.isSet(Beispiele))
    throw falscher_Aufruf(u"„--leer“ und „--beispiele“ schließen sich aus."_s);
  for (const QString& name : {Leer, Beispiele})
    if (leser.isSet(name) && leser.isSet(u"verbindung"_s))
      throw falscher_Aufruf(u"„--%1“ legt den Datenordner an und verträgt kein „--verbindung“."_s.arg(name));
  return leser.isSet(Leer)     ? Anfangsbestand::Leer
      : leser.isSet(Beispiele) ? Anfangsbestand::Beispiele
                               : Anfangsbestand::Fragen;
}

/// The environment counts where the call leaves the database open; the picture root there belongs to its database.
void lies_Verbindung(const QCommandLineParser& leser, Wirtsoptionen& optionen) {
  QString angabe = wert(leser, u"verbindung"_s);
  const bool offen = angabe.isEmpty() && !optionen.eingebettet && !optionen.datenordner_genannt && optionen.merken;
  if (offen) angabe = qEnvironmentVariable("KVOBILD_VERBINDUNG");
  if (angabe.isEmpty()) return;
  if (optionen.bilder.isEmpty()) optionen.bilder = qEnvironmentVariable("KVOBILD_BILDER");
  optionen.verbindung = anmeldung::mit_Kennwort_der_Umgebung(verbindung_aus_Angabe(angabe));
}

}  // namespace

Wirtsoptionen wirtsoptionen::lies(const QStringList& argumente) {
  QCommandLineParser leser;
  leser.addOption(QCommandLineOption(QStringList{u"h"_s, u"hilfe"_s}));
  for (const QString& name : mit_Wert()) leser.addOption(QCommandLineOption(name, {}, u"WERT"_s));
  for (const QString& name : {Eingebettet, Leer, Beispiele}) leser.addOption(QCommandLineOption(name));
  if (!leser.parse(QStringList{u"bildzuordnung"_s} + argumente)) throw falscher_Aufruf(grund(leser, argumente));
  if (!leser.positionalArguments().isEmpty())
    throw falscher_Aufruf(u"„%1“ ist zu viel."_s.arg(anmeldung::ohne_Geheimnis(leser.positionalArguments().first())));
  pruefe_Rundgang(leser);
  if (leser.isSet(Eingebettet) && leser.isSet(u"verbindung"_s))
    throw falscher_Aufruf(u"„--eingebettet“ und „--verbindung“ schließen sich aus."_s);
  Wirtsoptionen optionen;
  optionen.rundgang = wert(leser, u"rundgang"_s);
  optionen.hilfe = leser.isSet(u"hilfe"_s);
  optionen.anfang = lies_Anfang(leser);
  optionen.eingebettet = leser.isSet(Eingebettet);
  optionen.datenordner_genannt = leser.isSet(u"datenordner"_s);
  optionen.merken = optionen.rundgang.isEmpty();
  optionen.bilder = wert(leser, u"bilder"_s);
  lies_Verbindung(leser, optionen);
  optionen.vorgang = wert(leser, u"vorgang"_s);
  optionen.datenordner = wert(leser, u"datenordner"_s);
  if (optionen.datenordner.isEmpty()) optionen.datenordner = ueblicher_Datenordner();
  return optionen;
}

QString wirtsoptionen::ueblicher_Datenordner() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/kvobildzuordnung"_s;
}

QString wirtsoptionen::hilfetext() {
  return u"bildzuordnung zeigt die Vorgänge eines Betriebs und ordnet ihnen Bilder zu.\n\n"
         "Aufruf: bildzuordnung [Optionen]\n"
         "        bildzuordnung dialog BEFEHL [Optionen]   ein Dialog für sich, aus anderen Programmen;\n"
         "                                                 „bildzuordnung dialog --hilfe“ nennt sie\n\n"
         "Optionen:\n"
         "  --verbindung DATENBANK   die Datenbank, etwa \"Provider=SQLite;Data Source=/pfad/bilder.db\";\n"
         "                           ein bloßer Dateiname meint eine SQLite-Datei\n"
         "                           Der nächste Start ohne Angabe öffnet sie wieder und fragt dann nach dem\n"
         "                           Kennwort; gemerkt wird es nicht. Ein Kennwort im Aufruf sehen andere auf\n"
         "                           diesem Rechner: Ohne es fragt das Programm, oder KVOBILD_KENNWORT nennt es\n"
         "  --bilder ORDNER          Wurzel der Bildablage; wird mit der Datenbank gemerkt\n"
         "  --eingebettet            die Datenbank im Datenordner; vergisst die gemerkte\n"
         "  --datenordner ORDNER     eigener Ordner des Programms; der erste Start legt darin Datenbank und\n"
         "                           Bildablage an. Sonst „kvobildzuordnung“ im Ordner\n"
         "                           für Anwendungsdaten\n"
         "  --leer                   der erste Start legt den Datenordner ohne Beispiele an, für die eigenen Vorgänge\n"
         "  --beispiele              der erste Start legt Beispiele an; ohne beides fragt er\n"
         "  --vorgang NUMMER         beginnt mit diesem Vorgang, etwa \"AB 24-1001\"\n"
         "  --rundgang ORDNER        geht ohne Benutzer mit Maus und Tasten durch Programm und Dialog, auf eigenen\n"
         "                           Beispieldaten in ORDNER/daten, speichert Bilder der Fenster in ORDNER und\n"
         "                           sagt, was danach in der Datenbank steht\n"
         "  -h, --hilfe              diese Hilfe\n\n"
         "Ohne --verbindung gilt KVOBILD_VERBINDUNG, dann die gemerkte Datenbank, dann die im Datenordner, die\n"
         "ihre eigene Bildablage hat; wer die Datenbank nennt, nennt auch die Bildablage (oder KVOBILD_BILDER).\n"
         "Wer --datenordner nennt, meint dessen Datenbank.\n\n"
         "Ausgang: 0 beendet, 1 der Rundgang sah nicht, was er sollte, 2 falscher Aufruf, 4 der Ordner des\n"
         "Rundgangs ist nicht zu benutzen.\n"_s;
}
