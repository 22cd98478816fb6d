// What ties the rows of the table to the records of the collection, and what the dialog leaves of it.
#include <utility>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "store/Sammlungszugriff.h"

namespace {

/// The table that a dialog left with what it had not saved.
struct Arbeitsstand final : Dialogstand {
  std::shared_ptr<Arbeitstabelle> tabelle;
};

}  // namespace

/// Brings the collection into the order of the strip, each record with its flags: no record takes another's place.
void frm_BildZuordnung::ordne_Sammlung() {
  Sammlungszugriff::ordne(Sammlung(), Tabelle().Folge());
}

/// Shows how many pictures there are, and whether there is something to be saved.
void frm_BildZuordnung::zeige_Anzahl(bool geaendert) {
  SSP_Anzahl(3).Caption(QString::number(LetzteZeile() + 1));
  SetzeDatenGeaendert(geaendert);
}

// ── Leaving ─────────────────────────────────────────────────────────────────────────────────────────────────────────

template <class Arbeit>
void frm_BildZuordnung::fuer_jeden_Satz(Arbeit&& arbeit) {
  for (Arbeitszeile& zeile : Tabelle()) {
    const std::int32_t platz = Sammlungszugriff::platz(Sammlung(), zeile.Spur.satz.get());
    if (platz < 0) continue;
    Sammlung().AktInd(platz);
    arbeit(zeile.Spur);
  }
}

/// The user asked for the save that has just been done: the marks that it left in the collection stand.
void frm_BildZuordnung::bestaetige_Vormerkungen() {
  fuer_jeden_Satz([this](Bildspur& spur) { spur.bestaetigt_vorgemerkt = Sammlung().Bild_Delete(); });
}

/// Before the dialog closes: marks that no save confirmed which the user asked for are taken back, and what was not
/// saved is left for whoever opens the dialog again.
void frm_BildZuordnung::verlasse() {
  if (pNurAnzeige || !pBildObj) return;
  fuer_jeden_Satz([this](const Bildspur& spur) { Sammlung().Bild_Delete(spur.bestaetigt_vorgemerkt); });
  hinterlasse_Spur();
}

void frm_BildZuordnung::hinterlasse_Spur() {
  if (pNurAnzeige || !pBildObj) return;
  auto spur = std::make_shared<Dialogspur>();
  spur->bilder = Tabelle().Spuren();
  spur->ungespeichert = DatenGeaendert && !abgelehnt_;
  if (spur->ungespeichert) {
    auto stand = std::make_shared<Arbeitsstand>();
    stand->tabelle = BildTabelle;
    // A row that was only looked at holds what its record holds.
    for (const Arbeitszeile& zeile : Tabelle())
      if (!zeile.ist_leer() && !(zeile.Spur.satz && zeile.gleicht(*zeile.Spur.satz)))
        stand->betroffene.append(zeile.Dateiname());
    spur->stand = std::move(stand);
  }
  Sammlungszugriff::spur(*pBildObj) = std::move(spur);
}

/// Opens with what the last dialog over this collection left unsaved. False where it left nothing.
bool frm_BildZuordnung::nimm_Stand_auf() {
  const auto spur = Sammlungszugriff::spur(Sammlung());
  if (!spur || pNurAnzeige) return false;
  const auto stand = std::dynamic_pointer_cast<Arbeitsstand>(std::exchange(spur->stand, nullptr));
  if (!stand) return false;
  BildTabelle = stand->tabelle;
  wiederaufgenommen_ = true;
  zeige_Anzahl(true);
  SSC_AlleZuordnungen.Enabled(true);
  SSC_WeitereZuordnungen.Enabled(true);
  return true;
}
