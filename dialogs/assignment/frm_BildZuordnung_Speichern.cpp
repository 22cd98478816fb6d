// Saving: the table goes into the collection, and the changes of files are carried out.
#include "dialogs/Bedienschritt.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bildnamen.h"
#include "store/Sammlungszugriff.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

void frm_BildZuordnung::speichere_und_schliesse() {
  if (mod_BilderSuchen::Fkt_DirExists(Standardordner())) {
    std::int32_t zeile = -1;
    Suche_NameDoppelt(zeile);
    if (zeile >= 0) {
      melde_Doppelte(zeile);
      return;
    }
  }
  abgelehnt_ = false;
  Zuordnung_Speichern();
  if (!DatenGeaendert) bestaetige_Vormerkungen();
  verlasse();
  Hide();
}

void frm_BildZuordnung::Suche_NameDoppelt(std::int32_t& pZeile) {
  for (pZeile = 0; pZeile <= LetzteZeile(); ++pZeile)
    if (Ja(pZeile, spalte::NameDoppelt) && !Ja(pZeile, spalte::Entfernen)) return;
  pZeile = -1;
}

void frm_BildZuordnung::Pruefe_NameGeaendert(bool& pErgebnis) {
  pErgebnis = false;
  for (std::int32_t i = 0; i <= LetzteZeile() && !pErgebnis; ++i)
    pErgebnis = Ja(i, spalte::NameGeaendert) && !Ja(i, spalte::NeuAusSuche) && !Ja(i, spalte::Entfernen);
}

void frm_BildZuordnung::Pruefe_NameGeaendertAlle(bool& pErgebnis) {
  pErgebnis = false;
  for (std::int32_t i = 0; i <= LetzteZeile() && !pErgebnis; ++i)
    pErgebnis = Ja(i, spalte::NameGeaendert) && !Ja(i, spalte::Entfernen);
}

void frm_BildZuordnung::Namen_Zuruecksetzen(std::int32_t pZeile) {
  if (pZeile == -1)
    for (pZeile = 0; pZeile <= LetzteZeile() && !Ja(pZeile, spalte::NameGeaendert);) ++pZeile;
  Zelle(pZeile, spalte::Bildname, Text(pZeile, spalte::OriginalName));
}

void frm_BildZuordnung::Namen_Aendern() {
  fehler::Weiter weiter;
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i)
    weiter([&] {
      const bool betroffen = Ja(i, spalte::ZeileGeaendert) && Ja(i, spalte::Gespeichert) &&
          Ja(i, spalte::NameGeaendert) && !Ja(i, spalte::Entfernen);
      if (betroffen) benenne_mit_allen_um(i);
    });
}

void frm_BildZuordnung::Zuordnung_Speichern() {
  bedienschritt(Name(), u"Zuordnung_Speichern", [this] { speichere_Zeilen(); });
  hinterlasse_Spur();
}

/// Asks before stored pictures are renamed; False when nothing is to be saved.
bool frm_BildZuordnung::frage_nach_Namen(bool& erledigt) {
  bool umbenannt = false;
  Pruefe_NameGeaendert(umbenannt);
  if (!umbenannt) return true;
  switch (
      MsgBox(u"Der Dateiname eines oder mehrere schon zugeordneten Bilder wurde verändert.\r\n\r\n"
             "Wollen Sie diese Änderung jetzt durchführen?"_s,
          Knoepfe::JaNeinAbbrechen, Symbol::Keins, u"Dateinamen wurden verändert"_s)) {
    case Antwort::Ja:
      Namen_Aendern();
      erledigt = true;
      return true;
    case Antwort::Abbrechen:
      return false;
    default:
      Namen_Zuruecksetzen(-1);
      return true;
  }
}

void frm_BildZuordnung::speichere_Zeilen() {
  bool erledigt = false;
  halte_leere_Namen();
  // Before the renaming: a picture that stays is renamed with the others.
  auflistbar_.clear();
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) pruefe_Fehlende(i);
  if (!frage_nach_Namen(erledigt)) return;
  ordne_Sammlung();
  // The order is that of the rows; a row that nothing else changed keeps its mark, so that it is written when it is.
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) Zelle(i, spalte::SortIndex, i);
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i)
    if (Ja(i, spalte::ZeileGeaendert) && !text::Trim(Text(i, spalte::VollerPfad)).isEmpty())
      speichere_Zeile(i, erledigt);
  SetzeDatenGeaendert(false);
  Zeichne_Status();
}

/// A stored picture whose name was emptied keeps the one that it has: no file can be called so.
void frm_BildZuordnung::halte_leere_Namen() {
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) {
    if (!Ja(i, spalte::Gespeichert) || !Ja(i, spalte::NameGeaendert)) continue;
    if (!text::Trim(Text(i, spalte::Bildname)).isEmpty()) continue;
    Zelle(i, spalte::Bildname, Text(i, spalte::OriginalName));
    Zelle(i, spalte::NameGeaendert, false);
  }
}

