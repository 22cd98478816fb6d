#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/betrieb/vorgang/Verwendung.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Marks a row for deletion. A row with an empty part of its identity would take rows of other pictures with it, since
/// an empty part adds no condition.
void merke_vor(Befehlssitzung& sitzung, std::int32_t zeile) {
  clsBildZuordnungen& store = sitzung.store();
  store.AktInd(zeile);
  const namen::Bilddatei bild = sitzung.aktuelles_Bild();
  if (bild.name.isEmpty() || bild.ext.isEmpty())
    throw Abbruch(Ausgang::Datenbank, u"Eine Zeile des Vorgangs hat keinen Bildnamen; sie bleibt stehen."_s);
  store.Bild_Delete(true);
}

int merke_alle_vor(Befehlssitzung& sitzung) {
  for (std::int32_t i = 0; i < sitzung.store().AnzahlPos(); ++i) merke_vor(sitzung, i);
  return sitzung.store().AnzahlPos();
}

int merke_genannte_vor(Befehlssitzung& sitzung, const QStringList& namen_der_Bilder, bool& alle_da) {
  int anzahl = 0;
  for (const QString& name : namen_der_Bilder) {
    const std::vector<std::int32_t> zeilen = sitzung.zeilen_von(namen::zerlege(name));
    for (const std::int32_t zeile : zeilen) merke_vor(sitzung, zeile);
    anzahl += static_cast<int>(zeilen.size());
    if (!zeilen.empty()) continue;
    alle_da = false;
    ausgabe::meldung(u"„%1“ ist diesem Vorgang nicht zugeordnet."_s.arg(name));
  }
  return anzahl;
}

Ausgang entferne(const Aufruf& aufruf) {
  const bool alle = aufruf.gesetzt(u"alle"_s);
  if (alle != aufruf.argumente().isEmpty())
    throw Abbruch(Ausgang::Aufruf, u"Nötig sind die Bilder oder „--alle“, nicht beides."_s);
  const Datensatz satz = datensatzangaben::genau(aufruf);
  for (const QString& name : aufruf.argumente()) namen::zerlege(name);
  Befehlssitzung sitzung(aufruf);
  sitzung.lies(satz);
  bool alle_da = true;
  const int anzahl = alle ? merke_alle_vor(sitzung) : merke_genannte_vor(sitzung, aufruf.argumente(), alle_da);
  if (anzahl == 0) {
    if (alle) ausgabe::meldung(u"Diesem Vorgang ist kein Bild zugeordnet."_s);
    return Ausgang::Teilweise;
  }
  for (const QString& gebrauch : verwendung::saetze(*sitzung.verbindung(), sitzung.store())) ausgabe::meldung(gebrauch);
  sitzung.speichere_ganz(satz, u"Die Zuordnungen sind nicht oder nur zum Teil entfernt."_s);
  return alle_da ? Ausgang::Erledigt : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::entfernen() {
  return {u"entfernen"_s, u"nimmt Zuordnungen zurück"_s, u"[BILD…]"_s,
      uR"(Nimmt die Zuordnung der genannten Bilder (NAME.ENDUNG) zu genau dem Vorgang zurück, den die
Angaben nennen; eine fehlende Angabe meint „-“. Die Dateien bleiben in der Ablage, denn auch
andere Vorgänge können auf sie zeigen; von wie vielen, steht vorher auf der Fehlerausgabe.)"_s,
      befehlszeile::datensatz_Optionen() +
          QList<Option>{{u"alle"_s, {}, u"alle Bilder des Vorgangs"_s}, befehlszeile::verbindung_Option()},
      0, 10000, entferne};
}
