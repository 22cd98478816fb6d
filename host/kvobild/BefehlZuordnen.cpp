#include <QDateTime>
#include <algorithm>
#include <vector>

#include "host/betrieb/aufnahme/Aufnahmeinhalt.h"
#include "host/betrieb/aufnahme/Bildkopien.h"
#include "host/betrieb/aufnahme/Bildzeilen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "host/kvobild/Druckangaben.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString WieAufgenommen = u"wie-aufgenommen"_s;

/// A picture to be assigned, and the name that it gets.
struct Vorhaben {
  namen::Bilddatei alt;
  namen::Bilddatei neu;
};

void melde_Namen(const Vorhaben& vorhaben) {
  if (vorhaben.alt.name.size() + 15 > Bilddatei::Namenslaenge)
    ausgabe::meldung(u"Der Name „%1“ ist gekürzt, damit er mit dem Zeitstempel in die Tabelle passt: „%2“."_s.arg(
        vorhaben.alt.datei(), vorhaben.neu.datei()));
  if (vorhaben.neu.name.contains(u'.'))
    ausgabe::meldung(
        u"Achtung: „%1“ hat einen Punkt im Namen; das Aufräumen der Ablage erkennt solche Bilder nicht als zugeordnet."_s
            .arg(vorhaben.neu.datei()));
}

/// Copies the pictures one after the other. The first that can't be copied ends all of it.
std::vector<Vorhaben> kopiere(
    const Aufruf& aufruf, const QString& ordner, Befehlssitzung& sitzung, Bildkopien& kopien) {
  const QString stempel = Bilddatei::Stempel(QDateTime::currentDateTime());
  const bool aufrecht = !aufruf.gesetzt(WieAufgenommen);
  bildzeilen::Vergebene vergebene(sitzung.store(), ordner);
  std::vector<Vorhaben> plan;
  ausgabe::Fortschritt balken(u"Bilder"_s);
  for (const QString& angabe : aufruf.argumente()) {
    balken.zeige(plan.size(), static_cast<std::size_t>(aufruf.argumente().size()));
    const Aufnahmequelle quelle = aufnahmequelle::pruefe(angabe);
    const Aufnahmeinhalt inhalt = aufnahmeinhalt::bereite(quelle, aufrecht, false);
    const namen::Bilddatei neu = vergebene.freier_Name({quelle.name.name, inhalt.ext}, stempel);
    plan.push_back({quelle.name, neu});
    melde_Namen(plan.back());
    if (!inhalt.hinweis.isEmpty()) ausgabe::meldung(inhalt.hinweis);
    if (inhalt.wie_Quelle)
      kopien.kopiere(quelle.pfad, ordner, neu);
    else
      kopien.schreibe(inhalt.bytes, quelle.pfad, ordner, neu);
  }
  return plan;
}

std::vector<Vorhaben> kopiere_alle(
    const Aufruf& aufruf, const QString& ordner, Befehlssitzung& sitzung, Bildkopien& kopien) {
  try {
    return kopiere(aufruf, ordner, sitzung, kopien);
  } catch (const Abbruch& abbruch) {
    throw Abbruch(abbruch.ausgang(), abbruch.text() + u" Nichts ist zugeordnet."_s);
  }
}

void trage_ein(const Aufruf& aufruf, const Datensatz& satz, const QString& pfad, const std::vector<Vorhaben>& plan,
    Befehlssitzung& sitzung) {
  clsBildZuordnungen& store = sitzung.store();
  std::int64_t platz = bildzeilen::naechster_Platz(store, static_cast<std::int64_t>(plan.size()));
  for (const Vorhaben& v : plan) {
    bildzeilen::lege_an(store, satz, v.alt, v.neu, pfad, platz++);
    store.Bild_Beschreibung(aufruf.wert(u"beschreibung"_s).value_or(QString()));
    druckangaben::uebernimm(aufruf, store);
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
  for (const QString& angabe : aufruf.argumente()) aufnahmequelle::pruefe(angabe);
  Befehlssitzung sitzung(aufruf);
  sitzung.lies(satz);
  bildzeilen::mache_Ordner(sitzung.store(), ordner);
  Bildkopien kopien(ausgabe::meldung);
  const std::vector<Vorhaben> plan = kopiere_alle(aufruf, ordner, sitzung, kopien);
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
  optionen.append({WieAufgenommen, {}, u"die Kopie liegt, wie die Kamera sie gehalten hat; ihre Exif-Marke bleibt"_s});
  optionen.append({befehlszeile::bilder_Option(), befehlszeile::verbindung_Option()});
  return {u"zuordnen"_s, u"kopiert Bilder in die Ablage und ordnet sie einem Vorgang zu"_s, u"BILD…"_s,
      uR"(Kopiert die Bilddateien unter einem Namen mit Zeitstempel (NAMEyyyyMMdd_HHmmss) in den Ordner
des Vorgangs, mit der Textdatei, die daneben liegt (aus „foto.jpg“ wird „fotojpg.txt“), und
ordnet sie dem Vorgang zu; sie stehen hinter dem letzten Bild. Die Quelle bleibt. Nichts wird
überschrieben. Die neuen Dateinamen stehen auf der Standardausgabe, einer je Zeile.

Ein Foto, das nach seiner Exif-Marke zu drehen ist, steht in der Kopie aufrecht, ohne Verlust, wo
seine Größe es zulässt, und seine Marke sagt das; „--wie-aufgenommen“ lässt es liegen. Aus HEIC,
AVIF und WebP wird JPEG, da sonst niemand sie zeigt.)"_s,
      optionen, 1, 10000, ordne_zu};
}
