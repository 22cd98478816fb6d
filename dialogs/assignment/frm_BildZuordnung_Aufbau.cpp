// The form at design time: its controls, their places, texts and events. What the layout sets again is not set here.
#include <array>

#include "dialogs/Symbole.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "imaging/Ersatzbild.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;
using symbole::bebildere;

namespace {

constexpr double Startbreite = 12000, Starthoehe = 9000, Breite_Felder = 3840;
constexpr double Hoehe_Kopf = 810, Hoehe_Streifen = 2100, Hoehe_Fuss = 520;

/// The picture that stands for a missing file, drawn once for all forms.
const std::shared_ptr<const Bild>& platzhalter() {
  static const auto Platzhalterbild =
      gezeichnetes_Blatt(u":/kvo/icons/bild_fehlt.svg"_s, {800, 600}, QColor(225, 225, 225));
  return Platzhalterbild;
}

}  // namespace

frm_BildZuordnung::frm_BildZuordnung() : Form(u"frm_BildZuordnung"_s) {
  Caption(u"Bildzuordnung"_s);
  entwirf_Kopf();
  entwirf_Felder();
  entwirf_Bild();
  entwirf_Streifen();
  entwirf_Fussleiste();
  SSS_BildZuordnung.PaneHeight(0, Hoehe_Kopf);
  SSS_BildZuordnung.PaneWidth(1, Breite_Felder);
  SSS_BildZuordnung.PaneHeight(3, Hoehe_Streifen);
  for (int i = 0; i < SSSplitter::Anzahl; ++i) SSS_BildZuordnung.setze_Inhalt(i, SSP_Panel(i));
  entwirf_Reihenfolge();
  verbinde_Ereignisse();
  setze_Abbruchknopf(&cmd_Abbruch);
  // Narrower, the buttons at the bottom would cover each other.
  setMinimumSize(800, 480);
  setze_Innengroesse(Startbreite, Starthoehe);
}

void frm_BildZuordnung::entwirf_Kopf() {
  SSP_Panel(0).Caption(u"  Beleg- oder Monatgeauftrags-Informationen"_s);
  QFont fett = SSP_Panel(0).font();
  fett.setBold(true);
  SSP_Panel(0).setFont(fett);
  constexpr std::array<double, 4> Breiten{500, 450, 400, 450};
  const std::array<QString, 4> texte{u"Bild:"_s, u"0"_s, u"von"_s, u"0"_s};
  for (int i = 0; i < 4; ++i) {
    const auto n = static_cast<std::size_t>(i);
    SSPanel& feld = SSP_Anzahl.entwirf(i);
    feld.Move(0, 220, Breiten[n], 340);
    feld.Caption(texte[n]);
    feld.setFrameShape(QFrame::NoFrame);
    feld.setAlignment(Qt::AlignCenter);
  }
  bebildere(SSC_Bildbearbeitung, u"bildbearbeitung"_s, u"Bildbearbeitungsprogramm auswählen und starten"_s, 32);
  bebildere(SSC_Drehen90, u"drehen90"_s, u"Bild um 90° nach rechts  drehen"_s, 32);
  bebildere(SSC_Drehen180, u"drehen180"_s, u"Bild um 180° nach rechts  drehen"_s, 18);
  bebildere(SSC_Drehen270, u"drehen270"_s, u"Bild um 270° nach rechts  drehen"_s, 18);
  bebildere(SSC_Aktualisieren, u"aktualisieren"_s, u"Zuordnung neu einlesen"_s, 32);
  bebildere(SSC_ExifInfo, u"exifinfo"_s, u"Erweiterte Bildeigenschaften"_s, 32);
  for (SSCommand* knopf : {&SSC_Bildbearbeitung, &SSC_Drehen90, &SSC_Aktualisieren, &SSC_ExifInfo})
    knopf->Move(0, 30, 750, 735);
  for (SSCommand* knopf : {&SSC_Drehen180, &SSC_Drehen270}) knopf->Move(0, 30, 420, 372);
}

