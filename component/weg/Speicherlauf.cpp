#include "component/weg/Speicherlauf.h"

#include <QSet>
#include <algorithm>
#include <utility>

#include "component/weg/Ablage.h"
#include "component/weg/Gruppen.h"
#include "component/weg/Meldung.h"
#include "store/BasZuordnungen.h"
#include "store/Bilddatei.h"
#include "store/Bildereignis.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg {
namespace {

using Zustand = Posten::Zustand;
using Art = Wunsch::Art;
using Ergebnis = Zuordnungsweg::Ergebnis;
using Verbleib = Zuordnungsweg::Verbleib;

Verbleib verbleib_von(const Posten& eines) {
  if (eines.zustand == Zustand::Ohne_Datei) return Verbleib::Nicht_kopiert;
  if (eines.zustand == Zustand::Offen && eines.ungewiss) return Verbleib::Ungewiss;
  if (eines.zustand == Zustand::Offen || eines.zustand == Zustand::Aufgegeben || eines.text_fehlt)
    return Verbleib::Nicht_geschrieben;
  if (eines.zustand == Zustand::Hinweis) return Verbleib::Unveraendert;
  if (eines.nachgefuehrt) return Verbleib::Nachgefuehrt;
  if (eines.wunsch.art == Art::Einfuegen) return Verbleib::Neu;
  return eines.wunsch.art == Art::Entfernen ? Verbleib::Entfernt : Verbleib::Geaendert;
}

/// Which number of the result counts a picture; one that only has a note is counted nowhere.
constexpr std::pair<Verbleib, int Ergebnis::*> Zaehler[]{{Verbleib::Neu, &Ergebnis::neu},
    {Verbleib::Geaendert, &Ergebnis::geaendert}, {Verbleib::Entfernt, &Ergebnis::entfernt},
    {Verbleib::Nachgefuehrt, &Ergebnis::nachgefuehrt}, {Verbleib::Ungewiss, &Ergebnis::ungewiss},
    {Verbleib::Nicht_geschrieben, &Ergebnis::nicht_geschrieben},
    {Verbleib::Nicht_kopiert, &Ergebnis::nicht_geschrieben},
    {Verbleib::Nicht_gespeichert, &Ergebnis::nicht_geschrieben}};

void zaehle(Verbleib verbleib, Ergebnis& ergebnis) {
  for (const auto& [gezaehlter, zahl] : Zaehler)
    if (gezaehlter == verbleib) ++(ergebnis.*zahl);
}

/// What became of one of a group, whose rows are written together.
void melde_Ereignis(const Posten& eines) {
  if (eines.zustand != Zustand::Offen || eines.wunsch.art == Art::Aendern) return;
  using Tat = Bildereignis::Tat;
  const Tat tat = eines.wunsch.art == Art::Einfuegen ? Tat::Zuordnen : Tat::Entfernen;
  bildereignis::melde(Bildereignis::von(eines.wunsch.soll.satz, tat, eines.grund.isEmpty()));
}

class Speicherlauf {
 public:
  Speicherlauf(clsBildZuordnungen& bilder, Verbindungen& verbindungen, const Auftrag& auftrag)
      : bilder_(bilder), verbindungen_(verbindungen), auftrag_(auftrag) {}

  void laufe() {
    posten_ = bereite_vor(bilder_, auftrag_);
    if (wartet_auf_Tabelle()) {
      fuehre_Namen_nach();
      schreibe_und_pruefe();
    }
    if (auftrag_.mit_Benutzer) frage_Benutzer();
    for (Posten& eines : posten_)
      if (eines.in_Gruppe && eines.zustand == Zustand::Offen) kennzeichne_Wartende_der_Gruppe(eines);
  }

