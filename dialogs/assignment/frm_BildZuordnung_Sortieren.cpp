// Sort mode: dragging a thumbnail to another place of the strip.
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

// The selected row's number stays as it is. The picture that it stands for may be another one afterwards, so the fields
// show that one: what is typed into them goes to its row.
void frm_BildZuordnung::Bild_Verschieben() {
  fehler::gemeldet(Name(), u"Bild_Verschieben", [this] {
    if (DragZiel == DragQuelle || !SortTabelle) return;
    SortTabelle->verschiebe(DragQuelle + ErsteZeile - 1, DragZiel + ErsteZeile - 1);
    SetzeDatenGeaendert(true);
    zeichne_Streifen();
    if (AktZeile >= 0 && AktZeile <= LetzteZeile()) zeige_Auswahl();
  });
}
