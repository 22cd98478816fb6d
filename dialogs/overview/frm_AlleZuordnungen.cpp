#include "dialogs/overview/frm_AlleZuordnungen.h"

#include <algorithm>
#include <array>

#include "dialogs/overview/Uebersichtszeile.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/host/Meldeweg.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;
using Dimension = XArrayDBObject::Dimension;

namespace {

constexpr double Startbreite = 9000, Starthoehe = 6000;
constexpr double Abstand_Info = 20, Hoehe_Info = 330, Breite_Beschriftung = 1200;
constexpr double Fuss = 500, Hoehe_Knopf = 420, Abstand_Knoepfe = 40;

}  // namespace

frm_AlleZuordnungen::frm_AlleZuordnungen() : Form(u"frm_AlleZuordnungen"_s) {
  Caption(u"Alle Zuordnungen"_s);
  entwirf();
  TDBG_Zuordnungen.Click = [this] { cmd_Loeschen.Enabled(TDBG_Zuordnungen.SelBookmarks().Count() > 0); };
  TDBG_Zuordnungen.SelChange = [this] { nach_Auswahl(); };
  cmd_AlleLoeschen.Click = [this] { markiere_alle(); };
  cmd_Loeschen.Click = [this] { frage_und_loesche(); };
  cmd_Abbrechen.Click = [this] { Hide(); };
  setze_Abbruchknopf(&cmd_Abbrechen);
  setMinimumSize(420, 240);
  setze_Innengroesse(Startbreite, Starthoehe);
}

void frm_AlleZuordnungen::entwirf() {
  for (int i = 0; i < 2; ++i) SSP_Info.entwirf(i);
  SSP_Info(0).Caption(u"Für Datei: "_s);
  SSP_Info(0).Move(Abstand_Info, Abstand_Info, Breite_Beschriftung, Hoehe_Info);
  SSP_Info(1).Move(2 * Abstand_Info + Breite_Beschriftung, Abstand_Info, 4000, Hoehe_Info);
  TDBG_Zuordnungen.AllowUpdate(false);
  TDBG_Zuordnungen.setAccessibleName(u"Zuordnungen des Bildes"_s);
  TDBG_Zuordnungen.ToolTipText(u"Zuordnungen auswählen, die gelöscht werden sollen"_s);
  const auto knopf = [](SSCommand& k, const QString& text, double breite, const QString& hinweis) {
    k.Caption(text);
    k.ToolTipText(hinweis);
    k.Move(0, 0, breite, Hoehe_Knopf);
  };
  knopf(cmd_AlleLoeschen, u"&Alle markieren"_s, 1900, u"Alle Zuordnungen auswählen"_s);
  knopf(cmd_Loeschen, u"&Löschen"_s, 1500, u"Ausgewählte Zuordnungen löschen"_s);
  knopf(cmd_Abbrechen, u"&Zurück"_s, 1500, u"Fenster schließen"_s);
}

void frm_AlleZuordnungen::Form_Resize() {
  fehler::Weiter weiter;
  const double breite = ScaleWidth();
  const double hoehe = ScaleHeight();
  const double oben = SSP_Info(0).Top() + SSP_Info(0).Height() + Abstand_Info;
  weiter([&] { SSP_Info(1).Width(breite - SSP_Info(1).Left() - Abstand_Info); });
  weiter([&] { TDBG_Zuordnungen.Move(0, oben, breite, hoehe - oben - Fuss); });
  const double knoepfe = hoehe - Fuss + (Fuss - Hoehe_Knopf) / 2;
  for (SSCommand* knopf : {&cmd_AlleLoeschen, &cmd_Loeschen, &cmd_Abbrechen}) weiter([&] { knopf->Top(knoepfe); });
  weiter([&] { cmd_AlleLoeschen.Left(Abstand_Knoepfe); });
  weiter([&] { cmd_Loeschen.Left(cmd_AlleLoeschen.Left() + cmd_AlleLoeschen.Width() + Abstand_Knoepfe); });
  weiter([&] { cmd_Abbrechen.Left(breite - cmd_Abbrechen.Width() - Abstand_Knoepfe); });
}

