#include "component/weg/Posten.h"

#include <QHash>
#include <algorithm>
#include <limits>

#include "component/weg/Ablage.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg {
namespace {

template <class Anweisung>
void je_Zeile(clsBildZuordnungen& bilder, Anweisung&& anweisung) {
  for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
    bilder.AktInd(i);
    anweisung(i);
  }
}

class Vorbereitung {
 public:
  Vorbereitung(clsBildZuordnungen& bilder, const Auftrag& auftrag)
      : bilder_(bilder), auftrag_(auftrag), spur_(Sammlungszugriff::spur(bilder)) {
    if (!spur_) return;
    for (std::size_t i = 0; i < spur_->bilder.size(); ++i)
      if (spur_->bilder[i].satz) orte_.insert(spur_->bilder[i].satz.get(), i);
  }

  std::vector<Posten> laufe() {
    verwirf_nie_Gespeicherte();
    behalte_Zeilen_ohne_Kennung();
    je_Zeile(bilder_, [&](std::int32_t) {
      if (bilder_.Bild_Neu()) gib_Schluessel(*bilder_.AktBildObj);
      if (bilder_.Bild_Changeflag()) kuerze_Text(*bilder_.AktBildObj);
    });
    if (auftrag_.mit_Benutzer) fuehre_Reihenfolge_nach();
    nimm_Gruppen_auf();
    je_Zeile(bilder_, [&](std::int32_t) {
      if (ist_beruehrt()) liste_.push_back(neuer_Posten(art_der_Zeile()));
    });
    for (Posten& eines : liste_) nimm_neue_ohne_Datei_heraus(eines);
    if (spur_)
      for (const Bildspur& bild : spur_->bilder) nimm_Spur_auf(bild);
    ordne();
    return std::move(liste_);
  }

 private:
  const Bildspur* spur_von(const clsBilderSpeicher* satz) const {
    const auto ort = orte_.find(satz);
    return ort == orte_.end() ? nullptr : &spur_->bilder[*ort];
  }

  /// A row that was never stored and is not to be stored needs no statement.
  void verwirf_nie_Gespeicherte() {
    std::vector<std::shared_ptr<clsBilderSpeicher>> saetze;
    je_Zeile(bilder_, [&](std::int32_t) {
      if (bilder_.Bild_Neu() && bilder_.Bild_Delete()) saetze.push_back(bilder_.AktBildObj);
    });
    for (const auto& satz : saetze) Sammlungszugriff::entnimm(bilder_, satz.get());
  }

  /// An empty part adds no condition: the statement would take rows of other pictures with it.
  void behalte_Zeilen_ohne_Kennung() {
    je_Zeile(bilder_, [&](std::int32_t) {
      if (!bilder_.Bild_Delete() || hat_ganze_Kennung(*bilder_.AktBildObj)) return;
      bilder_.Bild_Delete(false);
      bilder_.Bild_Changeflag(false);
      Posten eines = neuer_Posten(Wunsch::Art::Entfernen);
      eines.zustand = Posten::Zustand::Aufgegeben;
      eines.sage(
          u"Die Zeile hat in der Tabelle eine leere Angabe und bleibt stehen, weil mit ihr andere Bilder "
          "entfernt würden. Lassen Sie die Tabelle prüfen."_s);
      liste_.push_back(eines);
    });
  }

  void gib_Schluessel(clsBilderSpeicher& satz) const {
    satz.Bild_Key1 = auftrag_.vorgang.Key1;
    satz.Bild_Key2 = auftrag_.vorgang.Key2;
    satz.Bild_Key3 = auftrag_.vorgang.Key3;
    satz.Bild_Key4 = auftrag_.vorgang.Key4;
    if (satz.Bild_Typ1.isEmpty()) satz.Bild_Typ1 = auftrag_.vorgang.Typ1;
    if (satz.Bild_Typ2.isEmpty()) satz.Bild_Typ2 = auftrag_.vorgang.Typ2;
  }

  void kuerze_Text(clsBilderSpeicher& satz) {
    const QString passender = Bilddatei::passender_Drucktext(satz.Bild_Beschreibung);
    if (passender.size() != satz.Bild_Beschreibung.size()) gekuerzte_.insert(&satz, true);
    satz.Bild_Beschreibung = passender;
  }

