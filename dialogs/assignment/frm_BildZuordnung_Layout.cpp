// Where everything stands, and the keys. Measures are twips; each statement's failure is passed over, so that a window
// too small for one control still places the others.
#include <QPointer>
#include <cmath>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Twips.h"
#include "platform/host/Oberflaeche.h"

using namespace oberflaeche;

namespace {

constexpr double Fusszone = 580, Oberkante_Fuss = 560;

std::int32_t ganz(double wert) {
  return static_cast<std::int32_t>(std::nearbyint(wert));
}

}  // namespace

void frm_BildZuordnung::Form_Resize() {
  if (LayoutSperre) return;
  fehler::Weiter weiter;
  const double breite = ScaleWidth();
  const double hoehe = ScaleHeight();
  // A height that would be refused stays as it is, and the width follows all the same.
  const double unterkante = hoehe < Fusszone ? SSS_BildZuordnung.Height() : hoehe - Fusszone;
  weiter([&] { SSS_BildZuordnung.Move(0, 0, breite, unterkante); });
  for (Steuerelement* knopf : std::initializer_list<Steuerelement*>{&SSC_BilderLaden, &SSC_ZuordnungSpeichern,
           &cmd_Abbruch, &SSC_AlleZuordnungen, &SSC_WeitereZuordnungen, &SSR_Sortierung})
    weiter([&] { knopf->Top(hoehe - Oberkante_Fuss); });
  weiter([&] { SSC_BilderLaden.Left(40); });
  const Steuerelement* vorher = &SSC_BilderLaden;
  for (Steuerelement* knopf :
      std::initializer_list<Steuerelement*>{&SSC_AlleZuordnungen, &SSC_WeitereZuordnungen, &SSR_Sortierung}) {
    weiter([&] { knopf->Left(vorher->Left() + vorher->Width() + 40); });
    vorher = knopf;
  }
  weiter([&] { cmd_Abbruch.Left(breite - 20 - cmd_Abbruch.Width()); });
  weiter([&] { SSC_ZuordnungSpeichern.Left(cmd_Abbruch.Left() - 40 - SSC_ZuordnungSpeichern.Width()); });
}

void frm_BildZuordnung::ordne_Splitter(std::int32_t pane) {
  if (LayoutSperre) return;
  fehler::Weiter weiter;
  // Hiding a field takes the focus from it; who was typing goes on typing.
  const QPointer<QWidget> fokus = focusWidget();
  weiter([&] { txt_BildInfo.Visible(false); });
  weiter([&] { lbl_Beschreibung.Visible(false); });
  ordne_Kopf();
  ordne_Felder();
  ordne_Streifen();
  weiter([&] { ereignispumpe().verarbeite_anstehende(); });
  bool neu_bauen = false;
  if (pane < SSSplitter::Anzahl) {
    const std::int32_t hoehe = ganz(SSS_BildZuordnung.PaneHeight(3));
    neu_bauen = hoehe != StreifenHoehe;
    StreifenHoehe = hoehe;
    weiter([&] { SSS_BildZuordnung.PaneHeight(3, hoehe); });
  }
  if (neu_bauen) {
    weiter([&] { SSP_Panel(3).Visible(false); });
    weiter([&] { mauszeiger().form(Zeigerform::Sanduhr); });
    weiter([&] { Create_ThumbNails(ErsteZeile); });
    weiter([&] { Zeichne_Status(); });
    weiter([&] { Zeichne_Entfernt(false); });
    weiter([&] { Markiere_Auswahl(); });
    weiter([&] { Pruefe_Scroll(); });
    weiter([&] { SSP_Panel(3).Visible(true); });
  }
  ordne_Bild();
  if (fokus && fokus != focusWidget()) fokus->setFocus();
}

