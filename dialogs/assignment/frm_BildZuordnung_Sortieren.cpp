// Sort mode: dragging a thumbnail to another place of the strip.
#include <vector>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/host/Meldeweg.h"

using namespace Qt::Literals::StringLiterals;

void frm_BildZuordnung::schalte_Sortierung(bool an) {
  if (an) {
    DragAktiv = false;
    setze_Ziehart(1, u"Bei gedrückter Maustaste Bild an die gewünschte Position schieben"_s);
    Shp_Thump.Visible(false);
    SortTabelle = BildTabelle;
    return;
  }
  setze_Ziehart(0, u"Bearbeitungsprogramm starten mit Doppelklick"_s);
  Shp_Thump.Visible(true);
  // A row's number taken for a control's: with a scrolled strip another picture gets selected. Meant so.
  if (AktZeile >= 0 && AktZeile <= LetzteZeile()) Pic_Thumb_Click(AktZeile + 1);
}

void frm_BildZuordnung::setze_Ziehart(int art, const QString& hinweis) {
  for (const auto& [i, thumbnail] : Pic_Thumb) {
    thumbnail->DragMode(art);
    thumbnail->ToolTipText(hinweis);
  }
}

void frm_BildZuordnung::ziehe_ueber_Thumb(std::int32_t index) {
  if (!DragAktiv) {
    DragAktiv = true;
    DragQuelle = index;
  }
  Markiere_Ziel(index);
}

void frm_BildZuordnung::ziehe_ueber_Scroll_Right() {
  if (!DragAktiv) return;
  const std::int32_t vorher = ErsteZeile;
  ++ErsteZeile;
  Create_ThumbNails(ErsteZeile);
  // The picture that was taken stays the source, though its control is another one now, or none.
  DragQuelle -= ErsteZeile - vorher;
  Zeichne_Status();
  Zeichne_Entfernt(true);
}

void frm_BildZuordnung::lasse_fallen(std::int32_t index) {
  Shp_Sort.Visible(false);
  DragAktiv = false;
  DragZiel = index;
  Bild_Verschieben();
}

void frm_BildZuordnung::Form_DragEnde() {
  DragAktiv = false;
  Shp_Sort.Visible(false);
}

void frm_BildZuordnung::Bild_Verschieben() {
  fehler::gemeldet(Name(), u"Bild_Verschieben", [this] { verschiebe_Zeile(); });
}

// The selected row's number stays as it is. The picture that it stands for may be another one afterwards, so the fields
// show that one: what is typed into them goes to its row.
void frm_BildZuordnung::verschiebe_Zeile() {
  if (DragZiel == DragQuelle || !SortTabelle) return;
  XArrayDBObject& tabelle = *SortTabelle;
  const std::int32_t quelle = DragQuelle + ErsteZeile - 1;
  const std::int32_t ziel = DragZiel + ErsteZeile - 1;
  // Before anything is taken out: a row without a place to go to would be lost.
  if (ziel < 0 || ziel > LetzteZeile()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  std::vector<Variant> zeile;
  zeile.reserve(spalte::SortIndex);
  for (std::int32_t s = 0; s < spalte::SortIndex; ++s) zeile.push_back(tabelle.Value(quelle, s));
  tabelle.DeleteRows(quelle);
  if (ziel > LetzteZeile())
    tabelle.AppendRows(1);
  else
    tabelle.InsertRows(ziel);
  for (std::int32_t s = 0; s < spalte::SortIndex; ++s)
    tabelle.Value(ziel, s, std::move(zeile[static_cast<std::size_t>(s)]));
  Spur(LetzteZeile());
  Bildspur spur = std::move(Spur(quelle));
  spuren_.erase(spuren_.begin() + quelle);
  spuren_.insert(spuren_.begin() + ziel, std::move(spur));
  for (std::int32_t r = 0; r <= LetzteZeile(); ++r) {
    Zelle(r, spalte::SortIndex, r);
    Zelle(r, spalte::ZeileGeaendert, true);
  }
  SetzeDatenGeaendert(true);
  Create_ThumbNails(ErsteZeile);
  Zeichne_Status();
  Zeichne_Entfernt(true);
  if (AktZeile >= 0 && AktZeile <= LetzteZeile()) zeige_Auswahl();
}
