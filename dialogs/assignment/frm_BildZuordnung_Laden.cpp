// Loading: the table is filled from the collection, and what lies on the disk is looked for.
#include <algorithm>
#include <utility>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "exif/clsExifInfo.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Meldeweg.h"
#include "store/Bildnamen.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;

void frm_BildZuordnung::Lade_Zuordnung() {
  fehler::gemeldet(Name(), u"Lade_Zuordnung", [this] {
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
  spur.ordner_lesbar = !fehlt ||
      (laesst_sich_auflisten(pRootpath) && laesst_sich_auflisten(pRootpath + u'\\' + Text(zeile, spalte::Pfad)));
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
