// Loading: the table is filled from the collection, and what lies on the disk is looked for. And leaving: what ties the
// rows to their records, and what is left of it for the next dialog.
#include <algorithm>
#include <utility>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/search/Vorschaubild.h"
#include "exif/clsExifInfo.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Meldeweg.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"
#include "store/mod_BilderSuchen.h"

namespace {

/// The table that a dialog left with what it had not saved.
struct Arbeitsstand final : Dialogstand {
  std::shared_ptr<Arbeitstabelle> tabelle;
};

}  // namespace

void frm_BildZuordnung::Lade_Zuordnung() {
  fehler::gemeldet(Name(), u"Lade_Zuordnung", [this] {
    if (nimm_Stand_auf()) return;
    const std::vector<Bildspur> vorige = BildTabelle ? BildTabelle->Spuren() : std::vector<Bildspur>();
    auflistbar_.clear();
    Init_ThumbNailArray();
    if (Sammlung().AnzahlPos() > 0) lade_Zeilen(vorige);
  });
}

void frm_BildZuordnung::lade_Zeilen(const std::vector<Bildspur>& vorige) {
  const std::int32_t anzahl = Sammlung().AnzahlPos();
  for (std::int32_t i = 0; i < anzahl; ++i) {
    Arbeitszeile& zeile = i == 0 ? Zeile(0) : BildTabelle->haenge_an();
    Sammlung().AktInd(i);
    const auto satz = Sammlung().AktBildObj;
    const auto bekannt =
        std::find_if(vorige.begin(), vorige.end(), [&](const Bildspur& s) { return s.satz && s.satz == satz; });
    if (bekannt != vorige.end()) {
      zeile.Spur = *bekannt;
    } else {
      zeile.Spur.satz = satz;
      // A mark that an earlier dialog left would remove the picture unseen.
      zeile.Spur.vorgemerkt = zeile.Spur.bestaetigt_vorgemerkt = Sammlung().Bild_Delete();
    }
    zeile.lies(satz ? *satz : clsBilderSpeicher(), pRootpath);
    // The strip will ask for the header of each: a share that answers late is asked for them beside what comes here.
    if (vorschaubild::ist_Bildtyp(zeile.BildExt)) vorlauf_.datei(zeile.VollerPfad);
    lade_Text(zeile);
    lade_Anwesenheit(zeile);
  }
  const auto geht = [](const Arbeitszeile& zeile) { return zeile.Entfernen; };
  zeige_Anzahl(std::any_of(BildTabelle->begin(), BildTabelle->end(), geht));
  SSC_AlleZuordnungen.Enabled(true);
  SSC_WeitereZuordnungen.Enabled(true);
}

void frm_BildZuordnung::lade_Text(Arbeitszeile& zeile) {
  // What could not be written stands as it was typed: the next save would take the old text of the file for it.
  if (zeile.Spur.text.gescheitert()) {
    zeile.BildInfo = zeile.Spur.bildinfo;
    return;
  }
  const QString textdatei = Bilddatei{zeile.Bildname, zeile.BildExt, ordner_von(zeile)}.textpfad();
  if (mod_BilderSuchen::Fkt_FileExists(textdatei))
    zeile.BildInfo = text::Trim(mod_BilderSuchen::Fkt_ReadFile(textdatei));
}

