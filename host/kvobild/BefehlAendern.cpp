#include <algorithm>
#include <limits>
#include <numeric>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "host/kvobild/Druckangaben.h"

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<std::int32_t> sortierung(const Aufruf& aufruf) {
  const std::optional<QString> angabe = aufruf.wert(u"sortierung"_s);
  if (!angabe) return std::nullopt;
  bool zahl = false;
  const int platz = angabe->toInt(&zahl);
  if (!zahl || platz < 0 || platz > std::numeric_limits<std::int16_t>::max())
    throw Abbruch(Ausgang::Aufruf, u"„--sortierung“ ist eine Zahl von 0 bis 32767, nicht „%1“."_s.arg(*angabe));
  return platz;
}

void pruefe(const Aufruf& aufruf) {
  if (!aufruf.gesetzt(u"beschreibung"_s) && !aufruf.gesetzt(u"sortierung"_s) && !druckangaben::genannt(aufruf))
    throw Abbruch(Ausgang::Aufruf, u"Es fehlt, was geändert werden soll."_s);
  druckangaben::pruefe(aufruf);
  namen::beschreibung(aufruf.wert(u"beschreibung"_s).value_or(QString()));
  if (sortierung(aufruf) && aufruf.argumente().size() != 1)
    throw Abbruch(Ausgang::Aufruf, u"„--sortierung“ nimmt genau ein Bild."_s);
}

/// The one row of a picture. Rows that share a name can't be told apart by the table's statements: each would get the
/// other's folder.
std::optional<std::int32_t> einzige_Zeile(Befehlssitzung& sitzung, const namen::Bilddatei& bild) {
  const std::vector<std::int32_t> zeilen = sitzung.zeilen_von(bild);
  if (zeilen.size() > 1)
    throw Abbruch(Ausgang::Teilweise,
        u"„%1“ steht in diesem Vorgang mehrmals; die Zeilen sind nicht zu unterscheiden."_s.arg(bild.datei()));
  return zeilen.empty() ? std::nullopt : std::optional(zeilen.front());
}

void setze_Felder(const Aufruf& aufruf, Befehlssitzung& sitzung, std::int32_t zeile) {
  clsBildZuordnungen& store = sitzung.store();
  store.AktInd(zeile);
  if (const auto text = aufruf.wert(u"beschreibung"_s)) store.Bild_Beschreibung(*text);
  druckangaben::uebernimm(aufruf, store);
  store.Bild_Changeflag(true);
}

/// Puts a row at a place among its record's rows and numbers them all anew; rows whose number changes are marked.
void setze_Platz(Befehlssitzung& sitzung, std::int32_t zeile, std::int32_t platz) {
  clsBildZuordnungen& store = sitzung.store();
  std::vector<std::int32_t> folge(static_cast<std::size_t>(store.AnzahlPos()));
  std::iota(folge.begin(), folge.end(), 0);
  folge.erase(folge.begin() + zeile);
  folge.insert(folge.begin() + std::min(platz, static_cast<std::int32_t>(folge.size())), zeile);
  for (std::size_t nummer = 0; nummer < folge.size(); ++nummer) {
    store.AktInd(folge[nummer]);
    store.Bild_SortIndex(static_cast<int>(nummer));
    if (sitzung.sortindex(folge[nummer]) != static_cast<std::int64_t>(nummer)) store.Bild_Changeflag(true);
  }
}

/// Every row that will be written can be written whole, and stands alone under its name.
void pruefe_geaenderte(Befehlssitzung& sitzung) {
  clsBildZuordnungen& store = sitzung.store();
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    if (!store.Bild_Changeflag()) continue;
    const namen::Bilddatei bild = sitzung.aktuelles_Bild();
    einzige_Zeile(sitzung, bild);
    store.AktInd(i);
    if (store.Bild_Beschreibung().size() + store.Bild_Beschreibung().count(u'\'') > Bilddatei::Textlaenge)
      throw Abbruch(Ausgang::Teilweise,
          u"Die Beschreibung von „%1“ würde beim Schreiben gekürzt, da ein Hochkomma doppelt zählt."_s.arg(
              bild.datei()));
  }
}

Ausgang aendere(const Aufruf& aufruf) {
  pruefe(aufruf);
  const Datensatz satz = datensatzangaben::genau(aufruf);
  QList<namen::Bilddatei> bilder;
  for (const QString& name : aufruf.argumente()) bilder.append(namen::zerlege(name));
  Befehlssitzung sitzung(aufruf);
  sitzung.lies(satz);
  int fehlende = 0;
  for (const namen::Bilddatei& bild : std::as_const(bilder)) {
    const std::optional<std::int32_t> zeile = einzige_Zeile(sitzung, bild);
    if (!zeile) {
      ++fehlende;
      ausgabe::meldung(u"„%1“ ist diesem Vorgang nicht zugeordnet."_s.arg(bild.datei()));
      continue;
    }
    setze_Felder(aufruf, sitzung, *zeile);
    if (const auto platz = sortierung(aufruf)) setze_Platz(sitzung, *zeile, *platz);
  }
  if (fehlende == bilder.size()) return Ausgang::Teilweise;
  pruefe_geaenderte(sitzung);
  sitzung.speichere_ganz(satz, u"Die Änderung steht nicht oder nur zum Teil in der Tabelle."_s);
  return fehlende == 0 ? Ausgang::Erledigt : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::aendern() {
  QList<Option> optionen = befehlszeile::datensatz_Optionen();
  optionen.append({u"beschreibung"_s, u"TEXT"_s, u"neue Beschreibung, höchstens 250 Zeichen"_s});
  optionen.append(druckangaben::optionen());
  optionen.append({u"sortierung"_s, u"PLATZ"_s,
      u"Platz des Bildes in der Reihenfolge; 0 ist der erste. Die anderen Bilder\n"_s
      u"des Vorgangs rücken nach"_s});
  optionen.append(befehlszeile::verbindung_Option());
  return {u"aendern"_s, u"ändert Beschreibung, Druckangaben und Reihenfolge"_s, u"BILD…"_s,
      uR"(Ändert die Zuordnungen der genannten Bilder (NAME.ENDUNG, wie „lesen“ sie zeigt) zu genau
dem Vorgang, den die Angaben nennen; eine fehlende Angabe meint „-“. Was nicht genannt ist,
bleibt, wie es ist.)"_s,
      optionen, 1, 10000, aendere};
}
