// What the buttons do to the selected picture, and adding pictures from the search.
#include "dialogs/Bedienschritt.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/gdiplus/Drehung.h"
#include "platform/gdiplus/gdiplus.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"
#include "store/Bildereignis.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;
using Dimension = XArrayDBObject::Dimension;

/// Runs a button's procedure; a failure is reported under its name after the pointer was set back.
void frm_BildZuordnung::mit_Meldung(const char16_t* prozedur, const std::function<void()>& arbeit) {
  bedienschritt(Name(), prozedur, arbeit);
  DialogObj.reset();
}

// ── Adding ──────────────────────────────────────────────────────────────────────────────────────────────────────────

// Nothing is copied here: a new row points at the file where it lies until it is saved.
void frm_BildZuordnung::suche_Bilder() {
  auto funde = std::make_shared<XArrayDBObject>();
  funde->ReDim(0, 0, 0, fund::Letzte);
  DialogObj = std::make_shared<clsDialoge>();
  if (!DialogObj->Fkt_Aufruf_Dialog_BilderSuchen(pAppObj, pRootpath, funde, true)) return;
  mauszeiger().form(Zeigerform::Sanduhr);
  for (std::int32_t i = 0; i <= funde->UpperBound(Dimension::Zeilen); ++i)
    if (!text::Trim(mit_Leertext(funde->Value(i, fund::VollerName))).isEmpty()) haenge_Fund_an(*funde, i);
  // Of an empty record for which nothing was chosen the placeholder goes too.
  if (LetzteZeile() >= 0 && Zeile(LetzteZeile()).ist_leer()) Tabelle().entferne(LetzteZeile());
  ErsteZeile = 0;
  Create_ThumbNails(ErsteZeile);
  if (AktZeile == 0) {
    Pic_Thumb_Click(1);
    const bool benannt = !text::Trim(txt_BildName.Text()).isEmpty();
    EingabenFreigeben(benannt);
    if (benannt) {
      SSC_AlleZuordnungen.Enabled(true);
      SSC_WeitereZuordnungen.Enabled(true);
    }
  }
  Markiere_Auswahl();
  Zeichne_Status();
  Zeichne_Entfernt(true);
  zeige_Anzahl(true);
  mauszeiger().form(Zeigerform::Standard);
}

void frm_BildZuordnung::haenge_Fund_an(const XArrayDBObject& funde, std::int32_t zeile) {
  const auto wert = [&](fund::Spalte s) { return mit_Leertext(funde.Value(zeile, s)); };
  // A duplicate is kept and only marked. No row is being edited: each collides in any case of its letters.
  const bool doppelt = Tabelle().ist_vergeben(wert(fund::Name), wert(fund::Endung), KeineZeile);
  Arbeitszeile& neue = Tabelle().freie_Zeile();
  neue.NameDoppelt = doppelt;
  neue.VollerPfad = wert(fund::VollerName);
  neue.Root = pRootpath;
  neue.Pfad = wert(fund::Pfad);
  neue.Bildname = wert(fund::Name);
  neue.BildExt = wert(fund::Endung);
  // Where all are attachments, a picture that nobody selects is one too.
  neue.AlsAnhang = pNurAnhang;
  const QString textdatei = Bilddatei{neue.Bildname, neue.BildExt, neue.Pfad}.textpfad();
  if (mod_BilderSuchen::Fkt_FileExists(textdatei))
    neue.BildInfo = text::Trim(mod_BilderSuchen::Fkt_ReadFile(textdatei));
  neue.ZeileGeaendert = true;
  neue.NeuAusSuche = true;
  Tabelle().haenge_an();
}

// ── The selected picture ────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::bearbeite_Bild() {
  QString datei = Zeile(AktZeile).VollerPfad;
  mod_GrafikKonvert::Fkt_OpenWith(datei);
}

void frm_BildZuordnung::zeige_Exif() {
  DialogObj = std::make_shared<clsDialoge>();
  DialogObj->Fkt_Aufruf_Dialog_BildInfo(Zeile(AktZeile).VollerPfad, mit_Exif(AktZeile).ExifKennung, true);
}

// The dialog tells that the user removed this record's own assignment; here that is only marked, as by the check box.
void frm_BildZuordnung::zeige_AlleZuordnungen() {
  if (text::Trim(AktName).isEmpty()) return;
  mit_Meldung(u"SSC_AlleZuordnungen_Click", [this] {
    bool eigene = false;
    DialogObj = std::make_shared<clsDialoge>();
    DialogObj->Fkt_Aufruf_Dialog_AlleZuordnungen(pAppObj, pRootpath, pStandardBildPfad, AktKey1, AktKey2, AktKey3,
        AktKey4, AktName, AktExt, AktTyp1, AktTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile, eigene);
    if (eigene) {
      Arbeitszeile& zeile = Zeile(AktZeile);
      zeile.Entfernen = zeile.ZeileGeaendert = zeile.Spur.vorgemerkt = true;
      chk_Delete.Value(1);
      Zeichne_Entfernt(false);
    }
    mauszeiger().form(Zeigerform::Standard);
  });
}

void frm_BildZuordnung::zeige_WeitereZuordnungen() {
  DialogObj = std::make_shared<clsDialoge>();
  DialogObj->Fkt_Aufruf_Dialog_WeitereZuordnungen(pAppObj, pBildObj, pRootpath, pStandardBildPfad, AktKey1, AktKey2,
      AktKey3, AktKey4, AktTyp1, AktTyp2, pGL_jmtVerarbeitungsdatum, pInfoZeile);
  mauszeiger().form(Zeigerform::Standard);
}

// Turning changes the file at once, and reading the record again afterwards saves what was pending without a question.
void frm_BildZuordnung::Bild_Drehen(const QString& pTransformation) {
  const QString datei = text::Trim(Zeile(AktZeile).VollerPfad);
  if (datei.isEmpty()) return;
  using namespace mod_GrafikKonvert;
  if (Fkt_GdiStartup(1) != gdiplus::Ok) {
    MsgBox(u"GDI+ not inizialized."_s, Knoepfe::OK, Symbol::Keins, u"GDI Error"_s);
    return;
  }
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& /*fehler*/) {
    Fkt_GdiShutdown();
    MsgBox(u"Bild konnte nicht bearbeitet werden!"_s, Knoepfe::OK, Symbol::Kritisch, u"Achtung"_s);
      },
      [&] {
    const auto drehung = Drehung::mit_Namen(pTransformation);
    const bool gedreht = Fkt_Bild_Drehen(datei, drehung ? drehung->art : 0);
    bildereignis::melde({Bildereignis::Tat::Drehen, gedreht, {}, {}, {}, {}, {}, {}, datei});
    if (gedreht) {
      pBildObj->AktLoadPicture.clear();
      aktualisiere();
    } else {
      MsgBox(u"Das rotieren der JPG ist fehlgeschlagen."_s, Knoepfe::OK, Symbol::Keins, u"Error"_s);
    }
    Fkt_GdiShutdown();
  });
}