// A file that is missing in a folder which can't be listed says nothing about the file: the share may be away. What the
// user marked stays marked; what only a missing file had marked is unmarked once the file is back.
void frm_BildZuordnung::lade_Anwesenheit(Arbeitszeile& zeile) {
  zeile.DateiFehlt = !mod_BilderSuchen::Fkt_FileExists(zeile.VollerPfad);
  zeile.Spur.ordner_lesbar =
      !zeile.DateiFehlt || (laesst_sich_auflisten(pRootpath) && laesst_sich_auflisten(ordner_von(zeile)));
  zeile.Entfernen = zeile.Spur.vorgemerkt || (zeile.DateiFehlt && zeile.Spur.ordner_lesbar);
  if (!zeile.Entfernen) Sammlung().Bild_Delete(false);
  if (zeile.DateiFehlt) zeile.HatExif = false;
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

// Asked late: a picture without such data is read to its end, and a record may have a hundred that nobody selects.
const Arbeitszeile& frm_BildZuordnung::mit_Exif(std::int32_t nummer) const {
  Arbeitszeile& zeile = Zeile(nummer);
  if (zeile.HatExif || zeile.VollerPfad.isEmpty()) return zeile;
  QString kennung;
  bool exif = false;
  // The reader's way of opening would make an empty file of one that is gone by now.
  if (mod_BilderSuchen::Fkt_FileExists(zeile.VollerPfad)) Pruefe_Exif(zeile.VollerPfad, kennung, exif);
  zeile.HatExif = exif;
  // The search's rows have no mark.
  if (!zeile.NeuAusSuche) zeile.ExifKennung = kennung;
  return zeile;
}

// A file that the reader fails on has no Exif data to show; it must not end what is being done.
void frm_BildZuordnung::Pruefe_Exif(const QString& pDatei, QString& pKennung, bool& pVorhanden) const {
  pVorhanden = fehler::still_enden([&] { return clsExifInfo().Load(pDatei); });
  pKennung = pVorhanden ? CStr(true) : QString();
}

/// Brings the collection into the order of the strip, each record with its flags: no record takes another's place.
void frm_BildZuordnung::ordne_Sammlung() {
  Sammlungszugriff::ordne(Sammlung(), Tabelle().Folge());
}

/// Shows how many pictures there are, and whether there is something to be saved.
void frm_BildZuordnung::zeige_Anzahl(bool geaendert) {
  SSP_Anzahl(3).Caption(QString::number(LetzteZeile() + 1));
  SetzeDatenGeaendert(geaendert);
}

// ── Leaving ─────────────────────────────────────────────────────────────────────────────────────────────────────────

template <class Arbeit>
void frm_BildZuordnung::fuer_jeden_Satz(Arbeit&& arbeit) {
  for (Arbeitszeile& zeile : Tabelle()) {
    const std::int32_t platz = Sammlungszugriff::platz(Sammlung(), zeile.Spur.satz.get());
    if (platz < 0) continue;
    Sammlung().AktInd(platz);
    arbeit(zeile.Spur);
  }
}

/// The user asked for the save that has just been done: the marks that it left in the collection stand.
void frm_BildZuordnung::bestaetige_Vormerkungen() {
  fuer_jeden_Satz([this](Bildspur& spur) { spur.bestaetigt_vorgemerkt = Sammlung().Bild_Delete(); });
}

/// Before the dialog closes: marks that no save confirmed which the user asked for are taken back, and what was not
/// saved is left for whoever opens the dialog again.
void frm_BildZuordnung::verlasse() {
  if (pNurAnzeige || !pBildObj) return;
  fuer_jeden_Satz([this](const Bildspur& spur) { Sammlung().Bild_Delete(spur.bestaetigt_vorgemerkt); });
  hinterlasse_Spur();
}

void frm_BildZuordnung::hinterlasse_Spur() {
  if (pNurAnzeige || !pBildObj) return;
  auto spur = std::make_shared<Dialogspur>();
  spur->bilder = Tabelle().Spuren();
  spur->ungespeichert = DatenGeaendert && !abgelehnt_;
  if (spur->ungespeichert) {
    auto stand = std::make_shared<Arbeitsstand>();
    stand->tabelle = BildTabelle;
    // A row that was only looked at holds what its record holds.
    for (const Arbeitszeile& zeile : Tabelle())
      if (!zeile.ist_leer() && !(zeile.Spur.satz && zeile.gleicht(*zeile.Spur.satz)))
        stand->betroffene.append(zeile.Dateiname());
    spur->stand = std::move(stand);
  }
  Sammlungszugriff::spur(*pBildObj) = std::move(spur);
}

/// Opens with what the last dialog over this collection left unsaved. False where it left nothing.
bool frm_BildZuordnung::nimm_Stand_auf() {
  const auto spur = Sammlungszugriff::spur(Sammlung());
  if (!spur || pNurAnzeige) return false;
  const auto stand = std::dynamic_pointer_cast<Arbeitsstand>(std::exchange(spur->stand, nullptr));
  if (!stand) return false;
  BildTabelle = stand->tabelle;
  wiederaufgenommen_ = true;
  zeige_Anzahl(true);
  SSC_AlleZuordnungen.Enabled(true);
  SSC_WeitereZuordnungen.Enabled(true);
  return true;
}
