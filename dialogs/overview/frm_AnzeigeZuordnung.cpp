// The form at design time, its grids and its layout.
#include "dialogs/overview/frm_AnzeigeZuordnung.h"

#include <QEvent>

#include "dialogs/Symbole.h"
#include "dialogs/overview/Uebersichtszeile.h"
#include "dialogs/search/Vorschaubild.h"
#include "platform/basic/Fehlerbehandlung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double Startbreite = 12000, Starthoehe = 9000;
constexpr double Rand = 40, Hoehe_Zeile = 330, Fuss = 560, Hoehe_Knopf = 480;
/// Share of the upper half's width that the list of pictures gets beside the preview.
constexpr double Anteil_Liste = 0.62;

}  // namespace

frm_AnzeigeZuordnung::frm_AnzeigeZuordnung() : Form(u"frm_AnzeigeZuordnung"_s) {
  Caption(u"Anzeige der Zuordnungen"_s);
  entwirf();
  verbinde_Ereignisse();
  setze_Abbruchknopf(&cmd_Abbrechen);
  setMinimumSize(560, 420);
  setze_Innengroesse(Startbreite, Starthoehe);
}

void frm_AnzeigeZuordnung::entwirf() {
  TDBG_Zuordnungen.setAccessibleName(u"Bilder"_s);
  TDBG_Zuordnungen.ToolTipText(u"Angekreuzte Bilder werden zugeordnet"_s);
  TDBG_WeitereZuordnungen.setAccessibleName(u"Artikel"_s);
  TDBG_WeitereZuordnungen.ToolTipText(u"Artikel, denen die Bilder zugeordnet werden"_s);
  TDBG_WeitereZuordnungen.AllowAddNew(true);
  SSP_WeitereZuordnungen.Caption(u"   Weitere Zuordnungen für:"_s);
  SSC_ZuordnungSpeichern.Caption(u"Zuordnung speichern  "_s);
  symbole::bebildere(SSC_ZuordnungSpeichern, u"zuordnung_speichern"_s);
  SSC_ZuordnungSpeichern.ToolTipText(u"Angekreuzte Bilder den Artikeln zuordnen"_s);
  SSC_ZuordnungSpeichern.Move(Rand, 0, 2900, Hoehe_Knopf);
  SSC_ZuordnungSpeichern.Enabled(false);
  cmd_Abbrechen.Caption(u"&Zurück"_s);
  cmd_Abbrechen.ToolTipText(u"Fenster schließen, ohne zuzuordnen"_s);
  cmd_Abbrechen.Move(0, 0, 1500, Hoehe_Knopf);
  pic_Anzeige.Visible(false);
  for (Bildfeld* halter : {&Pic_Dummy, &Pic_Blank}) {
    halter->AutoSize = true;
    halter->Visible(false);
  }
  Pic_Blank.Picture(vorschaubild::ersatzbild());
  btnAuswahl.Visible(false);
}

void frm_AnzeigeZuordnung::verbinde_Ereignisse() {
  TDBG_Zuordnungen.RowColChange = [this](std::int32_t letzte, std::int32_t) {
    if (TDBG_Zuordnungen.Row() != letzte) Bild_Vorschau(TDBG_Zuordnungen.Row());
  };
  TDBG_Zuordnungen.AfterUpdate = [this] { Pruefe_ZuordnungSchalter(); };
  TDBG_WeitereZuordnungen.RowColChange = [this](auto, auto) { pAktZeile = TDBG_WeitereZuordnungen.Row(); };
  TDBG_WeitereZuordnungen.AfterColEdit = [this](std::int32_t) { nach_Artikeleingabe(); };
  TDBG_WeitereZuordnungen.AfterUpdate = [this] { Pruefe_ZuordnungSchalter(); };
  TDBG_WeitereZuordnungen.ButtonClick = [this](std::int32_t) { waehle_Artikel(); };
  SSC_ZuordnungSpeichern.Click = [this] { frage_und_speichere(); };
  cmd_Abbrechen.Click = [this] { Hide(); };
}

void frm_AnzeigeZuordnung::Form_Load() {
  btnAuswahl.setIcon(symbole::symbol(u"auswahl"_s));
}