void frm_BildZuordnung::entwirf_Felder() {
  SSP_NameChanged.Move(20, 40, Breite_Felder - 40, 855);
  lbl_Anzeige.entwirf(0).Move(60, 60, 600, 330);
  lbl_Anzeige(0).Caption(u"Name:"_s);
  lbl_Anzeige(0).setBuddy(&txt_BildName);
  cmd_OriginalName.Move(660, 60, 390, 330);
  bebildere(cmd_OriginalName, u"originalname"_s, u"Auf Original-Namen zurücksetzen"_s, 16);
  SSP_WarnungName.Move(1110, 60, 2670, 330);
  SSP_WarnungName.Caption(u"Dateiname schon vorhanden!"_s);
  SSP_WarnungName.ForeColor(farben::Klassisch[4]);
  txt_BildName.Move(60, 420, 2500, 360);
  txt_BildName.setAccessibleName(u"Name"_s);
  txt_BildName.ToolTipText(u"Nicht erlaubt sind \\ / : * ? \" < > | ' und Steuerzeichen"_s);
  txt_BildName.verbiete(Bilddatei::ist_verboten, Bilddatei::Namenslaenge);
  txt_BildExt.Move(2580, 420, 600, 360);
  txt_BildExt.Locked(true);
  txt_BildExt.setFocusPolicy(Qt::NoFocus);
  txt_BildExt.setAccessibleName(u"Dateiendung"_s);

  double oben = 975;
  for (auto [schalter, text] : {std::pair{&chk_Drucken, u"Drucken"_s}, std::pair{&chk_GesamteSeite, u"Gesamte Seite"_s},
           std::pair{&chk_NeueSeite, u"Neue Seite"_s}, std::pair{&chk_AlsAnhang, u"Als Anhang"_s},
           std::pair{&chk_Delete, u"Aus Zuordnung entfernen"_s}}) {
    schalter->Move(60, oben, 3300, 300);
    schalter->Caption(text);
    oben += 315;
  }
  lbl_Anzeige.entwirf(1).Move(60, oben, 1500, 255);
  lbl_Anzeige(1).Caption(u"Drucktext:"_s);
  lbl_Anzeige(1).setBuddy(&txt_BildText);
  txt_BildText.Move(40, oben + 255, 3300, 2000);
  txt_BildText.setAccessibleName(u"Drucktext"_s);
}

void frm_BildZuordnung::entwirf_Bild() {
  for (Bildfeld* buehne : {&Pic_Dummy, &Pic_Dummy0, &Pic_Blank}) {
    buehne->AutoSize = true;
    buehne->Visible(false);
  }
  Pic_Blank.Picture(platzhalter());
  Pic_Bearbeitung.ToolTipText(u"Bearbeitungsprogramm starten mit Doppelklick"_s);
  Pic_Bearbeitung.setAccessibleName(u"Bild"_s);
  lbl_Beschreibung.Move(60, 0, 810, 300);
  lbl_Beschreibung.Caption(u"Bild-Info:"_s);
  lbl_Beschreibung.setBuddy(&txt_BildInfo);
  txt_BildInfo.Move(900, 0, 3000, 900);
  txt_BildInfo.setAccessibleName(u"Bild-Info"_s);
}

void frm_BildZuordnung::entwirf_Streifen() {
  // The frames stand above the thumbnails, which are put below them one by one, and the buttons above both.
  SSC_Scroll_Left.Move(0, 0, 360, Hoehe_Streifen);
  bebildere(SSC_Scroll_Left, u"links"_s, u"Streifen um ein Bild nach links"_s, 20);
  SSC_Scroll_Right.Move(0, 0, 360, Hoehe_Streifen);
  bebildere(SSC_Scroll_Right, u"rechts"_s, u"Streifen um ein Bild nach rechts"_s, 20);
  Pic_Thumb.entwirf(0).ToolTipText(u"Bearbeitungsprogramm starten mit Doppelklick"_s);
  for (Shape* rahmen : {&Shp_Thump, &Shp_Sort}) rahmen->BorderWidth(2);
  SSC_Scroll_Left.raise();
  SSC_Scroll_Right.raise();
}

void frm_BildZuordnung::entwirf_Fussleiste() {
  const auto fuss = [](auto& knopf, const QString& text, const QString& bild, double breite) {
    knopf.Move(0, Starthoehe - 560, breite, Hoehe_Fuss);
    knopf.Caption(text);
    bebildere(knopf, bild);
  };
  fuss(SSC_BilderLaden, u"&Bilder suchen   "_s, u"bilder_suchen"_s, 1750);
  fuss(SSC_AlleZuordnungen, u"      &Alle Zuordnungen des   Bildes anzeigen      "_s, u"alle_zuordnungen"_s, 2520);
  fuss(
      SSC_WeitereZuordnungen, u"      &Weitere Zuordnungen    bearbeiten           "_s, u"weitere_zuordnungen"_s, 2400);
  fuss(SSR_Sortierung, u"         Sortieren"_s, u"sortieren"_s, 1500);
  SSR_Sortierung.ToolTipText(u"Schaltet in den Sortier-Modus um"_s);
  fuss(SSC_ZuordnungSpeichern, u"Zuordnung &speichern  "_s, u"zuordnung_speichern"_s, 2450);
  fuss(cmd_Abbruch, u"&Zurück"_s, u"zurueck"_s, 1300);
}

