#include "dialogs/assignment/frm_BildZuordnung.h"

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Twips.h"
#include "platform/host/Oberflaeche.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;
using Dimension = XArrayDBObject::Dimension;

namespace {

const QString Fensteranwendung = u"KVZunft_Gesamt 2000"_s;

}  // namespace

// ── The table ───────────────────────────────────────────────────────────────────────────────────────────────────────

XArrayDBObject& frm_BildZuordnung::Tabelle() {
  if (!BildTabelle) BildTabelle = std::make_shared<XArrayDBObject>();
  return *BildTabelle;
}

clsBildZuordnungen& frm_BildZuordnung::Sammlung() const {
  if (!pBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *pBildObj;
}

void frm_BildZuordnung::Init_ThumbNailArray() {
  Tabelle().ReDim(0, 0, 0, spalte::Letzte);
}

std::int32_t frm_BildZuordnung::LetzteZeile() const {
  return BildTabelle ? BildTabelle->UpperBound(Dimension::Zeilen) : -1;
}

bool frm_BildZuordnung::KeineBilder() const {
  const std::int32_t letzte = LetzteZeile();
  return letzte < 0 || (letzte == 0 && Text(0, spalte::VollerPfad).isEmpty());
}

const Variant& frm_BildZuordnung::Zelle(std::int32_t zeile, spalte::Spalte spalte) const {
  static const Variant leer;
  if (zeile < 0 || zeile > LetzteZeile()) return leer;
  if (spalte == spalte::HatExif || spalte == spalte::ExifKennung) frage_Exif_nach(zeile);
  return BildTabelle->Value(zeile, spalte);
}

void frm_BildZuordnung::Zelle(std::int32_t zeile, spalte::Spalte spalte, Variant wert) {
  if (zeile >= 0 && zeile <= LetzteZeile()) BildTabelle->Value(zeile, spalte, std::move(wert));
}

QString frm_BildZuordnung::Text(std::int32_t zeile, spalte::Spalte spalte) const {
  return mit_Leertext(Zelle(zeile, spalte));
}

bool frm_BildZuordnung::Ja(std::int32_t zeile, spalte::Spalte spalte) const {
  return ist_True(Zelle(zeile, spalte));
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
  if (Ja(AktZeile, spalte::DateiFehlt) && Spur(AktZeile).ordner_lesbar) chk_Delete.Enabled(false);
}

// ── Changes ─────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::SetzeDatenGeaendert(bool pWert) {
  if (AnzeigeAufbau) return;
  DatenGeaendert = pWert;
  SSC_ZuordnungSpeichern.Enabled(pWert);
}

void frm_BildZuordnung::SetzeZeileGeaendert(bool pWert) {
  Zelle(AktZeile, spalte::ZeileGeaendert, pWert);
}

void frm_BildZuordnung::verbinde_Schalter(CheckBox& schalter, spalte::Spalte spalte) {
  schalter.Click = [this, &schalter, spalte] {
    SetzeDatenGeaendert(true);
    SetzeZeileGeaendert(true);
    Zelle(AktZeile, spalte, schalter.Value() != 0);
    if (spalte == spalte::Entfernen && !AnzeigeAufbau) Spur(AktZeile).vorgemerkt = schalter.Value() != 0;
    // An unmarked row loses its cross only through a rebuild.
    if (spalte == spalte::Entfernen) Zeichne_Entfernt(schalter.Value() != 0);
  };
}

void frm_BildZuordnung::verbinde_Text(Textblock& feld, spalte::Spalte spalte) {
  feld.Change = [this, &feld, spalte] {
    SetzeDatenGeaendert(true);
    SetzeZeileGeaendert(true);
    Zelle(AktZeile, spalte, feld.Text());
  };
}