/// What only a missing file marked for removal stays when the file is back, or where its folder can't be looked into.
void frm_BildZuordnung::pruefe_Fehlende(std::int32_t zeile) {
  if (!Ja(zeile, spalte::DateiFehlt) || !Ja(zeile, spalte::Entfernen) || Spur(zeile).vorgemerkt) return;
  const bool fehlt = !mod_BilderSuchen::Fkt_FileExists(Text(zeile, spalte::VollerPfad));
  const bool sicher = laesst_sich_auflisten(Text(zeile, spalte::Root)) &&
      laesst_sich_auflisten(Text(zeile, spalte::Root) + u'\\' + Text(zeile, spalte::Pfad));
  Zelle(zeile, spalte::DateiFehlt, fehlt);
  Zelle(zeile, spalte::Entfernen, fehlt && sicher);
  // An earlier save of this dialog may have left the mark in the record.
  if (!fehlt || !sicher) Zelle(zeile, spalte::ZeileGeaendert, true);
}

void frm_BildZuordnung::speichere_Zeile(std::int32_t zeile, bool namen_erledigt) {
  const bool entfernen = Ja(zeile, spalte::Entfernen);
  // A picture that leaves the record is not renamed on its way out, and one that never was in it does not get there.
  if (entfernen && !Ja(zeile, spalte::Gespeichert)) return;
  if (entfernen && Ja(zeile, spalte::NameGeaendert)) Zelle(zeile, spalte::Bildname, Text(zeile, spalte::OriginalName));
  if (!ordne_Satz_zu(zeile, namen_erledigt)) return;
  clsBildZuordnungen& b = Sammlung();
  pRootpath = Text(zeile, spalte::Root);
  uebernimm_in(*b.AktBildObj, zeile);
  schreibe_Textdatei(zeile);
  b.Bild_Delete(entfernen);
  b.Bild_Changeflag(true);
  b.Bild_SortIndex(zeile);
  Zelle(zeile, spalte::ZeileGeaendert, false);
  Zelle(zeile, spalte::Gespeichert, true);
}

/// Moves the cursor to the row's record, a new one for a new picture, and brings its file into place. False where the
/// row has to stay as it is.
bool frm_BildZuordnung::ordne_Satz_zu(std::int32_t zeile, bool namen_erledigt) {
  if (!Ja(zeile, spalte::Gespeichert)) return lege_neue_an(zeile);
  Sammlung().AktInd(Sammlungszugriff::platz(Sammlung(), Spur(zeile).satz.get()));
  if (!Sammlung().AktBildObj) {
    // The host took the record out while the dialog was open.
    fehler::melde(Name(), u"Zuordnung_Speichern", Laufzeitfehler(fehlernummer::IndexAusserhalb));
    return false;
  }
  if (!namen_erledigt && !Ja(zeile, spalte::Entfernen)) benenne_gespeicherte_um(zeile);
  return true;
}

void frm_BildZuordnung::uebernimm_in(clsBilderSpeicher& satz, std::int32_t zeile) {
  const QString drucktext = Text(zeile, spalte::Beschreibung);
  satz.Bild_Pfad = Text(zeile, spalte::Pfad);
  satz.Bild_Bildname = Text(zeile, spalte::Bildname);
  satz.Bild_BildExt = Text(zeile, spalte::BildExt);
  satz.Bild_AlsAnhang = Ja(zeile, spalte::AlsAnhang);
  satz.Bild_Beschreibung = bildnamen::passender_Drucktext(drucktext);
  satz.Bild_Drucken = Ja(zeile, spalte::Drucken);
  satz.Bild_DruckGesamteSeite = Ja(zeile, spalte::DruckGesamteSeite);
  satz.Bild_NeueSeite = Ja(zeile, spalte::NeueSeite);
  QString& ungekuerzter = Spur(zeile).ungekuerzter_Drucktext;
  // A text that was cut before it was read again has not been shortened by the user.
  if (satz.Bild_Beschreibung != drucktext)
    ungekuerzter = drucktext;
  else if (bildnamen::passender_Drucktext(ungekuerzter) != drucktext)
    ungekuerzter.clear();
}

void frm_BildZuordnung::ShowVerzeichnisDialog(QString& pErgebnis) {
  const auto objekt =
      std::dynamic_pointer_cast<KVFileFunctions>(komponenten::CreateObject(u"KVOCore.KVFileFunctions"_s));
  if (!objekt) throw Laufzeitfehler(fehlernummer::ObjektNichtErstellbar);
  pErgebnis = objekt->SelectFolder(u"Root-Verzeichnis suchen"_s);
}