  /// The dialog numbers the rows that it saves by their place. A row that it leaves alone keeps its stored number,
  /// which differs from its place when rows before it were removed once: such rows are written too, or the order would
  /// change. The order is the collection's, which is that of the last save: the strip may have been sorted since.
  void fuehre_Reihenfolge_nach() {
    const auto neue = neue_ohne_Datei();
    bool geschrieben = !neue.isEmpty();
    je_Zeile(bilder_, [&](std::int32_t) { geschrieben |= ist_beruehrt(); });
    if (!geschrieben) return;
    const std::vector<std::int64_t> gespeichert = Sammlungszugriff::gespeicherte_Reihenfolge(bilder_);
    std::int64_t platz = 0;
    const auto zaehle_neue_hinter = [&](const clsBilderSpeicher* satz) {
      for (clsBilderSpeicher* neuer : neue.value(satz))
        if (ist_Platz(platz)) neuer->Bild_SortIndex = static_cast<std::int16_t>(platz++);
    };
    zaehle_neue_hinter(nullptr);
    je_Zeile(bilder_, [&](std::int32_t i) {
      setze_Platz(platz++, gespeichert[static_cast<std::size_t>(i)]);
      zaehle_neue_hinter(bilder_.AktBildObj.get());
    });
  }

  static bool ist_Platz(std::int64_t platz) { return platz <= std::numeric_limits<std::int16_t>::max(); }

  void setze_Platz(std::int64_t platz, std::int64_t gespeicherter) {
    const bool geaendert = bilder_.Bild_Changeflag();
    if (bilder_.Bild_Delete() || (bilder_.Bild_Neu() && !geaendert) || !ist_Platz(platz)) return;
    bilder_.Bild_SortIndex(static_cast<int>(platz));
    if (geaendert || gespeicherter == platz) return;
    bilder_.Bild_Changeflag(true);
    nachgefuehrte_.insert(bilder_.AktBildObj.get(), true);
  }

  /// New pictures without a file, by the record that stands before them in the strip; none for the first ones.
  QHash<const clsBilderSpeicher*, QList<clsBilderSpeicher*>> neue_ohne_Datei() const {
    QHash<const clsBilderSpeicher*, QList<clsBilderSpeicher*>> neue;
    if (!spur_) return neue;
    const clsBilderSpeicher* vorher = nullptr;
    for (const Bildspur& bild : spur_->bilder) {
      if (bild.ohne_Datei)
        neue[vorher].append(bild.ohne_Datei.get());
      else if (Sammlungszugriff::platz(bilder_, bild.satz.get()) >= 0)
        vorher = bild.satz.get();
    }
    return neue;
  }

  /// Rows of one identity: as soon as one of them is written, all are.
  void nimm_Gruppen_auf() {
    QHash<QString, int> anzahl;
    QHash<QString, bool> beruehrt;
    je_Zeile(bilder_, [&](std::int32_t) {
      const QString diese = kennung(*bilder_.AktBildObj);
      ++anzahl[diese];
      beruehrt[diese] |= ist_beruehrt();
    });
    je_Zeile(bilder_, [&](std::int32_t) {
      const QString diese = kennung(*bilder_.AktBildObj);
      if (anzahl[diese] < 2 || !beruehrt[diese]) return;
      Posten eines = neuer_Posten(art_der_Zeile());
      eines.in_Gruppe = true;
      eines.nachgefuehrt |= !ist_beruehrt();
      liste_.push_back(eines);
      bilder_.Bild_Changeflag(false);
      bilder_.Bild_Delete(false);
    });
  }

  /// The row under the cursor is to be written or removed.
  bool ist_beruehrt() const { return bilder_.Bild_Changeflag() || bilder_.Bild_Delete(); }

  Wunsch::Art art_der_Zeile() const {
    if (bilder_.Bild_Delete()) return Wunsch::Art::Entfernen;
    return bilder_.Bild_Neu() ? Wunsch::Art::Einfuegen : Wunsch::Art::Aendern;
  }

  Posten neuer_Posten(Wunsch::Art art) const {
    Posten eines;
    eines.wunsch = {art, wie_gespeichert(*bilder_.AktBildObj)};
    eines.satz = bilder_.AktBildObj;
    eines.spur = spur_von(eines.satz.get());
    eines.nachgefuehrt = nachgefuehrte_.contains(eines.satz.get());
    if (gekuerzte_.contains(eines.satz.get())) sage_gekuerzt(eines);
    if (eines.spur) nimm_Folgen_auf(eines);
    if (art == Wunsch::Art::Aendern && auftrag_.mit_Benutzer) pruefe_Datei(eines);
    return eines;
  }

  /// A picture that the dialog renamed is left out here: its file is looked for when the table follows the name.
  void pruefe_Datei(Posten& eines) const {
    const auto& fehlten = auftrag_.fehlten;
    if (eines.spur && !eines.spur->fruehere.empty()) return;
    if (std::find(fehlten.begin(), fehlten.end(), eines.satz.get()) != fehlten.end()) return;
    if (!ablage::ist_da(auftrag_.wurzel, *eines.satz))
      eines.sage(
          u"Die Datei ist nicht mehr in der Bildablage. Legen Sie sie zurück, oder entfernen Sie das Bild aus dem "
          "Vorgang."_s);
  }