void frm_BildZuordnung::Pruefe_Speichern(bool pOhneFrage, bool& pWeiter) {
  pWeiter = true;
  abgelehnt_ = false;
  if (!DatenGeaendert) return;
  if (mod_BilderSuchen::Fkt_DirExists(Standardordner())) {
    std::int32_t zeile = -1;
    Suche_NameDoppelt(zeile);
    // Saving stops here, leaving does not: whoever asked goes on.
    if (zeile >= 0) {
      melde_Doppelte(zeile);
      return;
    }
  }
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

bool frm_BildZuordnung::melde_Doppelte(std::int32_t zeile) {
  MsgBox(u"Datei mit gleichem Namen schon vohanden!"_s, Knoepfe::OK, Symbol::Information, u"Doppelte Datei"_s);
  bool gezeigt = false;
  Zeige_Zeile(zeile, true, gezeigt);
  if (!gezeigt) return false;
  AktThumb = zeile;
  Pic_Thumb_Click(AktThumb);
  txt_BildName.setFocus();
  return true;
}

QString frm_BildZuordnung::Standardordner() const {
  return pRootpath + u'\\' + pStandardBildPfad;
}

// ── Name editing and reading again ──────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::aendere_Namen() {
  SetzeDatenGeaendert(true);
  SetzeZeileGeaendert(true);
  const QString neu = txt_BildName.Text();
  if (!AnzeigeAufbau) {
    bool vorhanden = false;
    Pruefe_NameVorhanden(neu, txt_BildExt.Tag, vorhanden);
    NameWarnung(vorhanden);
    Zelle(AktZeile, spalte::NameDoppelt, vorhanden);
    if (text::Trim(Text(AktZeile, spalte::OriginalName)).isEmpty())
      Zelle(AktZeile, spalte::OriginalName, txt_BildName.Tag);
    Zelle(AktZeile, spalte::NameGeaendert, true);
    NameGeaendertAnzeige(true);
  }
  Zelle(AktZeile, spalte::Bildname, neu);
  const auto verglichen = [&](spalte::Spalte s) { return text::UCase(text::Trim(Text(AktZeile, s))); };
  if (verglichen(spalte::Bildname) != verglichen(spalte::OriginalName)) return;
  Zelle(AktZeile, spalte::Bildname, Text(AktZeile, spalte::OriginalName));
  Zelle(AktZeile, spalte::NameGeaendert, false);
  NameGeaendertAnzeige(false);
  // Asked for and not used: the saving asks again.
  bool noch_geaendert = false;
  Pruefe_NameGeaendertAlle(noch_geaendert);
}

// The first row of that name decides, whatever its extension. The row that is being edited still has its old name and
// counts only when that is the very text; other rows collide in any case of their letters, as files on a share do.
bool frm_BildZuordnung::ist_vergeben(const QString& name, const QString& endung, std::int32_t in_Arbeit) const {
  const QString gesucht = text::Trim(name);
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) {
    const QString anderer = Text(i, spalte::Bildname);
    const bool gleich = i == in_Arbeit ? anderer == gesucht : text::UCase(anderer) == text::UCase(gesucht);
    if (gleich) return text::UCase(text::Trim(Text(i, spalte::BildExt))) == text::UCase(text::Trim(endung));
  }
  return false;
}

void frm_BildZuordnung::Pruefe_NameVorhanden(const QString& pName, const QString& pExt, bool& pErgebnis) {
  pErgebnis = ist_vergeben(pName, pExt, AktZeile);
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
  Create_ThumbNails(ErsteZeile);
  Zeichne_Status();
  Zeichne_Entfernt(true);
  if (!SSR_Sortierung.Value()) Markiere_Auswahl();
  zeige_Auswahl();
}

void frm_BildZuordnung::lies_neu() {
  const std::int32_t nummer = AktZeile + 1;
  const auto behalten = nimm_ungespeicherte();
  Lade_Zuordnung();
  // A lost picture offers no saving where nothing can be changed: the next reading would save it unasked.
  if (pNurAnzeige) SetzeDatenGeaendert(false);
  stelle_zurueck(behalten);
  ErsteZeile = 0;
  Create_ThumbNails(ErsteZeile);
  Zeichne_Status();
  Zeichne_Entfernt(true);
  if (!AnzeigeAufbau) Markiere_Auswahl();
  Pic_Thumb_Click(nummer);
}
