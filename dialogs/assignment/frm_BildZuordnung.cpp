#include "dialogs/assignment/frm_BildZuordnung.h"

#include <algorithm>
#include <utility>

#include "exif/clsExifInfo.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"
#include "platform/forms/Twips.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bildnamen.h"
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

void frm_BildZuordnung::melde(const char16_t* prozedur, const Laufzeitfehler& fehler) const {
  KVOCore::aktuell().FehlerMelden(u"frm_BildZuordnung"_s, QString::fromUtf16(prozedur), fehler.Nummer(),
                                  fehler.Beschreibung(), true);
}

// ── Loading ─────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::Lade_Zuordnung() {
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { melde(u"Lade_Zuordnung", f); },
                           [&] {
                             if (nimm_Stand_auf()) return;
                             std::vector<Bildspur> vorige = std::exchange(spuren_, {});
                             auflistbar_.clear();
                             Init_ThumbNailArray();
                             if (Sammlung().AnzahlPos() > 0) lade_Zeilen(std::move(vorige));
                           });
}

void frm_BildZuordnung::lade_Zeilen(std::vector<Bildspur> vorige) {
  const std::int32_t anzahl = Sammlung().AnzahlPos();
  for (std::int32_t i = 0; i < anzahl; ++i) {
    Sammlung().AktInd(i);
    const auto satz = Sammlung().AktBildObj;
    const auto bekannt =
        std::find_if(vorige.begin(), vorige.end(), [&](const Bildspur& s) { return s.satz && s.satz == satz; });
    Bildspur& spur = Spur(i);
    if (bekannt != vorige.end()) {
      spur = std::move(*bekannt);
    } else {
      spur.satz = satz;
      // A mark that an earlier dialog left would remove the picture unseen.
      spur.vorgemerkt = spur.bestaetigt_vorgemerkt = Sammlung().Bild_Delete();
    }
    lade_Zeile(i);
    Tabelle().AppendRows(1);
  }
  Tabelle().DeleteRows(LetzteZeile());
  SSP_Anzahl(3).Caption(QString::number(anzahl));
  bool entfernen = false;
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) entfernen = entfernen || Ja(i, spalte::Entfernen);
  SetzeDatenGeaendert(entfernen);
  SSC_AlleZuordnungen.Enabled(true);
  SSC_WeitereZuordnungen.Enabled(true);
}

void frm_BildZuordnung::lade_Zeile(std::int32_t zeile) {
  const clsBildZuordnungen& b = Sammlung();
  Zelle(zeile, spalte::Gespeichert, true);
  Zelle(zeile, spalte::VollerPfad,
        QString(pRootpath + u'\\' + b.Bild_Pfad() + u'\\' + b.Bild_Bildname() + u'.' + b.Bild_BildExt()));
  Zelle(zeile, spalte::Root, pRootpath);
  Zelle(zeile, spalte::Pfad, b.Bild_Pfad());
  Zelle(zeile, spalte::Bildname, b.Bild_Bildname());
  Zelle(zeile, spalte::BildExt, b.Bild_BildExt());
  Zelle(zeile, spalte::AlsAnhang, b.Bild_AlsAnhang());
  Zelle(zeile, spalte::Beschreibung, b.Bild_Beschreibung());
  Zelle(zeile, spalte::Drucken, b.Bild_Drucken());
  Zelle(zeile, spalte::DruckGesamteSeite, b.Bild_DruckGesamteSeite());
  Zelle(zeile, spalte::NeueSeite, b.Bild_NeueSeite());
  Zelle(zeile, spalte::Key1, b.Bild_Key1());
  Zelle(zeile, spalte::Key2, b.Bild_Key2());
  Zelle(zeile, spalte::Key3, b.Bild_Key3());
  Zelle(zeile, spalte::Key4, b.Bild_Key4());
  Zelle(zeile, spalte::Typ1, b.Bild_Typ1());
  Zelle(zeile, spalte::Typ2, b.Bild_Typ2());
  Zelle(zeile, spalte::SortIndex, std::int32_t{b.Bild_SortIndex()});
  Spur(zeile).dateiname = b.Bild_Bildname();
  Spur(zeile).dateipfad = b.Bild_Pfad();
  // A copy that was read again may be turned or edited by now: its size says nothing any more.
  Spur(zeile).groesse = -1;
  lade_Text(zeile);
  lade_Anwesenheit(zeile);
  Zelle(zeile, spalte::NameDoppelt, false);
  Zelle(zeile, spalte::ZeileGeaendert, false);
  Zelle(zeile, spalte::NameGeaendert, false);
  Zelle(zeile, spalte::OriginalName, QString());
  Zelle(zeile, spalte::NeuAusSuche, false);
}