  /// Adds what became of each picture.
  void trage_ein(Zuordnungsweg::Ergebnis& ergebnis) const {
    for (const Posten& eines : posten_) {
      QStringList worte = eines.hinweise;
      for (const QString& grund : {eines.grund, eines.textgrund})
        if (!grund.isEmpty()) worte.append(grund);
      ergebnis.bilder.push_back({eines.name(), verbleib_von(eines), worte.join(u' ')});
      zaehle(ergebnis.bilder.back().verbleib, ergebnis);
    }
    ergebnis.geprueft = ergebnis.geprueft && geprueft_;
  }

 private:
  bool wartet() const {
    return std::any_of(posten_.begin(), posten_.end(), [](const Posten& p) { return p.wartet(); });
  }

  bool wartet_auf_Tabelle() const {
    return std::any_of(posten_.begin(), posten_.end(), [](const Posten& p) { return p.zustand == Zustand::Offen; });
  }

  void frage_Benutzer() {
    while (wartet() && meldung::bejaht(meldung::frage(posten_), true)) versuche_noch_einmal();
    // A lost answer does not mean that what was written is lost.
    if (!geprueft_) pruefe();
    if (const QString text = meldung::abschluss(posten_); !text.isEmpty()) meldung::warne(text);
  }

  void versuche_noch_einmal() {
    const QString stoerung = verbindungen_.erneuere();
    for (Posten& eines : posten_)
      if (eines.zustand == Zustand::Ohne_Datei) kopiere(eines);
    schreibe_Texte();
    for (Posten& eines : posten_)
      if (eines.zustand == Zustand::Offen && !stoerung.isEmpty()) eines.grund = stoerung;
    if (!wartet_auf_Tabelle() || !stoerung.isEmpty()) return;
    // Only what the table does not have is written: otherwise a lost answer would make two rows of one.
    if (pruefe() && wartet_auf_Tabelle()) schreibe_und_pruefe();
  }

  void schreibe_und_pruefe() {
    schreibe();
    if (!pruefe()) return;
    // A row that is found under its new name only now has its other values still to come.
    if (!fuehre_Namen_nach()) return;
    schreibe();
    pruefe();
  }

  void schreibe() {
    const Berichtsfang fang(!auftrag_.mit_Benutzer);
    // Writing doubles the quotes in a record's text.
    for (Posten& eines : posten_)
      if (eines.zustand == Zustand::Offen) eines.satz->Bild_Beschreibung = eines.wunsch.soll.satz.Bild_Beschreibung;
    bilder_.FKT_SpeichernBilder();
    // Whoever writes next, in this run or in a later one, gets a connection that is not the failed one.
    if (!fang.leer()) BasZuordnungen::verwirf_Verbindung();
    for (Posten& eines : posten_)
      if (eines.zustand == Zustand::Offen && !eines.in_Gruppe) {
        eines.abgelehnt = ist_gekennzeichnet(eines);
        eines.grund = eines.abgelehnt ? fang.erster() : QString();
      }
    schreibe_Gruppen();
  }

  void schreibe_Gruppen() {
    QSet<QString> fertige;
    for (Posten& erster : posten_) {
      const QString diese = kennung(erster.wunsch.soll.satz);
      if (!erster.in_Gruppe || erster.zustand != Zustand::Offen || fertige.contains(diese)) continue;
      fertige.insert(diese);
      std::vector<clsBilderSpeicher> zeilen;
      for (const Posten& eines : posten_)
        if (eines.in_Gruppe && eines.wird_geprueft() && eines.wunsch.art != Art::Entfernen &&
            kennung(eines.wunsch.soll.satz) == diese)
          zeilen.push_back(eines.wunsch.soll.satz);
      const QString grund = ersetze_Gruppe(verbindungen_, erster.wunsch.soll.satz, zeilen);
      for (Posten& eines : posten_) {
        if (!eines.in_Gruppe || kennung(eines.wunsch.soll.satz) != diese) continue;
        eines.grund = grund;
        melde_Ereignis(eines);
      }
    }
  }

