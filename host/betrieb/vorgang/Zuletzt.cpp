#include "host/betrieb/vorgang/Zuletzt.h"

#include <QCryptographicHash>
#include <QStringList>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Einstellungsdatei.h"
#include "host/betrieb/Namen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Schluessel = u"Zuletzt"_s;

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Vorgaenge"_s) {}
};

/// A name for the database that holds no word of its connect string.
QString gruppe_von(const Wirtsoptionen& optionen) {
  const QString name = optionen.verbindung.isEmpty() ? namen::ganzer_Pfad(optionen.datenordner)
                                                     : anmeldung::zum_Merken(optionen.verbindung);
  return QString::fromLatin1(QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex().left(16));
}

QStringList als_Liste(const Datensatz& satz) {
  return {satz.typ1, satz.key1, satz.key2, satz.key3};
}

}  // namespace

Zuletzt::Zuletzt(const Wirtsoptionen& optionen) : gruppe_(gruppe_von(optionen)), merken_(optionen.merken) {
  if (!merken_) return;
  Datei datei;
  datei.beginGroup(gruppe_);
  const int anzahl = datei.beginReadArray(Schluessel);
  for (int i = 0; i < anzahl && saetze_.size() < Hoechstens; ++i) {
    datei.setArrayIndex(i);
    const QStringList teile = datei.value(u"Satz"_s).toStringList();
    if (teile.size() == 4) saetze_.append({teile[1], teile[2], teile[3], u"-"_s, teile[0], u"-"_s});
  }
}

void Zuletzt::merke(const Datensatz& satz) {
  saetze_.removeIf([&](const Datensatz& einer) { return als_Liste(einer) == als_Liste(satz); });
  saetze_.prepend(satz);
  if (saetze_.size() > Hoechstens) saetze_.resize(Hoechstens);
  if (!merken_) return;
  Datei datei;
  datei.beginGroup(gruppe_);
  datei.beginWriteArray(Schluessel, static_cast<int>(saetze_.size()));
  for (int i = 0; i < saetze_.size(); ++i) {
    datei.setArrayIndex(i);
    datei.setValue(u"Satz"_s, als_Liste(saetze_.at(i)));
  }
  datei.endArray();
}