void frm_AlleZuordnungen::Form_Unload() {
  m_Zuordnungen.reset();
  pBildObj.reset();
  pAppObj.reset();
}

const std::shared_ptr<XArrayDBObject>& frm_AlleZuordnungen::pZuordnungArray() {
  if (!m_Zuordnungen) m_Zuordnungen = std::make_shared<XArrayDBObject>();
  return m_Zuordnungen;
}

void frm_AlleZuordnungen::Init_ThumbNailArray() {
  pZuordnungArray()->ReDim(0, 0, 0, uebersicht::Zuordnung);
}

void frm_AlleZuordnungen::Lade_AlleZuordnungen() {
  fehler::gemeldet(Name(), u"Lade_AlleZuordnungen", [this] { lies_Zuordnungen(); });
}

// The assignment from which the dialog was opened is read with the others; deleting treats it apart.
void frm_AlleZuordnungen::lies_Zuordnungen() {
  SSP_Info(1).Caption(pBildname);
  if (!pAppObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  pBildObj = std::make_shared<clsBildZuordnungen>();
  pBildObj->Init(pAppObj->ConnectStringDB(), pAppObj->ConnectionDB(), pGL_jmtVerarbeitungsdatum);
  pBildObj->FKT_Neu();
  const bool gelesen = pBildObj->FKT_LeseBilder({}, {}, {}, {}, pBildname, pBildExt, {}, {}, {}, true);
  Init_ThumbNailArray();
  // The grid keeps showing what it showed.
  if (!gelesen || pBildObj->AnzahlPos() == 0) return;
  uebersicht::fuelle(*pZuordnungArray(), *pBildObj, pRootpath, [this](std::int32_t zeile) {
    pBildname = pBildObj->Bild_Bildname();
    pZuordnungArray()->Value(zeile, uebersicht::Zuordnung, Baue_ZuordnungsText(zeile));
  });
  Init_Grid();
}

void frm_AlleZuordnungen::Init_Grid() {
  uebersicht::baue(TDBG_Zuordnungen, pZuordnungArray(), [this] {
    for (std::int32_t i = uebersicht::Marke; i <= uebersicht::ExifText; ++i) {
      Gitterspalte spalte = uebersicht::entworfen(static_cast<uebersicht::Spalte>(i));
      if (i == uebersicht::Marke) {
        spalte.Caption = u"ZuO"_s;
        spalte.Alignment = Ausrichtung::Zentriert;
      }
      TDBG_Zuordnungen.AddColumn(spalte);
    }
    Gitterspalte sichtbare = uebersicht::entworfen(u"Dieses Bild ist Zugeordnet zu:"_s, 4000);
    sichtbare.Visible = true;
    TDBG_Zuordnungen.AddColumn(sichtbare);
  });
  // Binding has ended the selection without an event.
  cmd_Loeschen.Enabled(false);
  // Hiding the grid took the focus from it, or from the button that has done its work.
  TDBG_Zuordnungen.setFocus();
}

QString frm_AlleZuordnungen::Baue_ZuordnungsText(std::int32_t zeile) {
  const auto wert = [&](uebersicht::Spalte s) { return text::Trim(CStr(pZuordnungArray()->Value(zeile, s))); };
  using namespace uebersicht;
  const QString art = text::UCase(CStr(pZuordnungArray()->Value(zeile, Typ1)));
  if (art == "BEL"_L1) return u"Beleg: "_s + wert(Key1) + u" / "_s + wert(Key2);
  if (art == "MON"_L1) return u"Montageauftrag: "_s + wert(Key1) + u" / "_s + wert(Key2) + u" / "_s + wert(Key3);
  if (art == "ART"_L1) return u"Artikelnummer: "_s + wert(Key1);
  // No blanks around the separators of these two.
  const QString schluessel = wert(Key1) + u'/' + wert(Key2) + u'/' + wert(Key3);
  if (art == "ANL"_L1) return u"Anlage: "_s + schluessel;
  return CStr(pZuordnungArray()->Value(zeile, Typ1)) + schluessel;
}

void frm_AlleZuordnungen::Markiere_Auswahl() {
  fehler::still_enden([this] {
    XArrayDBObject& tabelle = *pZuordnungArray();
    const auto setze = [&](std::int32_t zeile, bool wert) {
      tabelle.Value(zeile, uebersicht::Loeschen, wert);
      tabelle.Value(zeile, uebersicht::Geaendert, wert);
    };
    for (std::int32_t i = 0; i <= tabelle.UpperBound(Dimension::Zeilen); ++i) setze(i, false);
    const Zeilenauswahl& gewaehlte = TDBG_Zuordnungen.SelBookmarks();
    for (std::int32_t i = 0; i < gewaehlte.Count(); ++i) setze(gewaehlte.Item(i), true);
  });
}

void frm_AlleZuordnungen::markiere_alle() {
  Zeilenauswahl& gewaehlte = TDBG_Zuordnungen.SelBookmarks();
  gewaehlte.Clear();
  pAlleMarkiert = true;
  XArrayDBObject& tabelle = *pZuordnungArray();
  for (std::int32_t i = 0; i <= tabelle.UpperBound(Dimension::Zeilen); ++i) {
    gewaehlte.Add(i);
    tabelle.Value(i, uebersicht::Loeschen, true);
    tabelle.Value(i, uebersicht::Geaendert, true);
  }
  cmd_Loeschen.Enabled(true);
}

void frm_AlleZuordnungen::nach_Auswahl() {
  const std::int32_t anzahl = TDBG_Zuordnungen.SelBookmarks().Count();
  cmd_Loeschen.Enabled(anzahl > 0);
  // Nothing brings the caption back; that is known and kept.
  if (anzahl == 0) Caption(QString());
  pAlleMarkiert = anzahl == pZuordnungArray()->Count(Dimension::Zeilen);
  Markiere_Auswahl();
}

void frm_AlleZuordnungen::frage_und_loesche() {
  QString frage = u"Sollen die ausgewählten Zuordnungen wirklich gelöscht werden?"_s;
  if (pAlleMarkiert) frage = u"Sollen wirklich ALLE Zuordnungen gelöscht werden?"_s;
  if (MsgBox(frage, Knoepfe::JaNein, Symbol::Frage, u"Achtung"_s) == Antwort::Ja) Zuordnungen_loeschen();
}

bool frm_AlleZuordnungen::ist_eigene(std::int32_t zeile) {
  using namespace uebersicht;
  const std::array<std::pair<Spalte, const QString*>, 6> paare{
      {{Typ1, &PTyp1}, {Typ2, &pTyp2}, {Key1, &pKey1}, {Key2, &pKey2}, {Key3, &pKey3}, {Key4, &pKey4}}};
  return std::all_of(paare.begin(), paare.end(), [&](const auto& paar) {
    return text::Trim(CStr(pZuordnungArray()->Value(zeile, paar.first))) == text::Trim(*paar.second);
  });
}

// Row and index of the collection are the same record: nothing reorders them.
void frm_AlleZuordnungen::Zuordnungen_loeschen() {
  fehler::gemeldet(Name(), u"Zuordnungen_loeschen", [this] {
    pDeleteFlagAktBild = false;
    if (!pBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
    const XArrayDBObject& tabelle = *pZuordnungArray();
    for (std::int32_t i = 0; i <= tabelle.UpperBound(Dimension::Zeilen); ++i) {
      if (!ist_True(tabelle.Value(i, uebersicht::Loeschen))) continue;
      if (ist_eigene(i)) {
        pDeleteFlagAktBild = true;
        continue;
      }
      pBildObj->AktInd(i);
      pBildObj->Bild_Delete(ist_True(tabelle.Value(i, uebersicht::Loeschen)));
      pBildObj->Bild_Changeflag(ist_True(tabelle.Value(i, uebersicht::Geaendert)));
    }
    pBildObj->FKT_SpeichernBilder();
    pBildObj.reset();
    Lade_AlleZuordnungen();
  });
}
