#include "dialogs/assignment/frm_BildZuordnung.h"

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/host/Oberflaeche.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Fensteranwendung = u"KVZunft_Gesamt 2000"_s;

}  // namespace

// ── The table ───────────────────────────────────────────────────────────────────────────────────────────────────────

Arbeitstabelle& frm_BildZuordnung::Tabelle() {
  if (!BildTabelle) BildTabelle = std::make_shared<Arbeitstabelle>();
  return *BildTabelle;
}

clsBildZuordnungen& frm_BildZuordnung::Sammlung() const {
  if (!pBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *pBildObj;
}

// Events still come after the form was unloaded.
Arbeitszeile& frm_BildZuordnung::Zeile(std::int32_t nummer) const {
  static Arbeitstabelle keine;
  return (BildTabelle ? *BildTabelle : keine).Zeile(nummer);
}

// ── Life ────────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::Form_Load() {
  AktZeile = KeineZeile;
  SSP_Panel(0).Caption(pInfoZeile);
  SSP_WarnungName.Visible(false);
  SSC_AlleZuordnungen.Enabled(false);
  SSC_WeitereZuordnungen.Enabled(false);
  NameRueckfarbe = txt_BildName.BackColor();
  NameTextfarbe = txt_BildName.ForeColor();
  keyhandler = KVOCore::aktuell().NeuerKeyHandler();
  keyhandler->bei_KeyDown = [this](std::int16_t code, std::int16_t shift) { keyhandler_KeyDown(code, shift); };
  keyhandler->Eingeschaltet(true);
  StreifenHoehe = 1750;
  Init_ThumbNailArray();
  Pic_Thumb(0).Visible(false);
  Shp_Thump.BorderColor(farben::Rot);
  Shp_Thump.Visible(false);
  Shp_Sort.BorderColor(farben::Gruen);
  Shp_Sort.Visible(false);
  EingabenFreigeben(false);
  NameGeaendertAnzeige(false);
  ErsteZeile = 0;
  SetzeDatenGeaendert(false);
  LayoutSperre = true;
  KVOCore::aktuell().FensterWiederherstellen(Fensteranwendung, *this);
  LayoutSperre = false;
}

void frm_BildZuordnung::Form_Activate() {
  SSP_Panel(0).Caption(u"   "_s + pInfoZeile);
  // A long line runs below the buttons of the header.
  SSP_Panel(0).ToolTipText(pInfoZeile);
  SSC_WeitereZuordnungen.Visible(text::UCase(PTyp1) == u"ART"_s && !pNurAnzeige);
}

void frm_BildZuordnung::Form_QueryUnload(bool& Cancel) {
  bool weiter = true;
  Pruefe_Speichern(false, weiter);
  Cancel = !weiter;
  if (!weiter) return;
  verlasse();
  Hide();
}

void frm_BildZuordnung::Form_Unload() {
  fehler::Weiter weiter;
  weiter([&] { KVOCore::aktuell().FensterSpeichern(Fensteranwendung, *this); });
  keyhandler.reset();
  BildTabelle.reset();
  SortTabelle.reset();
  pAppObj.reset();
  pBildObj.reset();
  DialogObj.reset();
  // One control is unloaded here and the others go with the form.
  weiter([&] {
    if (const int hoechster = Pic_Thumb.UBound(); hoechster > 0) Pic_Thumb.Unload(hoechster);
  });
}

// ── What can be used ────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::AnzeigeSteuern() {
  SSC_BilderLaden.Visible(!pNurAnzeige);
  SSC_AlleZuordnungen.Visible(!pNurAnzeige);
  SSC_WeitereZuordnungen.Visible(!pNurAnzeige);
  SSC_ZuordnungSpeichern.Visible(!pNurAnzeige);
  if (!pNurAnzeige) txt_BildName.Locked(false);
  txt_BildText.Locked(pNurAnzeige);
  txt_BildInfo.Locked(pNurAnzeige);
  if (!pNurAnzeige) return;
  for (CheckBox* schalter : {&chk_Drucken, &chk_GesamteSeite, &chk_AlsAnhang, &chk_Delete, &chk_NeueSeite})
    schalter->Enabled(false);
}

