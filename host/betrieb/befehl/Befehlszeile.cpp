#include "host/betrieb/befehl/Befehlszeile.h"

#include <QCommandLineParser>
#include <algorithm>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Fassung.h"
#include "host/betrieb/befehl/Ausgabe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Abbruch falscher_Aufruf(const QString& programm, const QString& text) {
  return {Ausgang::Aufruf, text + u" Hilfe gibt „%1 --hilfe“."_s.arg(programm)};
}

void drucke_Hilfe(const Befehlsprogramm& programm, const QList<Befehl>& befehle) {
  ausgabe::zeile(programm.zweck);
  ausgabe::zeile(u"Aufruf: %1 BEFEHL [Optionen] [Argumente]\n        %1 BEFEHL --hilfe\n        %1 --version\n"_s.arg(
      programm.name));
  ausgabe::zeile(u"Befehle:"_s);
  for (const Befehl& befehl : befehle) ausgabe::zeile(u"  "_s + befehl.name.leftJustified(18) + u' ' + befehl.kurz);
  ausgabe::zeile(u'\n' + programm.schluss + u'\n');
  ausgabe::zeile(befehlszeile::ausgangstext());
}

void drucke_Hilfe(const Befehlsprogramm& programm, const Befehl& befehl) {
  const QString argumente = befehl.argumente.isEmpty() ? QString() : u' ' + befehl.argumente;
  ausgabe::zeile(u"Aufruf: "_s + programm.name + u' ' + befehl.name + u" [Optionen]"_s + argumente + u"\n\n"_s +
      befehl.erklaerung + u"\n\nOptionen:"_s);
  ausgabe::zeile(befehlszeile::optionszeilen(befehl.optionen + QList<Option>{befehlszeile::hilfe_Option()}) + u'\n' +
      befehlszeile::ausgangstext());
}

/// Why the parser refuses the arguments, in words of our own: Qt's are English.
QString grund(const QCommandLineParser& leser, const Befehl& befehl, const QStringList& argumente) {
  const QStringList unbekannte = leser.unknownOptionNames();
  if (!unbekannte.isEmpty())
    return u"Die Option „%1“ gibt es bei „%2“ nicht."_s.arg(anmeldung::ohne_Geheimnis(unbekannte.first()), befehl.name);
  for (const Option& option : befehl.optionen) {
    const QString name = u"--"_s + option.name;
    if (!option.wert.isEmpty() && !argumente.isEmpty() && argumente.last() == name)
      return u"Hinter „%1“ fehlt %2."_s.arg(name, option.wert);
    if (option.wert.isEmpty() && !argumente.filter(name + u'=').isEmpty())
      return u"„%1“ steht für sich und nimmt keinen Wert."_s.arg(name);
  }
  return u"Der Aufruf von „%1“ ist nicht zu verstehen."_s.arg(befehl.name);
}

void pruefe_Anzahl(const Befehlsprogramm& programm, const Befehl& befehl, const QStringList& argumente) {
  if (argumente.size() < befehl.argumente_mindestens)
    throw falscher_Aufruf(programm.name, u"Bei „%1“ fehlt: %2."_s.arg(befehl.name, befehl.argumente));
  if (argumente.size() > befehl.argumente_hoechstens)
    throw falscher_Aufruf(
        programm.name, u"„%1“ ist bei „%2“ zu viel."_s.arg(anmeldung::ohne_Geheimnis(argumente.last()), befehl.name));
}

Ausgang fuehre_aus(const Befehlsprogramm& programm, const Befehl& befehl, const QStringList& argumente) {
  QCommandLineParser leser;
  leser.addOption(QCommandLineOption(QStringList{u"h"_s, u"hilfe"_s}));
  for (const Option& option : befehl.optionen)
    leser.addOption(QCommandLineOption(option.name, {}, option.wert.isEmpty() ? QString() : option.wert));
  if (!leser.parse(QStringList{befehl.name} + argumente))
    throw falscher_Aufruf(programm.name, grund(leser, befehl, argumente));
  if (leser.isSet(u"hilfe"_s)) {
    drucke_Hilfe(programm, befehl);
    return Ausgang::Erledigt;
  }
  QMap<QString, QString> werte;
  for (const Option& option : befehl.optionen)
    if (leser.isSet(option.name)) werte.insert(option.name, leser.value(option.name));
  pruefe_Anzahl(programm, befehl, leser.positionalArguments());
  return befehl.fuehre_aus(Aufruf(programm.name, werte, leser.positionalArguments()));
}

/// A command of two words whose second word is missing or unknown, or a command that does not exist.
Ausgang ohne_zweites_Wort(const Befehlsprogramm& programm, const QList<Befehl>& befehle, const QStringList& argumente) {
  QList<Befehl> gruppe;
  QStringList zweite;
  for (const Befehl& befehl : befehle) {
    if (!befehl.name.startsWith(argumente.first() + u' ')) continue;
    gruppe.append(befehl);
    zweite.append(u'„' + befehl.name.section(u' ', 1) + u'“');
  }
  const QString wort = argumente.value(1);
  if (!gruppe.isEmpty() && (wort == "--hilfe"_L1 || wort == "-h"_L1 || wort == "--help"_L1)) {
    for (const Befehl& befehl : gruppe) ausgabe::zeile(u"  "_s + befehl.name.leftJustified(18) + u' ' + befehl.kurz);
    return Ausgang::Erledigt;
  }
  if (!gruppe.isEmpty() && (wort.isEmpty() || wort.startsWith(u'-')))
    throw falscher_Aufruf(programm.name, u"Hinter „%1“ fehlt %2."_s.arg(argumente.first(), zweite.join(u" oder "_s)));
  const QString name = gruppe.isEmpty() ? argumente.first() : argumente.first() + u' ' + wort;
  throw falscher_Aufruf(programm.name, u"Den Befehl „%1“ gibt es nicht."_s.arg(anmeldung::ohne_Geheimnis(name)));
}

}  // namespace