void frm_AnzeigeZuordnung::Form_Resize() {
  fehler::Weiter weiter;
  const double breite = ScaleWidth();
  const double hoehe = ScaleHeight();
  const double inhalt = hoehe - Fuss - 2 * Hoehe_Zeile - 4 * Rand;
  const double oben = Hoehe_Zeile + 2 * Rand;
  const double liste = (breite - 3 * Rand) * Anteil_Liste;
  weiter([&] { SSP_Info.Move(Rand, Rand, breite - 2 * Rand, Hoehe_Zeile); });
  weiter([&] { TDBG_Zuordnungen.Move(Rand, oben, liste, inhalt / 2); });
  weiter([&] { SSP_Anzeige.Move(liste + 2 * Rand, oben, breite - liste - 3 * Rand, inhalt / 2); });
  const double mitte = oben + inhalt / 2 + Rand;
  weiter([&] { SSP_WeitereZuordnungen.Move(Rand, mitte, breite - 2 * Rand, Hoehe_Zeile); });
  weiter([&] { TDBG_WeitereZuordnungen.Move(Rand, mitte + Hoehe_Zeile, breite - 2 * Rand, inhalt / 2); });
  const double knoepfe = hoehe - Fuss + (Fuss - Hoehe_Knopf) / 2;
  for (SSCommand* knopf : {&SSC_ZuordnungSpeichern, &cmd_Abbrechen}) weiter([&] { knopf->Top(knoepfe); });
  weiter([&] { cmd_Abbrechen.Left(breite - Rand - cmd_Abbrechen.Width()); });
  weiter([&] { SSC_ZuordnungSpeichern.Left(cmd_Abbrechen.Left() - Rand - SSC_ZuordnungSpeichern.Width()); });
  // The preview fits the frame that it has now.
  if (pic_Anzeige.Visible()) VorschauBild_Einpassen(TDBG_Zuordnungen.Row());
}

// A disabled button takes neither the focus nor the press, so that nobody would leave the cell.
bool frm_AnzeigeZuordnung::eventFilter(QObject* empfaenger, QEvent* ereignis) {
  if (empfaenger == &SSC_ZuordnungSpeichern && ereignis->type() == QEvent::MouseButtonPress)
    bewacht([this] { TDBG_WeitereZuordnungen.Update(); });
  return Form::eventFilter(empfaenger, ereignis);
}

void frm_AnzeigeZuordnung::Form_Unload() {
  // Without its array a grid holds neither rows nor an edit that hiding would commit.
  for (TDBGrid* gitter : {&TDBG_Zuordnungen, &TDBG_WeitereZuordnungen}) {
    gitter->Array(nullptr);
    gitter->ReBind();
  }
  m_Zuordnungen.reset();
  m_Artikel.reset();
  pAppObj.reset();
  pBildObj.reset();
  pNeuObj.reset();
}

void frm_AnzeigeZuordnung::Init_ThumbNailArray() {
  m_Zuordnungen = std::make_shared<XArrayDBObject>();
  m_Zuordnungen->ReDim(0, 0, 0, uebersicht::ExifText);
  // No row: the grid's line for a new one is where the first article is entered.
  m_Artikel = std::make_shared<XArrayDBObject>();
  m_Artikel->ReDim(0, -1, 0, artikel::Letzte);
}

void frm_AnzeigeZuordnung::Init_Grid() {
  uebersicht::baue(TDBG_Zuordnungen, m_Zuordnungen, [this] {
    for (std::int32_t i = uebersicht::Marke; i <= uebersicht::ExifText; ++i) {
      Gitterspalte spalte = uebersicht::entworfen(static_cast<uebersicht::Spalte>(i));
      if (i == uebersicht::Marke) {
        spalte.Caption = u"Zu"_s;
        spalte.Alignment = Ausrichtung::Zentriert;
        spalte.CheckBox = true;
        spalte.Locked = false;
      }
      spalte.Visible =
          i == uebersicht::Marke || i == uebersicht::Dateiname || i == uebersicht::Ext || i == uebersicht::Beschreibung;
      TDBG_Zuordnungen.AddColumn(spalte);
    }
  });
}

void frm_AnzeigeZuordnung::Init_Artikelgrid() {
  const auto spalte = [this](const QString& caption, double breite, bool sichtbar) {
    Gitterspalte neu = uebersicht::entworfen(caption, breite);
    neu.Visible = sichtbar;
    if (TDBG_WeitereZuordnungen.ColumnCount() == artikel::Nummer) {
      neu.Locked = false;
      neu.Button = true;
      neu.ButtonPicture = btnAuswahl.icon().pixmap(16, 16);
    }
    TDBG_WeitereZuordnungen.AddColumn(neu);
  };
  uebersicht::baue(TDBG_WeitereZuordnungen, m_Artikel, [&] {
    spalte(u"Artikel-Nr"_s, 2500, true);
    spalte(u"Kurztext 1"_s, 2000, true);
    spalte(u"Kurztext 2"_s, 2000, true);
    spalte(u"Referenz 3"_s, 2000, false);
    spalte(u"Referenz 4"_s, 2000, false);
  });
}