  static void sage_gekuerzt(Posten& eines) {
    eines.sage(
        u"Der Drucktext ist gekürzt; die Tabelle fasst 250 Zeichen, und ein Hochkomma zählt doppelt. Kürzen Sie ihn "
        "selbst, wenn das Ende wichtig ist."_s);
  }

  static void nimm_Folgen_auf(Posten& eines) {
    if (!eines.spur->ungekuerzter_Drucktext.isEmpty()) sage_gekuerzt(eines);
    if (!eines.spur->abgelehnter_Name.isEmpty()) sage_abgelehnt(eines);
    if (!eines.spur->text.gescheitert() || eines.wunsch.art == Wunsch::Art::Entfernen) return;
    eines.text_fehlt = true;
    const QString& grund = eines.spur->text.grund;
    eines.textgrund = u"Der Infotext ist nicht geschrieben"_s + (grund.isEmpty() ? u"."_s : u": "_s + grund);
  }

  static void sage_abgelehnt(Posten& eines) {
    const QString& grund = eines.spur->umbenennung.grund;
    eines.hinweise.append(
        u"Das Bild behält seinen Namen, „%1“ bekommt es nicht%2. Alles andere daran ist davon unberührt; wählen Sie "
        "einen anderen Namen."_s.arg(eines.spur->abgelehnter_Name, grund.isEmpty() ? QString() : u": "_s + grund));
    // Without a reason the dialog has told it already.
    eines.sagen |= !grund.isEmpty();
  }

  /// A row without its file shows nothing. Without a source nothing can be copied again; the file may come back all the
  /// same, with its share.
  void nimm_neue_ohne_Datei_heraus(Posten& eines) {
    if (eines.zustand != Posten::Zustand::Offen || eines.wunsch.art != Wunsch::Art::Einfuegen) return;
    if (ablage::ist_da(auftrag_.wurzel, eines.wunsch.soll.satz)) {
      const QString einwand =
          ablage::einwand_Groesse(auftrag_.wurzel, eines.wunsch.soll.satz, eines.spur ? eines.spur->groesse : -1);
      if (!einwand.isEmpty()) eines.sage(einwand);
      return;
    }
    eines.zustand = Posten::Zustand::Ohne_Datei;
    eines.grund = u"Die Datei ist nicht in der Bildablage angekommen."_s;
    Sammlungszugriff::entnimm(bilder_, eines.satz.get());
  }

  void nimm_Spur_auf(const Bildspur& bild) {
    const bool bekannt = std::any_of(liste_.begin(), liste_.end(), [&](const Posten& p) { return p.spur == &bild; });
    if (bekannt || (!bild.satz && !bild.ohne_Datei)) return;
    Posten eines;
    eines.spur = &bild;
    eines.satz = bild.ohne_Datei ? bild.ohne_Datei : bild.satz;
    eines.zustand = bild.ohne_Datei ? Posten::Zustand::Ohne_Datei : Posten::Zustand::Hinweis;
    if (bild.ohne_Datei) {
      gib_Schluessel(*eines.satz);
      kuerze_Text(*eines.satz);
      eines.grund = u"Die Datei ist nicht kopiert: "_s + bild.kopie.grund;
    }
    eines.wunsch = {bild.ohne_Datei ? Wunsch::Art::Einfuegen : Wunsch::Art::Aendern, wie_gespeichert(*eines.satz)};
    nimm_Folgen_auf(eines);
    if (bild.ohne_Datei || eines.text_fehlt || !eines.hinweise.isEmpty()) liste_.push_back(eines);
  }

  void ordne() {
    const auto rang = [&](const Posten& p) {
      if (p.spur) return static_cast<std::size_t>(std::distance<const Bildspur*>(spur_->bilder.data(), p.spur));
      const std::int32_t zeile = Sammlungszugriff::platz(bilder_, p.satz.get());
      return zeile < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(zeile);
    };
    std::stable_sort(liste_.begin(), liste_.end(), [&](const Posten& a, const Posten& b) { return rang(a) < rang(b); });
  }

  clsBildZuordnungen& bilder_;
  const Auftrag& auftrag_;
  std::shared_ptr<Dialogspur> spur_;
  QHash<const clsBilderSpeicher*, std::size_t> orte_;
  QHash<const clsBilderSpeicher*, bool> nachgefuehrte_;
  QHash<const clsBilderSpeicher*, bool> gekuerzte_;
  std::vector<Posten> liste_;
};

}  // namespace

QString Posten::name() const {
  if (zustand == Zustand::Ohne_Datei && spur && !spur->quelle.isEmpty())
    return spur->quelle.mid(spur->quelle.lastIndexOf(u'\\') + 1);
  return Bilddatei::von(*satz).datei();
}

std::vector<Posten> bereite_vor(clsBildZuordnungen& bilder, const Auftrag& auftrag) {
  return Vorbereitung(bilder, auftrag).laufe();
}

}  // namespace weg
