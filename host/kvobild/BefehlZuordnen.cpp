#include <algorithm>
#include <limits>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "host/kvobild/Bildkopien.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/kvobild/Druckangaben.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A picture to be assigned: where it lies, and the name it gets.
struct Vorhaben {
  QString quelle;
  namen::Bilddatei alt;
  namen::Bilddatei neu;
};

Vorhaben pruefe_Quelle(const QString& angabe) {
  const QString pfad = namen::tabellenpfad(angabe);
  const FileSystemObject dateien;
  if (dateien.FolderExists(pfad)) throw Abbruch(Ausgang::Datei, u"„%1“ ist ein Ordner."_s.arg(angabe));
  // The name is checked first: to the path map a name that no share can hold is merely missing.
  const namen::Bilddatei bild = namen::zerlege_geprueft(pfad.mid(pfad.lastIndexOf(u'\\') + 1));
  if (!dateien.FileExists(pfad)) throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ gibt es nicht."_s.arg(angabe));
  return {pfad, bild, {}};
}

/// The picture's name with the stamp behind it. A name that is taken, by a file, a row or an earlier picture of this
/// call, gets a number: two pictures of one name in one second stay two.
namen::Bilddatei freier_Name(const namen::Bilddatei& alt, const QString& stempel, const QString& ordner,
    Befehlssitzung& sitzung, const std::vector<Vorhaben>& bisher) {
  const FileSystemObject dateien;
  for (int nummer = 1;; ++nummer) {
    const Bilddatei neu = alt.gestempelt(stempel, nummer);
    const bool vergeben = dateien.FileExists(ordner + u'\\' + neu.datei()) ||
        dateien.FileExists(ordner + u'\\' + neu.textdatei()) || !sitzung.zeilen_von(neu).empty() ||
        std::any_of(bisher.begin(), bisher.end(), [&](const Vorhaben& v) {
          return v.neu.gleich(neu) || text::UCase(v.neu.textdatei()) == text::UCase(neu.textdatei());
        });
    if (!vergeben) return neu;
  }
}

void melde_Namen(const Vorhaben& vorhaben) {
  if (vorhaben.alt.name.size() + 15 > Bilddatei::Namenslaenge)
    ausgabe::meldung(u"Der Name „%1“ ist gekürzt, damit er mit dem Zeitstempel in die Tabelle passt: „%2“."_s.arg(
        vorhaben.alt.datei(), vorhaben.neu.datei()));
  if (vorhaben.neu.name.contains(u'.'))
    ausgabe::meldung(
        u"Achtung: „%1“ hat einen Punkt im Namen; das Aufräumen der Ablage erkennt solche Bilder nicht als zugeordnet."_s
            .arg(vorhaben.neu.datei()));
}

std::vector<Vorhaben> plane(const Aufruf& aufruf, const QString& ordner, Befehlssitzung& sitzung) {
  const QString stempel = Bilddatei::Stempel(QDateTime::currentDateTime());
  std::vector<Vorhaben> plan;
  for (const QString& angabe : aufruf.argumente()) {
    Vorhaben vorhaben = pruefe_Quelle(angabe);
    vorhaben.neu = freier_Name(vorhaben.alt, stempel, ordner, sitzung, plan);
    plan.push_back(vorhaben);
  }
  return plan;
}

void mache_Ordner(Befehlssitzung& sitzung, const QString& ordner) {
  sitzung.store().Fkt_MakePath(ordner);
  if (!sitzung.store().Fkt_DirExists(ordner))
    throw Abbruch(Ausgang::Datei, u"Der Ordner „%1“ ist nicht anzulegen. Nichts ist zugeordnet."_s.arg(ordner));
}

/// The first SortIndex behind those of the record's rows.
std::int64_t naechster_Platz(Befehlssitzung& sitzung) {
  std::int64_t platz = 0;
  for (std::int32_t i = 0; i < sitzung.store().AnzahlPos(); ++i) platz = std::max(platz, sitzung.sortindex(i) + 1);
  return platz;
}

void trage_ein(const Aufruf& aufruf, const Datensatz& satz, const QString& pfad, const std::vector<Vorhaben>& plan,
    Befehlssitzung& sitzung) {
  clsBildZuordnungen& store = sitzung.store();
  std::int64_t platz = naechster_Platz(sitzung);
  if (platz + static_cast<std::int64_t>(plan.size()) > std::numeric_limits<std::int16_t>::max())
    throw Abbruch(Ausgang::Datenbank,
        u"Die Reihenfolge des Vorgangs reicht nicht weiter; „aendern --sortierung“ "_s
        u"zählt sie neu."_s);
  for (const Vorhaben& v : plan) {
    if (!store.FKT_NeuesBild(satz.key1, satz.key2, satz.key3, satz.key4, v.neu.name, v.neu.ext, satz.typ1, satz.typ2))
      throw Abbruch(Ausgang::Datenbank, u"„%1“ ist nicht zuzuordnen."_s.arg(v.alt.datei()));
    store.Bild_Pfad(pfad);
    store.Bild_Beschreibung(aufruf.wert(u"beschreibung"_s).value_or(QString()));
    druckangaben::uebernimm(aufruf, store);
    store.Bild_SortIndex(static_cast<int>(platz++));
  }
}