void frm_BildZuordnung::ordne_Kopf() {
  fehler::Weiter weiter;
  double rechts = SSP_Panel(0).Width() - 20;
  for (int i = 3; i >= 0; --i) {
    weiter([&] { SSP_Anzahl(i).Left(rechts - SSP_Anzahl(i).Width()); });
    rechts = SSP_Anzahl(i).Left();
  }
  const auto endet = [&](SSCommand& knopf, double rand, double oben = 30) {
    weiter([&] { knopf.Left(rand - knopf.Width()); });
    weiter([&] { knopf.Top(oben); });
  };
  endet(SSC_ExifInfo, SSP_Anzahl(0).Left() - 100);
  endet(SSC_Aktualisieren, SSC_ExifInfo.Left() - 40);
  endet(SSC_Drehen180, SSC_Aktualisieren.Left() - 40);
  endet(SSC_Drehen270, SSC_Aktualisieren.Left() - 40, SSC_Drehen180.Top() + SSC_Drehen180.Height() - 10);
  endet(SSC_Drehen90, SSC_Drehen270.Left());
  endet(SSC_Bildbearbeitung, SSC_Drehen90.Left() - 40);
}

void frm_BildZuordnung::ordne_Felder() {
  fehler::Weiter weiter;
  const double breite = SSP_Panel(1).Width();
  const double hoehe = SSP_Panel(1).Height();
  weiter([&] { SSP_NameChanged.Top(40); });
  weiter([&] { SSP_NameChanged.Left(20); });
  weiter([&] { SSP_NameChanged.Width(breite - 40); });
  weiter([&] { txt_BildName.Width(breite - (txt_BildName.Left() + 80 + txt_BildExt.Width() + 20)); });
  weiter([&] { txt_BildExt.Left(txt_BildName.Left() + txt_BildName.Width() + 20); });
  weiter([&] { txt_BildText.Left(40); });
  weiter([&] { lbl_Anzeige(1).Top(chk_Delete.Top() + chk_Delete.Height() + 160); });
  weiter([&] { txt_BildText.Top(lbl_Anzeige(1).Top() + lbl_Anzeige(1).Height()); });
  weiter([&] { txt_BildText.Width(breite - (txt_BildText.Left() + 80)); });
  weiter([&] { txt_BildText.Height(hoehe - (txt_BildText.Top() + 40)); });
}

void frm_BildZuordnung::ordne_Streifen() {
  fehler::Weiter weiter;
  const double hoehe = SSP_Panel(3).Height();
  for (SSCommand* knopf : {&SSC_Scroll_Left, &SSC_Scroll_Right}) {
    weiter([&] { knopf->Top(0); });
    weiter([&] { knopf->Height(hoehe); });
  }
  weiter([&] { SSC_Scroll_Left.Left(0); });
  weiter([&] { SSC_Scroll_Right.Left(SSP_Panel(3).Width() - SSC_Scroll_Right.Width()); });
  Bildfeld& vorlage = Pic_Thumb(0);
  weiter([&] { vorlage.Top(90); });
  weiter([&] { vorlage.Height(hoehe - 200); });
  weiter([&] { vorlage.Width(vorlage.Height() * 1.5); });
  // The first control stands 100 to the right of the template, and so 120 behind the button.
  weiter([&] { vorlage.Left(SSC_Scroll_Left.Width() + 20 - vorlage.Width()); });
  ThumbHoehe = ganz(std::abs(vorlage.Height() / twips::JePixel));
  ThumbBreite = ganz(std::abs(vorlage.Width() / twips::JePixel));
}