std::optional<QString> Aufruf::wert(const QString& option) const {
  const auto treffer = werte_.find(option);
  return treffer == werte_.end() ? std::nullopt : std::optional(*treffer);
}

QString Aufruf::noetig(const QString& option) const {
  const QString gegeben = wert(option).value_or(QString());
  if (gegeben.isEmpty()) throw falscher_Aufruf(programm_, u"Es fehlt „--%1“."_s.arg(option));
  return gegeben;
}

std::optional<bool> Aufruf::ja_nein(const QString& option) const {
  const std::optional<QString> gegeben = wert(option);
  if (!gegeben) return std::nullopt;
  if (*gegeben == "ja"_L1) return true;
  if (*gegeben == "nein"_L1) return false;
  throw falscher_Aufruf(programm_, u"„--%1“ ist „ja“ oder „nein“, nicht „%2“."_s.arg(option, *gegeben));
}

namespace befehlszeile {

QList<Option> datensatz_Optionen() {
  return {{u"key1"_s, u"TEXT"_s, u"erste Referenz des Vorgangs (Belegart, Artikelnummer, …)"_s},
      {u"key2"_s, u"TEXT"_s, u"zweite Referenz (Belegnummer, …)"_s},
      {u"key3"_s, u"TEXT"_s, u"dritte Referenz (Nummer des Montageauftrags, …)"_s},
      {u"key4"_s, u"TEXT"_s, u"vierte Referenz"_s},
      {u"typ1"_s, u"TEXT"_s, u"Art des Vorgangs: BEL Beleg, MON Montageauftrag, ART Artikel, ANL Anlage"_s,
          {u"BEL"_s, u"MON"_s, u"ART"_s, u"ANL"_s}},
      {u"typ2"_s, u"TEXT"_s, u"zweite Art, frei"_s}};
}

Option verbindung_Option() {
  return {u"verbindung"_s, u"DATENBANK"_s,
      u"die Datenbank, etwa \"Provider=SQLite;Data Source=/pfad/bilder.db\";\n"_s
      u"ein bloßer Dateiname meint eine SQLite-Datei"_s};
}

Option bilder_Option() {
  return {u"bilder"_s, u"ORDNER"_s, u"Wurzel der Bildablage"_s};
}

Option json_Option() {
  return {u"json"_s, {}, u"je Eintrag eine Zeile mit einem JSON-Objekt"_s};
}

Option hilfe_Option() {
  return {u"hilfe"_s, {}, u"diese Hilfe"_s};
}

QList<Option> programm_Optionen() {
  return {hilfe_Option(), {u"version"_s, {}, u"nennt Fassung, Bibliotheken und Treiber"_s}};
}

QString optionszeilen(const QList<Option>& optionen) {
  QString zeilen;
  for (const Option& option : optionen) {
    const QString links = u"--"_s + option.name + (option.wert.isEmpty() ? QString() : u' ' + option.wert);
    QString rechts = option.hilfe;
    zeilen += u"  "_s + links.leftJustified(24) + u' ' + rechts.replace(u'\n', u"\n"_s + QString(27, u' ')) + u'\n';
  }
  return zeilen;
}

QString ausgangstext() {
  return u"Ausgang: 0 erledigt, 1 nichts gefunden oder nur zum Teil erledigt, 2 falscher Aufruf,\n"
         "         3 Datenbank, 4 Dateien."_s;
}

Ausgang fuehre_aus(const Befehlsprogramm& programm, const QList<Befehl>& befehle, const QStringList& argumente) {
  if (argumente.isEmpty()) throw falscher_Aufruf(programm.name, u"Es fehlt der Befehl."_s);
  const QString& name = argumente.first();
  if (name == "--hilfe"_L1 || name == "-h"_L1 || name == "--help"_L1) {
    drucke_Hilfe(programm, befehle);
    return Ausgang::Erledigt;
  }
  if (name == "--version"_L1) {
    ausgabe::zeile(fassung::text(programm.name.section(u' ', 0, 0)));
    return Ausgang::Erledigt;
  }
  const auto worte = [](const Befehl& b) { return b.name.split(u' '); };
  const auto befehl = std::find_if(
      befehle.begin(), befehle.end(), [&](const Befehl& b) { return argumente.mid(0, worte(b).size()) == worte(b); });
  if (befehl != befehle.end()) return ::fuehre_aus(programm, *befehl, argumente.mid(worte(*befehl).size()));
  return ohne_zweites_Wort(programm, befehle, argumente);
}

}  // namespace befehlszeile
