// Saving: the table goes into the collection, and the changes of files are carried out.
#include <algorithm>

#include "dialogs/Bedienschritt.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"
#include "store/Sammlungszugriff.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

void frm_BildZuordnung::speichere_und_schliesse() {
  if (melde_Doppelte()) return;
  abgelehnt_ = false;
  Zuordnung_Speichern();
  if (!DatenGeaendert) bestaetige_Vormerkungen();
  verlasse();
  Hide();
}

void frm_BildZuordnung::Suche_NameDoppelt(std::int32_t& pZeile) {
  pZeile = Tabelle().erste_Doppelte();
}

void frm_BildZuordnung::Pruefe_NameGeaendert(bool& pErgebnis) {
  pErgebnis = std::any_of(Tabelle().begin(), Tabelle().end(), [](const Arbeitszeile& z) { return z.ist_umbenannt(); });
}

void frm_BildZuordnung::Pruefe_NameGeaendertAlle(bool& pErgebnis) {
  pErgebnis = std::any_of(
      Tabelle().begin(), Tabelle().end(), [](const Arbeitszeile& z) { return z.NameGeaendert && !z.Entfernen; });
}

void frm_BildZuordnung::Namen_Zuruecksetzen(std::int32_t pZeile) {
  Zeile(pZeile == -1 ? Tabelle().erste_Umbenannte() : pZeile).setze_Namen_zurueck();
}

void frm_BildZuordnung::Namen_Aendern() {
  fehler::Weiter weiter;
  for (Arbeitszeile& zeile : Tabelle())
    weiter([&] {
      if (zeile.ist_umzubenennen()) benenne_mit_allen_um(zeile);
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
  Tabelle().halte_leere_Namen();
  // Before the renaming: a picture that stays is renamed with the others.
  auflistbar_.clear();
  for (Arbeitszeile& zeile : Tabelle()) pruefe_Fehlende(zeile);
  if (!frage_nach_Namen(erledigt)) return;
  ordne_Sammlung();
  // The order is that of the rows; a row that nothing else changed keeps its mark, so that it is written when it is.
  Tabelle().nummeriere();
  for (Arbeitszeile& zeile : Tabelle())
    if (zeile.ist_zu_speichern()) speichere_Zeile(zeile, erledigt);
  SetzeDatenGeaendert(false);
  Zeichne_Status();
}

/// What only a missing file marked for removal stays when the file is back, or where its folder can't be looked into.
void frm_BildZuordnung::pruefe_Fehlende(Arbeitszeile& zeile) {
  if (!zeile.DateiFehlt || !zeile.Entfernen || zeile.Spur.vorgemerkt) return;
  zeile.DateiFehlt = !mod_BilderSuchen::Fkt_FileExists(zeile.VollerPfad);
  const bool sicher = laesst_sich_auflisten(zeile.Root) && laesst_sich_auflisten(zeile.Root + u'\\' + zeile.Pfad);
  zeile.Entfernen = zeile.DateiFehlt && sicher;
  // An earlier save of this dialog may have left the mark in the record.
  if (!zeile.Entfernen) zeile.ZeileGeaendert = true;
}

void frm_BildZuordnung::speichere_Zeile(Arbeitszeile& zeile, bool namen_erledigt) {
  // A picture that leaves the record is not renamed on its way out, and one that never was in it does not get there.
  if (zeile.Entfernen && !zeile.Gespeichert) return;
  if (zeile.Entfernen && zeile.NameGeaendert) zeile.setze_Namen_zurueck();
  if (!ordne_Satz_zu(zeile, namen_erledigt)) return;
  clsBildZuordnungen& b = Sammlung();
  pRootpath = zeile.Root;
  zeile.uebernimm_in(*b.AktBildObj);
  schreibe_Textdatei(zeile);
  b.Bild_Delete(zeile.Entfernen);
  b.Bild_Changeflag(true);
  b.Bild_SortIndex(zeile.SortIndex);
  zeile.ZeileGeaendert = false;
  zeile.Gespeichert = true;
}

/// Moves the cursor to the row's record, a new one for a new picture, and brings its file into place. False where the
/// row has to stay as it is.
bool frm_BildZuordnung::ordne_Satz_zu(Arbeitszeile& zeile, bool namen_erledigt) {
  if (!zeile.Gespeichert) return lege_neue_an(zeile);
  Sammlung().AktInd(Sammlungszugriff::platz(Sammlung(), zeile.Spur.satz.get()));
  if (!Sammlung().AktBildObj) {
    // The host took the record out while the dialog was open.
    fehler::melde(Name(), u"Zuordnung_Speichern", Laufzeitfehler(fehlernummer::IndexAusserhalb));
    return false;
  }
  if (!namen_erledigt && !zeile.Entfernen) benenne_gespeicherte_um(zeile);
  return true;
}

void frm_BildZuordnung::ShowVerzeichnisDialog(QString& pErgebnis) {
  const auto objekt =
      std::dynamic_pointer_cast<KVFileFunctions>(komponenten::CreateObject(u"KVOCore.KVFileFunctions"_s));
  if (!objekt) throw Laufzeitfehler(fehlernummer::ObjektNichtErstellbar);
  pErgebnis = objekt->SelectFolder(u"Root-Verzeichnis suchen"_s);
}