void frm_BildZuordnung::EingabenFreigeben(bool pWert) {
  if (!pNurAnzeige) {
    txt_BildName.Enabled(pWert);
    for (CheckBox* schalter : {&chk_Drucken, &chk_GesamteSeite, &chk_AlsAnhang, &chk_Delete, &chk_NeueSeite})
      schalter->Enabled(pWert);
    txt_BildText.Enabled(pWert);
    txt_BildInfo.Enabled(pWert);
  }
  erzwinge_Anhang();
  sperre_Fehlende();
}

// Checking it fires its handler, so that every picture shown in this mode becomes an attachment.
void frm_BildZuordnung::erzwinge_Anhang() {
  if (!pNurAnhang) return;
  chk_AlsAnhang.Enabled(false);
  chk_AlsAnhang.Value(1);
}

// Where the folder can't be listed nothing is marked, and the user may still do so.
void frm_BildZuordnung::sperre_Fehlende() {
  if (Zeile(AktZeile).DateiFehlt && Zeile(AktZeile).Spur.ordner_lesbar) chk_Delete.Enabled(false);
}

// ── Changes ─────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::SetzeDatenGeaendert(bool pWert) {
  if (AnzeigeAufbau) return;
  DatenGeaendert = pWert;
  SSC_ZuordnungSpeichern.Enabled(pWert);
}

void frm_BildZuordnung::verbinde_Schalter(CheckBox& schalter, bool Arbeitszeile::*feld) {
  schalter.Click = [this, &schalter, feld] {
    const bool wert = schalter.Value() != 0;
    SetzeDatenGeaendert(true);
    SetzeZeileGeaendert(true);
    Zeile(AktZeile).*feld = wert;
    if (feld != &Arbeitszeile::Entfernen) return;
    if (!AnzeigeAufbau) Zeile(AktZeile).Spur.vorgemerkt = wert;
    // An unmarked row loses its cross only through a rebuild.
    Zeichne_Entfernt(wert);
  };
}

void frm_BildZuordnung::verbinde_Text(Textblock& text, QString Arbeitszeile::*feld) {
  text.Change = [this, &text, feld] {
    SetzeDatenGeaendert(true);
    SetzeZeileGeaendert(true);
    Zeile(AktZeile).*feld = text.Text();
  };
}

void frm_BildZuordnung::Pruefe_Speichern(bool pOhneFrage, bool& pWeiter) {
  pWeiter = true;
  abgelehnt_ = false;
  if (!DatenGeaendert) return;
  // Saving stops here, leaving does not: whoever asked goes on.
  if (melde_Doppelte()) return;
  if (pOhneFrage) return Zuordnung_Speichern();
  switch (MsgBox(u"Daten wurden verändert! Wollen Sie die Zuordnung speichern?"_s, Knoepfe::JaNeinAbbrechen,
      Symbol::Frage, u"Achtung"_s)) {
    case Antwort::Ja:
      Zuordnung_Speichern();
      if (!DatenGeaendert) bestaetige_Vormerkungen();
      break;
    case Antwort::Abbrechen:
      pWeiter = false;
      break;
    default:
      abgelehnt_ = true;
      break;
  }
}

/// Tells of a name that two pictures have, and shows one of them; False where there is none, or no folder yet.
bool frm_BildZuordnung::melde_Doppelte() {
  if (!mod_BilderSuchen::Fkt_DirExists(Standardordner())) return false;
  std::int32_t zeile = -1;
  Suche_NameDoppelt(zeile);
  if (zeile < 0) return false;
  MsgBox(u"Datei mit gleichem Namen schon vohanden!"_s, Knoepfe::OK, Symbol::Information, u"Doppelte Datei"_s);
  bool gezeigt = false;
  Zeige_Zeile(zeile, true, gezeigt);
  if (gezeigt) {
    AktThumb = zeile;
    Pic_Thumb_Click(AktThumb);
    txt_BildName.setFocus();
  }
  return true;
}

