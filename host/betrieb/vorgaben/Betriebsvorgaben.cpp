#include "host/betrieb/vorgaben/Betriebsvorgaben.h"

#include <QFile>
#include <QFileInfo>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

const QString Betriebsvorgaben::Verbindung = u"Verbindung"_s;
const QString Betriebsvorgaben::Bilder = u"Bilder"_s;
const QString Betriebsvorgaben::Berichtskopf = u"Berichtskopf"_s;

namespace {

const QString Laufwerke = u"Laufwerke"_s;
const QString Betrieb = u"Betrieb"_s;
const QString Gesperrt = u"gesperrt"_s;

/// Values by group and name, as they stand.
using Gruppen = QHash<QString, QMap<QString, QString>>;

Betriebsvorgaben& zuletzt_gelesene() {
  static Betriebsvorgaben vorgaben;
  return vorgaben;
}

Abbruch unbrauchbar(const QString& datei, const QString& was) {
  return {Ausgang::Datei, u"Die Vorgaben des Betriebs in „%1“ gelten nicht: %2"_s.arg(datei, was)};
}

QString finde() {
  const QString ordner = qEnvironmentVariable("XDG_CONFIG_DIRS");
  for (const QString& einer : (ordner.isEmpty() ? u"/etc/xdg"_s : ordner).split(u':', Qt::SkipEmptyParts)) {
    QString datei = einer + u"/bildzuordnung/betrieb.ini"_s;
    if (QFileInfo::exists(datei)) return datei;
  }
  return {};
}

Gruppen zerlege(const QString& datei) {
  QFile offen(datei);
  if (!offen.open(QIODevice::ReadOnly)) throw unbrauchbar(datei, u"sie ist nicht zu lesen."_s);
  Gruppen gruppen;
  QString gruppe;
  int nummer = 0;
  for (const QString& roh : QString::fromUtf8(offen.readAll()).split(u'\n')) {
    const QString zeile = roh.trimmed();
    ++nummer;
    if (zeile.isEmpty() || zeile.startsWith(u';') || zeile.startsWith(u'#')) continue;
    const qsizetype gleich = zeile.indexOf(u'=');
    if (zeile.startsWith(u'[') && zeile.endsWith(u']'))
      gruppe = zeile.mid(1, zeile.size() - 2).trimmed();
    else if (gleich > 0)
      gruppen[gruppe].insert(zeile.left(gleich).trimmed(), zeile.mid(gleich + 1).trimmed());
    else
      throw unbrauchbar(datei, u"Zeile %1 ist nicht zu verstehen."_s.arg(nummer));
  }
  return gruppen;
}

/// A slip of the pen must not leave a desk without what the firm wants.
void pruefe_Namen(const Gruppen& gruppen, const QString& datei) {
  const QHash<QString, QStringList> bekannte{
      {Betriebsvorgaben::Verbindung, {Betriebsvorgaben::Verbindung, Betriebsvorgaben::Bilder}},
      {Betriebsvorgaben::Berichtskopf, {u"Zeile1"_s, u"Zeile2"_s, u"Zeile3"_s, u"Zeichen"_s}}, {Betrieb, {Gesperrt}}};
  for (auto gruppe = gruppen.begin(); gruppe != gruppen.end(); ++gruppe) {
    if (gruppe.key() == Laufwerke) continue;
    for (const QString& name : gruppe.value().keys())
      if (!bekannte.value(gruppe.key()).contains(name))
        throw unbrauchbar(datei, u"„%1“ unter „[%2]“ gibt es nicht."_s.arg(name, gruppe.key()));
  }
}

QStringList liste(const QString& wert) {
  QStringList worte = wert.split(u',', Qt::SkipEmptyParts);
  for (QString& wort : worte) wort = wort.trimmed();
  return worte;
}

void pruefe(const Betriebsvorgaben& vorgaben) {
  if (anmeldung::nennt_Kennwort(vorgaben.verbindung))
    throw unbrauchbar(vorgaben.datei,
        u"Die Verbindung nennt ein Kennwort, das hier jeder lesen könnte. Nehmen Sie es heraus; das Programm fragt "
        "danach."_s);
  const QStringList sperrbar{Betriebsvorgaben::Verbindung, Betriebsvorgaben::Bilder, Betriebsvorgaben::Berichtskopf};
  for (const QString& name : vorgaben.gesperrt)
    if (!sperrbar.contains(name, Qt::CaseInsensitive))
      throw unbrauchbar(vorgaben.datei, u"„%1“ lässt sich nicht sperren."_s.arg(name));
}

Betriebsvorgaben gelesene() {
  Betriebsvorgaben vorgaben;
  vorgaben.datei = finde();
  if (vorgaben.datei.isEmpty()) return vorgaben;
  const Gruppen gruppen = zerlege(vorgaben.datei);
  pruefe_Namen(gruppen, vorgaben.datei);
  const QMap<QString, QString> verbindung = gruppen.value(Betriebsvorgaben::Verbindung);
  if (const QString angabe = verbindung.value(Betriebsvorgaben::Verbindung); !angabe.isEmpty())
    vorgaben.verbindung = verbindung_aus_Angabe(angabe);
  vorgaben.bilder = verbindung.value(Betriebsvorgaben::Bilder);
  vorgaben.laufwerke = gruppen.value(Laufwerke);
  const QMap<QString, QString> kopf = gruppen.value(Betriebsvorgaben::Berichtskopf);
  for (auto wert = kopf.begin(); wert != kopf.end(); ++wert) vorgaben.berichtskopf.insert(wert.key(), wert.value());
  vorgaben.gesperrt = liste(gruppen.value(Betrieb).value(Gesperrt));
  pruefe(vorgaben);
  return vorgaben;
}

}  // namespace

void Betriebsvorgaben::pruefe_frei(const QString& name, const QString& option) const {
  if (sperrt(name))
    throw Abbruch(
        Ausgang::Aufruf, u"„%1“ geht hier nicht: „%2“ hat der Betrieb in „%3“ vorgegeben."_s.arg(option, name, datei));
}

Betriebsvorgaben Betriebsvorgaben::lies() {
  zuletzt_gelesene() = gelesene();
  return zuletzt_gelesene();
}

Betriebsvorgaben Betriebsvorgaben::geltende() {
  try {
    return lies();
  } catch (const Abbruch&) {
    return zuletzt_gelesene();
  }
}

void Betriebsvorgaben::richte_Laufwerke_ein() const {
  for (auto laufwerk = laufwerke.begin(); laufwerk != laufwerke.end(); ++laufwerk)
    if (const auto grund = versuche([&] { Pfadkarte::aktuell().setze(laufwerk.key(), laufwerk.value()); }))
      throw unbrauchbar(
          datei, u"„%1“ ist kein Laufwerk („P:“) und keine Freigabe („\\\\server\\freigabe“)."_s.arg(laufwerk.key()));
}