  std::optional<std::vector<Stand>> lies(QString& grund) {
    auto gefunden = verbindungen_.lies_Staende(auftrag_.vorgang, grund);
    if (gefunden) return gefunden;
    // The host's connection may have died while the dialog was open.
    const QString stoerung = verbindungen_.erneuere();
    if (stoerung.isEmpty()) gefunden = verbindungen_.lies_Staende(auftrag_.vorgang, grund);
    return gefunden;
  }

  /// False when the table could not be read.
  bool pruefe() {
    const auto gefunden = lies(grund_);
    geprueft_ = gefunden.has_value();
    if (!gefunden) {
      merke_Ungewisse();
      return false;
    }
    std::vector<Wunsch> wuensche;
    std::vector<Posten*> gepruefte;
    for (Posten& eines : posten_) {
      if (!eines.wird_geprueft()) continue;
      wuensche.push_back(eines.wunsch);
      gepruefte.push_back(&eines);
    }
    const std::vector<Befund> befunde = weg::pruefe(wuensche, *gefunden);
    for (std::size_t i = 0; i < gepruefte.size(); ++i) uebernimm(*gepruefte[i], befunde[i]);
    return true;
  }

  bool ist_gekennzeichnet(const Posten& eines) {
    const std::int32_t zeile = Sammlungszugriff::platz(bilder_, eines.satz.get());
    if (zeile < 0) return false;
    bilder_.AktInd(zeile);
    return bilder_.Bild_Changeflag() || bilder_.Bild_Delete();
  }

  /// The statements' own results are all that is known then.
  void merke_Ungewisse() {
    for (Posten& eines : posten_) {
      if (eines.zustand != Zustand::Offen) continue;
      const bool wartet = eines.in_Gruppe ? !eines.grund.isEmpty() : ist_gekennzeichnet(eines);
      eines.ungewiss = wartet;
      if (!wartet) eines.zustand = Zustand::Erledigt;
      if (wartet && eines.grund.isEmpty()) eines.grund = grund_;
    }
  }

  void uebernimm(Posten& eines, const Befund& befund) {
    eines.ungewiss = false;
    switch (befund.lage) {
      case Befund::Lage::Erfuellt:
        eines.zustand = Zustand::Erledigt;
        eines.grund.clear();
        if (std::exchange(eines.abgelehnt, false))
          eines.hinweise.append(u"Trotz des Fehlers der Datenbank gespeichert."_s);
        if (!eines.nachtrag.isEmpty()) eines.hinweise.append(std::exchange(eines.nachtrag, QString()));
        break;
      case Befund::Lage::Doppelt:
        nimm_Doppelte_heraus(eines);
        break;
      case Befund::Lage::Fehlt:
        uebernimm_Fehlende(eines);
        break;
      case Befund::Lage::Anders:
      case Befund::Lage::Steht_noch:
        eines.zustand = Zustand::Offen;
        if (eines.grund.isEmpty())
          eines.grund = befund.lage == Befund::Lage::Anders
              ? u"In der Tabelle steht anderes: %1."_s.arg(befund.abweichungen.join(u", "_s))
              : u"Die Zeile steht noch in der Tabelle."_s;
        // The row is there: only its values are to come.
        if (befund.lage == Befund::Lage::Anders && !eines.in_Gruppe && eines.wunsch.art == Art::Einfuegen)
          eines.vorhanden = true;
        break;
    }
    kennzeichne(eines, eines.zustand == Zustand::Offen);
  }

  void uebernimm_Fehlende(Posten& eines) {
    const bool umbenannt = eines.spur && !eines.spur->fruehere.empty() && !eines.Name_nachgefuehrt;
    const bool wieder = eines.in_Gruppe || (eines.wunsch.art == Art::Einfuegen && !eines.vorhanden) || umbenannt;
    eines.zustand = wieder ? Zustand::Offen : Zustand::Aufgegeben;
    if (wieder && eines.grund.isEmpty()) eines.grund = u"Die Zeile steht nicht in der Tabelle."_s;
    // Somebody else may have removed it, and this run must not insert it again.
    if (!wieder)
      eines.sage(
          u"Die Zeile steht nicht mehr in der Tabelle; ein anderer Arbeitsplatz hat sie wohl entfernt. Soll das Bild "
          "bleiben, hängen Sie es noch einmal an."_s);
  }

