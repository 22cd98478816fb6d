// The form at design time, and its layout.
#include "dialogs/search/frm_BilderSuchen.h"

#include "dialogs/Symbole.h"
#include "dialogs/search/Vorschaubild.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/shell/Programmstart.h"

using namespace Qt::Literals::StringLiterals;
using symbole::bebildere;
using symbole::symbol;

namespace {

constexpr double Startbreite = 13200, Starthoehe = 9300;
constexpr double Rand = 40, Oben = 840, Breite_Ordner = 3300;
constexpr double Hoehe_Fuss = 360, Hoehe_Knoepfe = 465, Hoehe_Text = 900, Hoehe_Info = 330;

}  // namespace

frm_BilderSuchen::frm_BilderSuchen() : Form(u"frm_BilderSuchen"_s) {
  entwirf();
  verbinde_Ereignisse();
  setze_Abbruchknopf(&cmd_Abbruch);
  // The keys go to the folders first: the list of files is out of sight while it is read, and the first control turns.
  Dir1.setFocus();
  setMinimumSize(640, 480);
  setze_Innengroesse(Startbreite, Starthoehe);
}

void frm_BilderSuchen::entwirf() {
  for (const auto& [nummer, name] :
      {std::pair{12, u"laufwerk_diskette"_s}, std::pair{14, u"laufwerk_system"_s}, std::pair{15, u"laufwerk_cd"_s},
          std::pair{16, u"laufwerk_wechsel"_s}, std::pair{17, u"laufwerk_netz"_s}, std::pair{19, u"laufwerk_fest"_s}})
    ImageList1.Add(QString::number(nummer), symbol(name));
  ImageCombo1.Move(Rand, 390, Breite_Ordner, 390);
  ImageCombo1.ToolTipText(u"Laufwerk"_s);
  ImageCombo1.setAccessibleName(u"Laufwerk"_s);
  Dir1.Move(Rand, Oben, Breite_Ordner, 4000);
  Dir1.ToolTipText(u"Ordner mit Doppelklick oder Eingabetaste öffnen"_s);
  Dir1.setAccessibleName(u"Ordner"_s);
  bebildere(SSC_Drehen, u"drehen90"_s, u"Bild 90° nach rechts  drehen"_s);
  bebildere(SSC_Bildbearbeitung, u"bildbearbeitung"_s, u"Bildbearbeitungsprogramm auswählen und starten"_s);
  for (SSCommand* knopf : {&SSC_Drehen, &SSC_Bildbearbeitung}) knopf->Move(0, 30, 750, 735);
  for (ListView* liste : {&lvwContent, &SSP_Liste}) liste->setze_Bildseite(101);
  lvwContent.setAccessibleName(u"Dateien"_s);
  SSP_Liste.setFocusPolicy(Qt::NoFocus);
  cbo_BildTypen.Move(0, 0, 4500, 390);
  cbo_BildTypen.ToolTipText(u"Dateityp"_s);
  cbo_BildTypen.setAccessibleName(u"Dateityp"_s);
  SSP_Info.Caption(u"Infotext für die ausgewählten Dateien"_s);
  SSP_Info.Move(Rand, 0, 4000, Hoehe_Info);
  txt_Info.Move(Rand, 0, 4000, Hoehe_Text);
  txt_Info.setAccessibleName(u"Infotext"_s);
  const auto knopf = [](SSCommand& k, const QString& text, double breite) {
    k.Caption(text);
    k.Move(Rand, 0, breite, Hoehe_Knoepfe);
  };
  knopf(cmd_EinlesenAbrrechen, u"&Einlesen abbrechen"_s, 2400);
  knopf(cmd_TextSpeichern, u"&Info speichern"_s, 1900);
  knopf(cmd_Uebernehmen, u"&Übernehmen"_s, 1700);
  knopf(cmd_Abbruch, u"&Zurück"_s, 1500);
  SSP_Anzahl.Move(Rand, 0, 2400, Hoehe_Fuss);
  SSP_Fortschritt.Move(2460, 0, 4000, Hoehe_Fuss);
  SSP_Fortschritt.Visible(false);
  Pic_Blank.AutoSize = true;
  Pic_Blank.Visible(false);
  Pic_Blank.Picture(vorschaubild::ersatzbild());
}