void frm_BildZuordnung::lade_Text(std::int32_t zeile) {
  // What could not be written stands as it was typed: the next save would take the old text of the file for it.
  if (Spur(zeile).text.gescheitert()) return Zelle(zeile, spalte::BildInfo, Spur(zeile).bildinfo);
  const QString textdatei = pRootpath + u'\\' + Text(zeile, spalte::Pfad) + u'\\' +
                            bildnamen::textdatei(Text(zeile, spalte::Bildname), Text(zeile, spalte::BildExt));
  if (mod_BilderSuchen::Fkt_FileExists(textdatei))
    Zelle(zeile, spalte::BildInfo, text::Trim(mod_BilderSuchen::Fkt_ReadFile(textdatei)));
}

// A file that is missing in a folder which can't be listed says nothing about the file: the share may be away. What the
// user marked stays marked; what only a missing file had marked is unmarked once the file is back.
void frm_BildZuordnung::lade_Anwesenheit(std::int32_t zeile) {
  Bildspur& spur = Spur(zeile);
  const bool fehlt = !mod_BilderSuchen::Fkt_FileExists(Text(zeile, spalte::VollerPfad));
  spur.ordner_lesbar = !fehlt || (laesst_sich_auflisten(pRootpath) &&
                                  laesst_sich_auflisten(pRootpath + u'\\' + Text(zeile, spalte::Pfad)));
  const bool entfernen = spur.vorgemerkt || (fehlt && spur.ordner_lesbar);
  Zelle(zeile, spalte::DateiFehlt, fehlt);
  Zelle(zeile, spalte::Entfernen, entfernen);
  if (!entfernen) Sammlung().Bild_Delete(false);
  if (!fehlt) return;
  Zelle(zeile, spalte::HatExif, false);
  Zelle(zeile, spalte::ExifKennung, QString());
}

bool frm_BildZuordnung::laesst_sich_auflisten(const QString& ordner) {
  const auto bekannt = auflistbar_.constFind(ordner);
  if (bekannt != auflistbar_.constEnd()) return *bekannt;
  const bool lesbar = fehler::still_enden([&] {
    FileSystemObject().GetFolder(ordner + u'\\').Files();
    return true;
  });
  auflistbar_.insert(ordner, lesbar);
  return lesbar;
}

// Whether a picture has Exif data is asked when its row is looked at for it. A picture without any is read to its end,
// and a record may have a hundred that nobody selects.
void frm_BildZuordnung::frage_Exif_nach(std::int32_t zeile) const {
  if (!std::holds_alternative<Empty>(BildTabelle->Value(zeile, spalte::HatExif))) return;
  const QString datei = Text(zeile, spalte::VollerPfad);
  if (datei.isEmpty()) return;
  QString kennung;
  bool exif = false;
  // The reader's way of opening would make an empty file of one that is gone by now.
  if (mod_BilderSuchen::Fkt_FileExists(datei)) Pruefe_Exif(datei, kennung, exif);
  BildTabelle->Value(zeile, spalte::HatExif, exif);
  // The search's rows have no mark.
  BildTabelle->Value(zeile, spalte::ExifKennung, Ja(zeile, spalte::NeuAusSuche) ? QString() : kennung);
}

// A file that the reader fails on has no Exif data to show; it must not end what is being done.
void frm_BildZuordnung::Pruefe_Exif(const QString& pDatei, QString& pKennung, bool& pVorhanden) const {
  pVorhanden = fehler::still_enden([&] { return clsExifInfo().Load(pDatei); });
  pKennung = pVorhanden ? CStr(true) : QString();
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