  void nimm_Doppelte_heraus(Posten& eines) {
    std::vector<clsBilderSpeicher> zeilen;
    const QString diese = kennung(eines.wunsch.soll.satz);
    for (const Posten& andere : posten_)
      if (andere.wird_geprueft() && andere.wunsch.art != Art::Entfernen && kennung(andere.wunsch.soll.satz) == diese)
        zeilen.push_back(andere.wunsch.soll.satz);
    const QString grund = ersetze_Gruppe(verbindungen_, eines.wunsch.soll.satz, zeilen);
    eines.zustand = Zustand::Erledigt;
    eines.grund.clear();
    if (grund.isEmpty())
      eines.hinweise.append(u"Die Zeile stand doppelt in der Tabelle; eine ist wieder entfernt."_s);
    else
      eines.sage(
          u"Die Zeile steht doppelt in der Tabelle (%1). Öffnen Sie den Vorgang noch einmal und entfernen Sie "
          "eine davon."_s.arg(grund));
  }

  /// What waits is flagged in the collection, what is done is not.
  void kennzeichne(Posten& eines, bool offen) {
    const bool loeschen = eines.wunsch.art == Art::Entfernen;
    eines.satz->Bild_Beschreibung = eines.wunsch.soll.satz.Bild_Beschreibung;
    if (Sammlungszugriff::platz(bilder_, eines.satz.get()) < 0) {
      if (!offen) return;
      Sammlungszugriff::haenge_an(bilder_, eines.satz);
    }
    if (!offen && loeschen && eines.zustand == Zustand::Erledigt) {
      Sammlungszugriff::entnimm(bilder_, eines.satz.get());
      return;
    }
    // Groups are written beside the collection's own statements.
    const bool selbst = offen && !eines.in_Gruppe;
    bilder_.AktInd(Sammlungszugriff::platz(bilder_, eines.satz.get()));
    bilder_.Bild_Delete(selbst && loeschen);
    bilder_.Bild_Changeflag(selbst && !loeschen);
    bilder_.Bild_Neu(offen && eines.wunsch.art == Art::Einfuegen && !eines.vorhanden);
  }

  /// Only for whoever looks at the flags when all is over: no further statement of the collection's is sent.
  void kennzeichne_Wartende_der_Gruppe(const Posten& eines) {
    const std::int32_t zeile = Sammlungszugriff::platz(bilder_, eines.satz.get());
    if (zeile < 0) return;
    bilder_.AktInd(zeile);
    bilder_.Bild_Delete(eines.wunsch.art == Art::Entfernen);
    bilder_.Bild_Changeflag(eines.wunsch.art != Art::Entfernen);
  }

  void kopiere(Posten& eines) {
    const clsBilderSpeicher& satz = *eines.satz;
    const bool hat_Quelle = eines.spur && !eines.spur->quelle.isEmpty();
    // What lies there under its name without its size is somebody else's, and copying says so.
    const bool da = ablage::ist_da(auftrag_.wurzel, satz) &&
        (!hat_Quelle || ablage::einwand_Groesse(auftrag_.wurzel, satz, eines.spur->groesse).isEmpty());
    if (hat_Quelle && !da) {
      if (const auto grund = ablage::kopiere(auftrag_.wurzel, eines.spur->quelle, satz)) {
        eines.grund = u"Die Datei ist nicht kopiert: "_s + *grund;
        return;
      }
      if (!eines.spur->bildinfo.isEmpty()) eines.text_fehlt = true;
    }
    if (!ablage::ist_da(auftrag_.wurzel, satz)) return;
    const QString einwand = ablage::einwand_Groesse(auftrag_.wurzel, satz, eines.spur ? eines.spur->groesse : -1);
    if (!einwand.isEmpty()) eines.sage(einwand);
    eines.zustand = Zustand::Offen;
    eines.grund.clear();
    Sammlungszugriff::haenge_an(bilder_, eines.satz);
  }

