// What ties the rows of the table to the records of the collection, and what the dialog leaves of it.
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"
#include "store/mod_BilderSuchen.h"

Bildspur& frm_BildZuordnung::Spur(std::int32_t zeile) {
  const auto nummer = static_cast<std::size_t>(std::max(zeile, 0));
  if (nummer >= spuren_.size()) spuren_.resize(nummer + 1);
  return spuren_[nummer];
}

/// Brings the collection into the order of the strip, each record with its flags: no record takes another's place.
void frm_BildZuordnung::ordne_Sammlung() {
  std::vector<const clsBilderSpeicher*> folge;
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i)
    if (const auto& satz = Spur(i).satz) folge.push_back(satz.get());
  Sammlungszugriff::ordne(Sammlung(), folge);
}

// ── Rows that only the dialog has ───────────────────────────────────────────────────────────────────────────────────

/// New pictures that the last save could not put into the collection; new ones that are marked for removal are not
/// among them and go.
std::vector<frm_BildZuordnung::Ungespeicherte> frm_BildZuordnung::nimm_ungespeicherte() {
  std::vector<Ungespeicherte> behalten;
  std::int32_t platz = 0;
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) {
    const bool neu = !Ja(i, spalte::Gespeichert);
    if (neu && (Ja(i, spalte::Entfernen) || text::Trim(Text(i, spalte::VollerPfad)).isEmpty())) continue;
    if (neu) {
      Ungespeicherte zeile{platz, {}, Spur(i)};
      for (std::int32_t s = 0; s <= spalte::Letzte; ++s) zeile.zellen.push_back(BildTabelle->Value(i, s));
      behalten.push_back(std::move(zeile));
    }
    ++platz;
  }
  return behalten;
}

void frm_BildZuordnung::stelle_zurueck(const std::vector<Ungespeicherte>& zeilen) {
  for (const Ungespeicherte& zeile : zeilen) {
    if (KeineBilder()) {
      Init_ThumbNailArray();
    } else {
      Spur(LetzteZeile());
      Tabelle().InsertRows(zeile.platz);
      spuren_.emplace(spuren_.begin() + zeile.platz);
    }
    const std::int32_t nummer = LetzteZeile() == 0 ? 0 : zeile.platz;
    for (std::int32_t s = 0; s <= spalte::Letzte; ++s)
      Tabelle().Value(nummer, s, zeile.zellen[static_cast<std::size_t>(s)]);
    Spur(nummer) = zeile.spur;
  }
  if (zeilen.empty()) return;
  SSP_Anzahl(3).Caption(QString::number(LetzteZeile() + 1));
  SetzeDatenGeaendert(true);
}

// ── Leaving ─────────────────────────────────────────────────────────────────────────────────────────────────────────

/// The user asked for the save that has just been done: the marks that it left in the collection stand.
void frm_BildZuordnung::bestaetige_Vormerkungen() {
  for (Bildspur& spur : spuren_) {
    const std::int32_t platz = Sammlungszugriff::platz(Sammlung(), spur.satz.get());
    if (platz < 0) continue;
    Sammlung().AktInd(platz);
    spur.bestaetigt_vorgemerkt = Sammlung().Bild_Delete();
  }
}

/// Before the dialog closes: marks that no save confirmed which the user asked for are taken back, and what was not
/// saved is left for whoever opens the dialog again.
void frm_BildZuordnung::verlasse() {
  if (pNurAnzeige || !pBildObj) return;
  for (const Bildspur& spur : spuren_) {
    const std::int32_t platz = Sammlungszugriff::platz(Sammlung(), spur.satz.get());
    if (platz < 0) continue;
    Sammlung().AktInd(platz);
    Sammlung().Bild_Delete(spur.bestaetigt_vorgemerkt);
  }
  hinterlasse_Spur();
}

QStringList frm_BildZuordnung::ungespeicherte_Namen() {
  QStringList namen;
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) {
    const auto& satz = Spur(i).satz;
    if (text::Trim(Text(i, spalte::VollerPfad)).isEmpty() || (satz && gleicht(*satz, i))) continue;
    namen.append(text::Trim(Text(i, spalte::Bildname)) + u'.' + text::Trim(Text(i, spalte::BildExt)));
  }
  return namen;
}

/// The row holds what its record holds; one that was only looked at does.
bool frm_BildZuordnung::gleicht(const clsBilderSpeicher& satz, std::int32_t zeile) {
  const QString textdatei = Bilddatei::von(satz, Text(zeile, spalte::Root)).textpfad();
  const QString info = fehler::still_enden([&] { return mod_BilderSuchen::Fkt_ReadFile(textdatei); });
  return satz.Bild_Bildname == Text(zeile, spalte::Bildname) && satz.Bild_Pfad == Text(zeile, spalte::Pfad) &&
      satz.Bild_Beschreibung == Text(zeile, spalte::Beschreibung) && satz.Bild_Drucken == Ja(zeile, spalte::Drucken) &&
      satz.Bild_AlsAnhang == Ja(zeile, spalte::AlsAnhang) && satz.Bild_NeueSeite == Ja(zeile, spalte::NeueSeite) &&
      satz.Bild_DruckGesamteSeite == Ja(zeile, spalte::DruckGesamteSeite) &&
      Spur(zeile).bestaetigt_vorgemerkt == Ja(zeile, spalte::Entfernen) &&
      text::Trim(info) == text::Trim(Text(zeile, spalte::BildInfo));
}

void frm_BildZuordnung::hinterlasse_Spur() {
  if (pNurAnzeige || !pBildObj) return;
  spuren_.resize(static_cast<std::size_t>(KeineBilder() ? 0 : LetzteZeile() + 1));
  auto spur = std::make_shared<Dialogspur>();
  spur->bilder = spuren_;
  spur->ungespeichert = DatenGeaendert && !abgelehnt_;
  if (spur->ungespeichert)
    spur->stand = std::make_shared<Dialogstand>(Dialogstand{BildTabelle, spuren_, ungespeicherte_Namen()});
  Sammlungszugriff::spur(*pBildObj) = std::move(spur);
}

/// Opens with what the last dialog over this collection left unsaved. False where it left nothing.
bool frm_BildZuordnung::nimm_Stand_auf() {
  const auto spur = Sammlungszugriff::spur(Sammlung());
  if (!spur || !spur->stand || pNurAnzeige) return false;
  const auto stand = std::exchange(spur->stand, nullptr);
  BildTabelle = stand->tabelle;
  spuren_ = stand->spuren;
  wiederaufgenommen_ = true;
  SSP_Anzahl(3).Caption(QString::number(LetzteZeile() + 1));
  SetzeDatenGeaendert(true);
  SSC_AlleZuordnungen.Enabled(true);
  SSC_WeitereZuordnungen.Enabled(true);
  return true;
}