// ── Name editing and reading again ──────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::aendere_Namen() {
  SetzeDatenGeaendert(true);
  SetzeZeileGeaendert(true);
  const QString neu = txt_BildName.Text();
  Arbeitszeile& zeile = Zeile(AktZeile);
  if (!AnzeigeAufbau) {
    Pruefe_NameVorhanden(neu, txt_BildExt.Tag, zeile.NameDoppelt);
    NameWarnung(zeile.NameDoppelt);
    if (text::Trim(zeile.OriginalName).isEmpty()) zeile.OriginalName = txt_BildName.Tag;
    zeile.NameGeaendert = true;
    NameGeaendertAnzeige(true);
  }
  if (!zeile.nenne(neu)) return;
  NameGeaendertAnzeige(false);
  // Asked for and not used: the saving asks again.
  bool noch_geaendert = false;
  Pruefe_NameGeaendertAlle(noch_geaendert);
}

void frm_BildZuordnung::Pruefe_NameVorhanden(const QString& pName, const QString& pExt, bool& pErgebnis) {
  pErgebnis = Tabelle().ist_vergeben(pName, pExt, AktZeile);
}

void frm_BildZuordnung::NameWarnung(bool pWert) {
  SSP_WarnungName.Visible(pWert);
  for (TextBox* feld : {&txt_BildName, &txt_BildExt}) {
    feld->BackColor(pWert ? farben::Klassisch[12] : NameRueckfarbe);
    feld->ForeColor(pWert ? farben::Klassisch[15] : NameTextfarbe);
  }
}

void frm_BildZuordnung::NameGeaendertAnzeige(bool pWert) {
  const QColor flaeche = palette().color(QPalette::Active, QPalette::Button);
  const auto knopfflaeche = static_cast<Farbe>(flaeche.red() | flaeche.green() << 8 | flaeche.blue() << 16);
  const Farbe farbe = pWert ? farben::Hellgrau : knopfflaeche;
  SSP_NameChanged.BackColor(farbe);
  cmd_OriginalName.Enabled(pWert);
  lbl_Anzeige(0).BackColor(farbe);
  SSP_WarnungName.BackColor(farbe);
}

void frm_BildZuordnung::aktualisiere() {
  if (AktZeile == KeineZeile) return;
  const auto sage = [](const Laufzeitfehler& /*fehler*/) {
    mauszeiger().form(Zeigerform::Standard);
    MsgBox(u"Fehler beim aktualisieren der Anzeige"_s);
  };
  fehler::melden_und_enden(sage, [&] {
    bool weiter = true;
    Pruefe_Speichern(true, weiter);
    if (!weiter) return;
    mauszeiger().form(Zeigerform::Sanduhr);
    // Forgotten, so that a picture which another program changed is loaded again under its name.
    Sammlung().AktLoadPicture.clear();
    // What could not be saved would be lost by reading it anew.
    if (DatenGeaendert)
      zeichne_neu();
    else
      lies_neu();
    mauszeiger().form(Zeigerform::Standard);
  });
}

void frm_BildZuordnung::zeichne_neu() {
  zeichne_Streifen();
  if (!SSR_Sortierung.Value()) Markiere_Auswahl();
  zeige_Auswahl();
}

void frm_BildZuordnung::lies_neu() {
  const std::int32_t nummer = AktZeile + 1;
  const auto behalten = Tabelle().ungespeicherte();
  Lade_Zuordnung();
  // A lost picture offers no saving where nothing can be changed: the next reading would save it unasked.
  if (pNurAnzeige) SetzeDatenGeaendert(false);
  Tabelle().stelle_zurueck(behalten);
  if (!behalten.empty()) zeige_Anzahl(true);
  ErsteZeile = 0;
  zeichne_Streifen();
  if (!AnzeigeAufbau) Markiere_Auswahl();
  Pic_Thumb_Click(nummer);
}