void frm_BildZuordnung::ordne_Bild() {
  fehler::Weiter weiter;
  const double breite = SSP_Panel(2).Width();
  const double hoehe = SSP_Panel(2).Height();
  weiter([&] { txt_BildInfo.Top(hoehe - 40 - txt_BildInfo.Height()); });
  weiter([&] { lbl_Beschreibung.Top(txt_BildInfo.Top()); });
  weiter([&] { txt_BildInfo.Left(lbl_Beschreibung.Left() + lbl_Beschreibung.Width() + 40); });
  weiter([&] { txt_BildInfo.Width(breite - (txt_BildInfo.Left() + 80)); });
  weiter([&] { Pic_Bearbeitung.Visible(false); });
  weiter([&] { Pic_Bearbeitung.Top(0); });
  weiter([&] { Pic_Bearbeitung.Left(0); });
  weiter([&] { Pic_Bearbeitung.Width(breite); });
  weiter([&] { Pic_Bearbeitung.Height(hoehe - (txt_BildInfo.Height() + 80)); });
  weiter([&] { mauszeiger().form(Zeigerform::Sanduhr); });
  weiter([&] { Zeige_Bild(); });
  weiter([&] { Pic_Bearbeitung.Left((breite - Pic_Bearbeitung.Width()) / 2); });
  weiter([&] { Pic_Bearbeitung.Visible(true); });
  weiter([&] { txt_BildInfo.Visible(true); });
  weiter([&] { lbl_Beschreibung.Visible(true); });
  weiter([&] { mauszeiger().form(Zeigerform::Standard); });
}

// The text field's height goes off the width too: so this dialog sizes the picture.
void frm_BildZuordnung::Zeige_Bild() {
  if (KeineBilder()) return;
  Pic_Bearbeitung.Visible(false);
  const double a = SSP_Panel(2).Width() - (txt_BildInfo.Height() + 100);
  const double b = SSP_Panel(2).Height() - (txt_BildInfo.Height() + 100);
  Bild_Einpassen(ganz(a / twips::JePixel), ganz(b / twips::JePixel), Pic_Dummy, Pic_Bearbeitung);
  Pic_Bearbeitung.Left((SSP_Panel(2).Width() - Pic_Bearbeitung.Width()) / 2);
  Pic_Bearbeitung.Visible(true);
  sage_Bilder_an();
}

// ── Keys ────────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::Form_KeyDown(std::int16_t KeyCode, std::int16_t Shift) {
  if (keyhandler) fehler::still_enden([&] { keyhandler->KeyDown(KeyCode, Shift); });
}

void frm_BildZuordnung::Form_KeyPress(std::int16_t KeyAscii) {
  if (keyhandler) fehler::still_enden([&] { keyhandler->KeyPress(KeyAscii); });
}

void frm_BildZuordnung::Form_KeyUp(std::int16_t KeyCode, std::int16_t Shift) {
  if (keyhandler) fehler::still_enden([&] { keyhandler->KeyUp(KeyCode, Shift); });
}

// Page Up goes forwards and Page Down backwards: so the users know it.
void frm_BildZuordnung::keyhandler_KeyDown(std::int16_t KeyCode, std::int16_t /*Shift*/) {
  enum Taste : std::int16_t { BildAuf = 33, BildAb = 34, F7 = 118, F8 = 119 };
  if (KeineBilder()) return;
  mauszeiger().form(Zeigerform::Sanduhr);
  if (KeyCode == BildAuf || KeyCode == F8) naechstes_Bild();
  if (KeyCode == BildAb || KeyCode == F7) voriges_Bild();
  mauszeiger().form(Zeigerform::Standard);
}

void frm_BildZuordnung::naechstes_Bild() {
  ++AktThumb;
  if (SichtbareThumbs > 0 && AktThumb >= SichtbareThumbs) {
    AktThumb = SichtbareThumbs - 1;
    // The frame is placed by the selection that follows, not in between.
    AnzeigeAufbau = true;
    SSC_Scroll_Right.Click();
    AnzeigeAufbau = false;
  }
  AktThumb = std::min(AktThumb, Pic_Thumb.Count() - 1);
  Pic_Thumb_Click(AktThumb);
}

void frm_BildZuordnung::voriges_Bild() {
  --AktThumb;
  if (AktThumb < 1) {
    AktThumb = 1;
    if (AktZeile > 0) {
      AnzeigeAufbau = true;
      SSC_Scroll_Left.Click();
      AnzeigeAufbau = false;
    }
  }
  Pic_Thumb_Click(AktThumb);
}