  void schreibe_Texte() {
    for (Posten& eines : posten_) {
      if (!eines.text_fehlt || eines.zustand == Zustand::Ohne_Datei) continue;
      const auto grund = ablage::schreibe_Text(auftrag_.wurzel, *eines.satz, eines.spur->bildinfo);
      eines.text_fehlt = grund.has_value();
      eines.textgrund = grund ? u"Der Infotext ist nicht geschrieben: "_s + *grund : QString();
    }
  }

  bool fuehre_Namen_nach() {
    bool getan = false;
    for (Posten& eines : posten_)
      if (eines.spur && !eines.spur->fruehere.empty() && eines.zustand == Zustand::Offen && !eines.Name_nachgefuehrt)
        getan |= fuehre_Namen_nach(eines);
    return getan;
  }

  /// The table follows the file, in every record that has the picture.
  bool fuehre_Namen_nach(Posten& eines) {
    // Before the first statement only where the dialog says so; afterwards the row's absence says it.
    const bool gesagt = eines.spur->umbenennung.gescheitert() && eines.spur->abgelehnter_Name.isEmpty();
    if (!gesagt && eines.grund.isEmpty()) return false;
    const clsBilderSpeicher neu = eines.wunsch.soll.satz;
    const bool neue_Datei = ablage::ist_da(auftrag_.wurzel, neu);
    bool getan = false;
    for (const Fruehere& frueher : eines.spur->fruehere) {
      clsBilderSpeicher alt = neu;
      alt.Bild_Bildname = frueher.name;
      alt.Bild_Pfad = frueher.pfad;
      const bool alte_Datei = ablage::ist_da(auftrag_.wurzel, alt);
      if (neue_Datei) {
        // A file that has the old name by now is another picture, and so may be the other records' rows.
        getan |= Tabelle_folgt(eines, alt, neu, !alte_Datei);
      } else if (alte_Datei) {
        if (!Tabelle_folgt(eines, neu, alt, true)) continue;
        eines.satz->Bild_Bildname = alt.Bild_Bildname;
        eines.satz->Bild_Pfad = alt.Bild_Pfad;
        eines.wunsch.soll = {alt, eines.wunsch.soll.platz};
        eines.sage(
            u"Das Bild heißt weiter so, weil seine Datei nicht „%1“ heißt; die Tabelle hat wieder diesen Namen."_s.arg(
                Bilddatei::von(neu).datei()));
        return true;
      }
    }
    if (getan) eines.nachtrag = u"Der neue Name fehlte in der Tabelle und ist nachgetragen."_s;
    return getan;
  }

  bool Tabelle_folgt(Posten& eines, const clsBilderSpeicher& alt, const clsBilderSpeicher& neu, bool alle_Vorgaenge) {
    const QString grund = benenne_in_Tabelle_um(verbindungen_, alt, neu, alle_Vorgaenge ? nullptr : &auftrag_.vorgang);
    if (!grund.isEmpty()) eines.grund = grund;
    eines.Name_nachgefuehrt = grund.isEmpty();
    return grund.isEmpty();
  }

  clsBildZuordnungen& bilder_;
  Verbindungen& verbindungen_;
  const Auftrag& auftrag_;
  std::vector<Posten> posten_;
  QString grund_;
  bool geprueft_ = true;
};

}  // namespace

void speichere(
    clsBildZuordnungen& bilder, Verbindungen& verbindungen, const Auftrag& auftrag, Zuordnungsweg::Ergebnis& ergebnis) {
  Speicherlauf lauf(bilder, verbindungen, auftrag);
  lauf.laufe();
  lauf.trage_ein(ergebnis);
}

}  // namespace weg
