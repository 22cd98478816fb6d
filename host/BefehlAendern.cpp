#include <algorithm>
#include <limits>
#include <numeric>

#include "host/Ausgabe.h"
#include "host/Befehle.h"
#include "host/Druckangaben.h"
#include "host/Sitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the table must hold of a row after the change.
struct Soll {
  namen::Bilddatei bild;
  QString beschreibung;
  bool drucken, neue_seite, anhang, ganze_seite;
  std::int64_t sortindex;
  friend bool operator==(const Soll& a, const Soll& b) {
    return a.bild.gleich(b.bild) && a.beschreibung == b.beschreibung && a.drucken == b.drucken &&
           a.neue_seite == b.neue_seite && a.anhang == b.anhang && a.ganze_seite == b.ganze_seite &&
           a.sortindex == b.sortindex;
  }
};

Soll soll_der_zeile(Sitzung& sitzung, std::int64_t sortindex) {
  const clsBildZuordnungen& s = sitzung.store();
  return {sitzung.aktuelles_bild(), s.Bild_Beschreibung(),      s.Bild_Drucken(), s.Bild_NeueSeite(),
          s.Bild_AlsAnhang(),       s.Bild_DruckGesamteSeite(), sortindex};
}

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
std::optional<std::int32_t> einzige_zeile(Sitzung& sitzung, const namen::Bilddatei& bild) {
  const std::vector<std::int32_t> zeilen = sitzung.zeilen_von(bild);
  if (zeilen.size() > 1)
    throw Abbruch(
        Ausgang::Teilweise,
        u"„%1“ steht in diesem Vorgang mehrmals; die Zeilen sind nicht zu unterscheiden."_s.arg(bild.datei()));
  return zeilen.empty() ? std::nullopt : std::optional(zeilen.front());
}

void setze_felder(const Aufruf& aufruf, Sitzung& sitzung, std::int32_t zeile) {
  clsBildZuordnungen& store = sitzung.store();
  store.AktInd(zeile);
  if (const auto text = aufruf.wert(u"beschreibung"_s)) store.Bild_Beschreibung(*text);
  druckangaben::uebernimm(aufruf, store);
  store.Bild_Changeflag(true);
}

/// Puts a row at a place among its record's rows and numbers them all anew; rows whose number changes are marked.
void setze_platz(Sitzung& sitzung, std::int32_t zeile, std::int32_t platz) {
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
std::vector<Soll> pruefe_geaenderte(Sitzung& sitzung) {
  clsBildZuordnungen& store = sitzung.store();
  std::vector<Soll> soll;
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    if (!store.Bild_Changeflag()) continue;
    const namen::Bilddatei bild = sitzung.aktuelles_bild();
    einzige_zeile(sitzung, bild);
    store.AktInd(i);
    if (store.Bild_Beschreibung().size() + store.Bild_Beschreibung().count(u'\'') > namen::Text_Laenge)
      throw Abbruch(Ausgang::Teilweise,
                    u"Die Beschreibung von „%1“ würde beim Schreiben gekürzt, da ein Hochkomma doppelt zählt."_s.arg(
                        bild.datei()));
    soll.push_back(soll_der_zeile(sitzung, store.Bild_SortIndex()));
  }
  return soll;
}

/// An update that meets no row counts as done for the store, so the table is asked.
bool uebernommen(Sitzung& sitzung, const Datensatz& satz, const std::vector<Soll>& soll) {
  sitzung.lies(satz);
  return std::all_of(soll.begin(), soll.end(), [&](const Soll& s) {
    const std::vector<std::int32_t> zeilen = sitzung.zeilen_von(s.bild);
    if (zeilen.size() != 1) return false;
    sitzung.store().AktInd(zeilen.front());
    return soll_der_zeile(sitzung, sitzung.sortindex(zeilen.front())) == s;
  });
}

Ausgang aendere(const Aufruf& aufruf) {
  pruefe(aufruf);
  const Datensatz satz = Datensatz::genau(aufruf);
  QList<namen::Bilddatei> bilder;
  for (const QString& name : aufruf.argumente()) bilder.append(namen::zerlege(name));
  Sitzung sitzung(aufruf);
  sitzung.lies(satz);
  int fehlende = 0;
  for (const namen::Bilddatei& bild : std::as_const(bilder)) {
    const std::optional<std::int32_t> zeile = einzige_zeile(sitzung, bild);
    if (!zeile) {
      ++fehlende;
      ausgabe::meldung(u"„%1“ ist diesem Vorgang nicht zugeordnet."_s.arg(bild.datei()));
      continue;
    }
    setze_felder(aufruf, sitzung, *zeile);
    if (const auto platz = sortierung(aufruf)) setze_platz(sitzung, *zeile, *platz);
  }
  if (fehlende == bilder.size()) return Ausgang::Teilweise;
  const std::vector<Soll> soll = pruefe_geaenderte(sitzung);
  const bool geschrieben = sitzung.speichere();
  if (!geschrieben || !uebernommen(sitzung, satz, soll))
    throw Abbruch(Ausgang::Datenbank, u"Die Änderung steht nicht oder nur zum Teil in der Tabelle."_s);
  return fehlende == 0 ? Ausgang::Erledigt : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::aendern() {
  QList<Option> optionen = befehlszeile::datensatz_optionen();
  optionen.append({u"beschreibung"_s, u"TEXT"_s, u"neue Beschreibung, höchstens 250 Zeichen"_s});
  optionen.append(druckangaben::optionen());
  optionen.append({u"sortierung"_s, u"PLATZ"_s,
                   u"Platz des Bildes in der Reihenfolge; 0 ist der erste. Die anderen Bilder\n"_s
                   u"des Vorgangs rücken nach"_s});
  optionen.append(befehlszeile::verbindung_option());
  return {u"aendern"_s,
          u"ändert Beschreibung, Druckangaben und Reihenfolge"_s,
          u"BILD…"_s,
          u"Ändert die Zuordnungen der genannten Bilder (NAME.ENDUNG, wie „lesen“ sie zeigt) zu genau\n"_s
          u"dem Vorgang, den die Angaben nennen; eine fehlende Angabe meint „-“. Was nicht genannt ist,\n"_s
          u"bleibt, wie es ist."_s,
          optionen,
          1,
          10000,
          aendere};
}
