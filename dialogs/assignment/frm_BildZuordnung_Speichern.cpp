// Saving: the table goes into the collection, and the changes of files are carried out: new pictures are copied,
// renamed ones renamed with their texts, texts written.
#include <algorithm>

#include "dialogs/Bedienschritt.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Uhr.h"
#include "platform/basic/Windows1252.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

/// No picture had the new name, so a text that is there already belongs to none.
void nimm_mit(Namenswechsel& text) {
  const FileSystemObject dateien;
  if (!dateien.FileExists(text.alter())) return;
  if (!text.hat_beide() && dateien.FileExists(text.neuer())) dateien.DeleteFile(text.neuer(), true);
  text.vollende();
}

/// Leaves picture and text the names that the rows have. What can't be done any more costs nothing: the picture is
/// found by its rows, and a second name of it is nobody's.
void beende(Namenswechsel& bild, Namenswechsel& text, bool gefolgt) {
  fehler::still_enden([&] { gefolgt ? bild.vollende() : bild.nimm_zurueck(); });
  fehler::still_enden([&] { gefolgt ? nimm_mit(text) : text.nimm_zurueck(); });
}

}  // namespace

void frm_BildZuordnung::speichere_und_schliesse() {
  if (melde_Doppelte()) return;
  abgelehnt_ = false;
  Zuordnung_Speichern();
  if (!DatenGeaendert) bestaetige_Vormerkungen();
  verlasse();
  Hide();
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

// ── Renaming ────────────────────────────────────────────────────────────────────────────────────────────────────────

/// With the file and all assignments of the picture. What can't be renamed keeps its old name in the row too: with the
/// new one it would take another picture's place, or none.
void frm_BildZuordnung::benenne_mit_allen_um(Arbeitszeile& zeile) {
  const QString ordner = ordner_von(zeile);
  const QString alt = zeile.Spur.dateiname;
  const QString neu = zeile.Bildname = text::Trim(zeile.Bildname);
  if (neu == alt) return;
  Namenswechsel text(
      Bilddatei{alt, zeile.BildExt, ordner}.textpfad(), Bilddatei{neu, zeile.BildExt, ordner}.textpfad());
  Umbenennung ergebnis = Sammlungszugriff::benenne_um(Sammlung(), pRootpath, zeile.Pfad, alt, zeile.BildExt, neu);
  beende(ergebnis.wechsel, text, ergebnis.tabelle);
  if (!ergebnis.tabelle) return zeile.lehne_Namen_ab(ergebnis.grund);
  zeile.merke_Namen(neu, zeile.Pfad);
}

/// A rename that the user's "Nein" left standing, into the record's own folder. All assignments follow the file.
void frm_BildZuordnung::benenne_gespeicherte_um(Arbeitszeile& zeile) {
  const QString neu = text::Trim(zeile.Bildname);
  const Fruehere vorher{zeile.Spur.dateiname, zeile.Spur.dateipfad};
  if (!zeile.NameGeaendert || zeile.NeuAusSuche || neu == vorher.name) return;
  const QString endung = text::Trim(zeile.BildExt);
  Namenswechsel bild(zeile.VollerPfad, Bilddatei{neu, endung, Standardordner()}.pfad());
  Namenswechsel text(Bilddatei{vorher.name, endung, zeile.Root + u'\\' + vorher.pfad}.textpfad(),
      Bilddatei{neu, endung, Standardordner()}.textpfad());
  const bool gefolgt = fehler::still_enden([&] {
    bild.benenne();
    return Sammlungszugriff::folge_der_Datei(Sammlung(), vorher, endung, {neu, pStandardBildPfad});
  });
  beende(bild, text, gefolgt);
  if (!gefolgt) {
    MsgBox(u"Datei "_s + zeile.VollerPfad + u" konnte nicht umbennant werden"_s);
    return zeile.lehne_Namen_ab({});
  }
  zeile.Bildname = neu;
  zeile.Pfad = pStandardBildPfad;
  zeile.merke_Namen(neu, pStandardBildPfad);
}

// ── New pictures ────────────────────────────────────────────────────────────────────────────────────────────────────

/// Copies a new picture under its stamped name into the record's folder, one that lies there already too: its row would
/// point to no file otherwise. Gives it a record at the row's place. A picture whose copy failed stays new.
bool frm_BildZuordnung::lege_neue_an(Arbeitszeile& zeile) {
  const QString alte_Endung = text::Trim(zeile.BildExt);
  const QString endung = Bilddatei::ersetze_verbotene(alte_Endung);
  const QString quelle =
      Bilddatei{mod_BilderSuchen::Fkt_SplitFileName(zeile.VollerPfad, 2), alte_Endung, text::Trim(zeile.Pfad)}.pfad();
  const QString name = kopiere(quelle, zeile, endung);
  Bildspur& spur = zeile.Spur;
  if (spur.kopie.gescheitert()) {
    merke_ohne_Datei(zeile, name, endung);
    return false;
  }
  if (!Sammlung().FKT_NeuesBild({}, {}, {}, {}, name, endung, PTyp1, pTyp2)) return false;
  spur.satz = Sammlung().AktBildObj;
  spur.ohne_Datei.reset();
  spur.dateiname = name;
  spur.dateipfad = pStandardBildPfad;
  ordne_Sammlung();
  Sammlung().AktInd(Sammlungszugriff::platz(Sammlung(), spur.satz.get()));
  Sammlung().Bild_Neu(true);
  zeile.Bildname = name;
  zeile.BildExt = endung;
  zeile.Pfad = pStandardBildPfad;
  return true;
}

/// Gives the name of the copy, or the one that it would have had. Never overwrites: a name that another desk took in
/// between is passed over as well.
QString frm_BildZuordnung::kopiere(const QString& quelle, Arbeitszeile& zeile, const QString& endung) {
  Bildspur& spur = zeile.Spur;
  spur.quelle = quelle;
  spur.groesse = -1;
  const QString ordner = Standardordner();
  if (!mod_BilderSuchen::Fkt_DirExists(ordner)) mod_BilderSuchen::Fkt_MakePath(ordner);
  const auto nimmt = [&](const QString& name) {
    const QString ziel = Bilddatei{name, endung, ordner}.pfad();
    if (mod_BilderSuchen::Fkt_FileExists(ziel) ||
        mod_BilderSuchen::Fkt_FileExists(Bilddatei{name, endung, ordner}.textpfad()))
      return false;
    std::int32_t fehlernummer = 0;
    spur.kopie = {Dateischritt::Stand::Getan, {}};
    const auto sage = [&](const Laufzeitfehler& f) {
      fehlernummer = f.Nummer();
      spur.kopie = {Dateischritt::Stand::Gescheitert, f.Beschreibung()};
    };
    fehler::melden_und_enden(sage, [&] {
      spur.groesse = dateien::FileLen(quelle);
      FileSystemObject().CopyFile(quelle, ziel, false);
    });
    return fehlernummer != fehlernummer::DateiVorhanden;
  };
  return Tabelle().gestempelter_Name(zeile, endung, Bilddatei::Stempel(uhr::jetzt()), nimmt);
}

/// The record that the picture gets once its copy succeeds.
void frm_BildZuordnung::merke_ohne_Datei(Arbeitszeile& zeile, const QString& name, const QString& endung) {
  auto satz = std::make_shared<clsBilderSpeicher>();
  zeile.uebernimm_in(*satz);
  satz->Bild_Bildname = name;
  satz->Bild_BildExt = endung;
  satz->Bild_Pfad = pStandardBildPfad;
  satz->Bild_Typ1 = PTyp1;
  satz->Bild_Typ2 = pTyp2;
  satz->Bild_Grafik_Ursprung = u"-"_s;
  satz->Bild_SortIndex = static_cast<std::int16_t>(zeile.SortIndex);
  zeile.Spur.ohne_Datei = std::move(satz);
  zeile.Spur.bildinfo = text::Trim(zeile.BildInfo);
}

// ── Texts ───────────────────────────────────────────────────────────────────────────────────────────────────────────

/// The text goes beside the picture, where it is looked for. An emptied text leaves the file as it is. A text that
/// can't be written is not told here, as no failure of a file is but a failed renaming.
void frm_BildZuordnung::schreibe_Textdatei(Arbeitszeile& zeile) {
  Bildspur& spur = zeile.Spur;
  spur.bildinfo = text::Trim(zeile.BildInfo);
  spur.text = {};
  if (spur.bildinfo.isEmpty()) return;
  const QString datei = Bilddatei{text::Trim(zeile.Bildname), text::Trim(zeile.BildExt), ordner_von(zeile)}.textpfad();
  spur.text.stand = Dateischritt::Stand::Getan;
  if (mod_BilderSuchen::Fkt_WriteFile(datei, spur.bildinfo)) return;
  // The second try tells why.
  const auto sage = [&](const Laufzeitfehler& f) { spur.text = {Dateischritt::Stand::Gescheitert, f.Beschreibung()}; };
  fehler::melden_und_enden(sage, [&] { dateien::schreibe_alles(datei, windows1252::encode(spur.bildinfo)); });
}