void frm_BilderSuchen::verbinde_Ereignisse() {
  ImageCombo1.Click = [this] { ImageCombo1_Click(); };
  Dir1.Change = [this] { Dir1_Change(); };
  cbo_BildTypen.Click = [this] { cbo_BildTypen_Click(); };
  lvwContent.ItemClick = [this](int eintrag) { lvwContent_ItemClick(eintrag); };
  lvwContent.DblClick = [this] {
    if (const int eintrag = lvwContent.SelectedItem(); eintrag > 0)
      shell::ShellExecute_open(lvwContent.ItemTag(eintrag));
  };
  cmd_EinlesenAbrrechen.Click = [this] { pEinlesenAbbrechen = true; };
  cmd_TextSpeichern.Click = [this] { speichere_Text(); };
  cmd_Uebernehmen.Click = [this] { uebernimm(); };
  cmd_Abbruch.Click = [this] {
    pFindArray.reset();
    Hide();
  };
  SSC_Drehen.Click = [this] { drehe(); };
  SSC_Bildbearbeitung.Click = [this] { bearbeite(); };
}

void frm_BilderSuchen::Form_Resize() {
  fehler::Weiter weiter;
  const double breite = ScaleWidth();
  const double hoehe = ScaleHeight();
  weiter([&] { SSC_Bildbearbeitung.Left(breite - Rand - SSC_Bildbearbeitung.Width()); });
  weiter([&] { SSC_Drehen.Left(SSC_Bildbearbeitung.Left() - 20 - SSC_Drehen.Width()); });
  for (SSPanel* feld : {&SSP_Anzahl, &SSP_Fortschritt}) weiter([&] { feld->Top(hoehe - Hoehe_Fuss); });
  weiter([&] { SSP_Fortschritt.Left(SSP_Anzahl.Left() + SSP_Anzahl.Width() + 20); });
  weiter([&] { SSP_Fortschritt.Width(breite - Rand - SSP_Fortschritt.Left()); });
  const double knoepfe = hoehe - Hoehe_Fuss - Hoehe_Knoepfe - 40;
  for (SSCommand* knopf : {&cmd_EinlesenAbrrechen, &cmd_TextSpeichern, &cmd_Uebernehmen, &cmd_Abbruch})
    weiter([&] { knopf->Top(knoepfe); });
  weiter([&] { cmd_TextSpeichern.Left(cmd_EinlesenAbrrechen.Left() + cmd_EinlesenAbrrechen.Width() + 40); });
  weiter([&] { cmd_Abbruch.Left(breite - Rand - cmd_Abbruch.Width()); });
  weiter([&] { cmd_Uebernehmen.Left(cmd_Abbruch.Left() - 40 - cmd_Uebernehmen.Width()); });
  weiter([&] { txt_Info.Top(knoepfe - 40 - txt_Info.Height()); });
  weiter([&] { SSP_Info.Top(txt_Info.Top() - SSP_Info.Height()); });
  for (Steuerelement* feld : std::initializer_list<Steuerelement*>{&txt_Info, &SSP_Info})
    weiter([&] { feld->Width(breite - 2 * Rand); });
  const double links = Dir1.Left() + Dir1.Width() + 150;
  const double unten = SSP_Info.Top() - 700;
  weiter([&] { lvwContent.Move(links, Oben, breite - Rand - links, unten - Oben); });
  weiter([&] { SSP_Liste.Move(lvwContent.Left(), lvwContent.Top(), lvwContent.Width(), lvwContent.Height()); });
  weiter([&] { Dir1.Height(unten - Dir1.Top()); });
  weiter([&] { cbo_BildTypen.Left(links); });
  weiter([&] { cbo_BildTypen.Top(unten + 155); });
}