void frm_BildZuordnung::entwirf_Reihenfolge() {
  QWidget* vorher = nullptr;
  for (QWidget* naechstes : std::initializer_list<QWidget*>{&txt_BildName, &cmd_OriginalName, &chk_Drucken,
           &chk_GesamteSeite, &chk_NeueSeite, &chk_AlsAnhang, &chk_Delete, &txt_BildText, &txt_BildInfo,
           &SSC_Scroll_Left, &SSC_Scroll_Right, &SSC_BilderLaden, &SSC_AlleZuordnungen, &SSC_WeitereZuordnungen,
           &SSR_Sortierung, &SSC_ZuordnungSpeichern, &cmd_Abbruch, &SSC_Bildbearbeitung, &SSC_Drehen90, &SSC_Drehen180,
           &SSC_Drehen270, &SSC_Aktualisieren, &SSC_ExifInfo}) {
    if (vorher) setTabOrder(vorher, naechstes);
    vorher = naechstes;
  }
}

void frm_BildZuordnung::verbinde_Ereignisse() {
  SSS_BildZuordnung.Resize = [this](int pane) { ordne_Splitter(pane); };
  for (const auto& [i, panel] : SSP_Panel) panel->DragOver = [this] { Shp_Sort.Visible(false); };
  verbinde_Schalter(chk_AlsAnhang, &Arbeitszeile::AlsAnhang);
  verbinde_Schalter(chk_Drucken, &Arbeitszeile::Drucken);
  verbinde_Schalter(chk_GesamteSeite, &Arbeitszeile::DruckGesamteSeite);
  verbinde_Schalter(chk_NeueSeite, &Arbeitszeile::NeueSeite);
  verbinde_Schalter(chk_Delete, &Arbeitszeile::Entfernen);
  verbinde_Text(txt_BildText, &Arbeitszeile::Beschreibung);
  verbinde_Text(txt_BildInfo, &Arbeitszeile::BildInfo);
  txt_BildName.Change = [this] { aendere_Namen(); };
  cmd_OriginalName.Click = [this] { txt_BildName.Text(QString(Zeile(AktZeile).OriginalName)); };
  Pic_Bearbeitung.DblClick = [this] { zeige_im_Programm(Zeile(AktZeile).VollerPfad); };
  SSC_Scroll_Left.Click = [this] { scrolle(-1); };
  SSC_Scroll_Right.Click = [this] { scrolle(1); };
  SSC_Scroll_Right.DragOver = [this] { ziehe_ueber_Scroll_Right(); };
  SSR_Sortierung.Click = [this](bool an) { schalte_Sortierung(an); };
  SSC_BilderLaden.Click = [this] { mit_Meldung(u"SSC_BilderLaden_Click", [this] { suche_Bilder(); }); };
  SSC_Drehen90.Click = [this] { Bild_Drehen(u"JpgTransformRotate90"_s); };
  SSC_Drehen180.Click = [this] { Bild_Drehen(u"JpgTransformRotate180"_s); };
  SSC_Drehen270.Click = [this] { Bild_Drehen(u"JpgTransformRotate270"_s); };
  SSC_Bildbearbeitung.Click = [this] { bearbeite_Bild(); };
  // It reports under the other button's name; whoever searches the reports knows it so.
  SSC_ExifInfo.Click = [this] { mit_Meldung(u"SSC_BilderLaden_Click", [this] { zeige_Exif(); }); };
  SSC_AlleZuordnungen.Click = [this] { zeige_AlleZuordnungen(); };
  SSC_WeitereZuordnungen.Click = [this] {
    mit_Meldung(u"SSC_WeitereZuordnungen_Click", [this] { zeige_WeitereZuordnungen(); });
  };
  SSC_Aktualisieren.Click = [this] { aktualisiere(); };
  SSC_ZuordnungSpeichern.Click = [this] { speichere_und_schliesse(); };
  cmd_Abbruch.Click = [this] {
    bool weiter = true;
    Pruefe_Speichern(false, weiter);
    if (!weiter) return;
    verlasse();
    if (pNurAnzeige)
      Unload();
    else
      Hide();
  };
}

std::unique_ptr<Bildfeld> frm_BildZuordnung::neues_Pic_Thumb(int index) {
  auto neu = std::make_unique<Bildfeld>(&SSP_Panel(3), u"Pic_Thumb(%1)"_s.arg(index));
  neu->stackUnder(&Shp_Thump);
  neu->setAccessibleName(u"Bild %1 des Streifens"_s.arg(index));
  neu->Click = [this, index] { Pic_Thumb_Click(index); };
  neu->DblClick = [this] { zeige_im_Programm(AktDatei); };
  neu->DragOver = [this, index] { ziehe_ueber_Thumb(index); };
  neu->DragDrop = [this, index] { lasse_fallen(index); };
  return neu;
}