/// What became of the row of a new picture.
const Zuordnungsweg::Bild& bild_von(const Vorhaben& v, const Zuordnungsweg::Ergebnis& ergebnis) {
  static const Zuordnungsweg::Bild Keines{{}, Zuordnungsweg::Verbleib::Nicht_geschrieben, {}};
  const auto bild = std::find_if(ergebnis.bilder.begin(), ergebnis.bilder.end(),
      [&](const Zuordnungsweg::Bild& b) { return b.name == v.neu.datei(); });
  return bild == ergebnis.bilder.end() ? Keines : *bild;
}

/// Writes the new rows; the copies of those that were not written are removed with `kopien`. Where nobody can tell, the
/// copies stay: a file without a row is cleared away some day, a row without its file shows nothing.
int speichere(const Datensatz& satz, Befehlssitzung& sitzung, const std::vector<Vorhaben>& plan, Bildkopien& kopien) {
  const Zuordnungsweg::Ergebnis ergebnis = sitzung.speichere(satz);
  for (const Vorhaben& v : plan) {
    const Zuordnungsweg::Bild& bild = bild_von(v, ergebnis);
    const bool ungewiss = bild.verbleib == Zuordnungsweg::Verbleib::Ungewiss;
    if (ungewiss)
      ausgabe::meldung(u"Ob „%1“ zugeordnet ist, ist ungewiss; die Kopie in der Ablage bleibt."_s.arg(bild.name));
    if (ungewiss || bild.verbleib == Zuordnungsweg::Verbleib::Neu) kopien.behalte(v.neu);
    if (bild.verbleib != Zuordnungsweg::Verbleib::Neu) continue;
    if (!bild.hinweis.isEmpty()) ausgabe::meldung(u"„%1“ ist trotz des Fehlers zugeordnet."_s.arg(bild.name));
    ausgabe::zeile(bild.name);
  }
  return ergebnis.neu;
}

Ausgang ordne_zu(const Aufruf& aufruf) {
  const Datensatz satz = datensatzangaben::genau(aufruf);
  const QString pfad = namen::ordner(aufruf.noetig(u"ordner"_s));
  namen::beschreibung(aufruf.wert(u"beschreibung"_s).value_or(QString()));
  druckangaben::pruefe(aufruf);
  const QString ordner = bildwurzel(aufruf) + u'\\' + pfad;
  for (const QString& angabe : aufruf.argumente()) pruefe_Quelle(angabe);
  Befehlssitzung sitzung(aufruf);
  sitzung.lies(satz);
  const std::vector<Vorhaben> plan = plane(aufruf, ordner, sitzung);
  mache_Ordner(sitzung, ordner);
  Bildkopien kopien;
  for (const Vorhaben& v : plan) {
    melde_Namen(v);
    kopien.kopiere(v.quelle, ordner, v.neu);
  }
  trage_ein(aufruf, satz, pfad, plan, sitzung);
  const int geschrieben = speichere(satz, sitzung, plan, kopien);
  if (geschrieben == static_cast<int>(plan.size())) return Ausgang::Erledigt;
  ausgabe::meldung(
      u"%1 von %2 Bildern sind nicht zugeordnet."_s.arg(static_cast<int>(plan.size()) - geschrieben).arg(plan.size()));
  return geschrieben == 0 ? Ausgang::Datenbank : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::zuordnen() {
  QList<Option> optionen = befehlszeile::datensatz_Optionen();
  optionen.append({u"ordner"_s, u"PFAD"_s, u"Ordner des Vorgangs unter der Bildablage, etwa \"Belege\\2024\""_s});
  optionen.append({u"beschreibung"_s, u"TEXT"_s, u"Beschreibung, höchstens 250 Zeichen"_s});
  optionen.append(druckangaben::optionen());
  optionen.append({befehlszeile::bilder_Option(), befehlszeile::verbindung_Option()});
  return {u"zuordnen"_s, u"kopiert Bilder in die Ablage und ordnet sie einem Vorgang zu"_s, u"BILD…"_s,
      uR"(Kopiert die Bilddateien unter einem Namen mit Zeitstempel (NAMEyyyyMMdd_HHmmss) in den Ordner
des Vorgangs, mit der Textdatei, die daneben liegt (aus „foto.jpg“ wird „fotojpg.txt“), und
ordnet sie dem Vorgang zu; sie stehen hinter dem letzten Bild. Die Quelle bleibt. Nichts wird
überschrieben. Die neuen Dateinamen stehen auf der Standardausgabe, einer je Zeile.)"_s,
      optionen, 1, 10000, ordne_zu};
}
