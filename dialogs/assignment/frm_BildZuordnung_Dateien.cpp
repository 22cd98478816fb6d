// Saving: the files of the rows. New pictures are copied, renamed ones renamed with their texts, texts written.
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Uhr.h"
#include "platform/basic/Windows1252.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

QString bilddatei(const QString& ordner, const QString& name, const QString& endung) {
  return Bilddatei{name, endung, ordner}.pfad();
}

QString textdatei(const QString& ordner, const QString& name, const QString& endung) {
  return Bilddatei{name, endung, ordner}.textpfad();
}

}  // namespace

// ── Renaming ────────────────────────────────────────────────────────────────────────────────────────────────────────

/// With the file and all assignments of the picture. What can't be renamed keeps its old name in the row too: with the
/// new one it would take another picture's place, or none.
void frm_BildZuordnung::benenne_mit_allen_um(std::int32_t zeile) {
  const QString ordner = pRootpath + u'\\' + Text(zeile, spalte::Pfad);
  const QString pfad = Text(zeile, spalte::Pfad);
  const QString endung = Text(zeile, spalte::BildExt);
  const QString alt = Spur(zeile).dateiname;
  const QString neu = text::Trim(Text(zeile, spalte::Bildname));
  Zelle(zeile, spalte::Bildname, neu);
  if (neu == alt) return;
  const Umbenennung ergebnis = Sammlungszugriff::benenne_um(Sammlung(), pRootpath, pfad, alt, endung, neu);
  if (ergebnis.datei && !ergebnis.tabelle)
    mod_BilderSuchen::Fkt_FileReName(bilddatei(ordner, neu, endung), bilddatei(ordner, alt, endung));
  if (!ergebnis.tabelle) return lehne_Namen_ab(zeile, ergebnis.grund);
  nimm_Text_mit(textdatei(ordner, alt, endung), textdatei(ordner, neu, endung));
  merke_Namen(zeile, neu, pfad);
}

/// A rename that the user's "Nein" left standing, into the record's own folder. All assignments follow the file.
void frm_BildZuordnung::benenne_gespeicherte_um(std::int32_t zeile) {
  const QString neu = text::Trim(Text(zeile, spalte::Bildname));
  const Fruehere vorher{Spur(zeile).dateiname, Spur(zeile).dateipfad};
  if (!Ja(zeile, spalte::NameGeaendert) || Ja(zeile, spalte::NeuAusSuche) || neu == vorher.name) return;
  const QString endung = text::Trim(Text(zeile, spalte::BildExt));
  const QString alt = Text(zeile, spalte::VollerPfad);
  const QString ziel = bilddatei(Standardordner(), neu, endung);
  const bool umbenannt = mod_BilderSuchen::Fkt_FileReName(alt, ziel);
  const bool gefolgt =
      umbenannt && Sammlungszugriff::folge_der_Datei(Sammlung(), vorher, endung, {neu, pStandardBildPfad});
  if (umbenannt && !gefolgt) mod_BilderSuchen::Fkt_FileReName(ziel, alt);
  if (!gefolgt) {
    MsgBox(u"Datei "_s + alt + u" konnte nicht umbennant werden"_s);
    return lehne_Namen_ab(zeile, {});
  }
  nimm_Text_mit(textdatei(Text(zeile, spalte::Root) + u'\\' + vorher.pfad, vorher.name, endung),
      textdatei(Standardordner(), neu, endung));
  Zelle(zeile, spalte::Bildname, neu);
  Zelle(zeile, spalte::Pfad, pStandardBildPfad);
  merke_Namen(zeile, neu, pStandardBildPfad);
}

void frm_BildZuordnung::lehne_Namen_ab(std::int32_t zeile, const QString& grund) {
  Bildspur& spur = Spur(zeile);
  spur.abgelehnter_Name = text::Trim(Text(zeile, spalte::Bildname));
  spur.umbenennung = {Dateischritt::Stand::Gescheitert, grund};
  Zelle(zeile, spalte::Bildname, Text(zeile, spalte::OriginalName));
}

/// The record follows at once: a failure before its row is saved must not leave it under a name that no file has.
void frm_BildZuordnung::merke_Namen(std::int32_t zeile, const QString& name, const QString& pfad) {
  Bildspur& spur = Spur(zeile);
  spur.fruehere.push_back({spur.dateiname, spur.dateipfad});
  spur.dateiname = name;
  spur.dateipfad = pfad;
  spur.abgelehnter_Name.clear();
  spur.umbenennung = {Dateischritt::Stand::Getan, {}};
  if (!spur.satz) return;
  spur.satz->Bild_Bildname = name;
  spur.satz->Bild_Pfad = pfad;
}

/// No picture had the new name, so a text that is there already belongs to none.
void frm_BildZuordnung::nimm_Text_mit(const QString& alt, const QString& neu) {
  if (!mod_BilderSuchen::Fkt_FileExists(alt)) return;
  fehler::still_enden([&] {
    const FileSystemObject dateien;
    if (dateien.FileExists(neu)) dateien.DeleteFile(neu, true);
    dateien.MoveFile(alt, neu);
  });
}

// ── New pictures ────────────────────────────────────────────────────────────────────────────────────────────────────

/// Copies a new picture under its stamped name into the record's folder, one that lies there already too: its row would
/// point to no file otherwise. Gives it a record at the row's place. A picture whose copy failed stays new.
bool frm_BildZuordnung::lege_neue_an(std::int32_t zeile) {
  const QString alte_endung = text::Trim(Text(zeile, spalte::BildExt));
  const QString endung = Bilddatei::ersetze_verbotene(alte_endung);
  const QString quelle = bilddatei(text::Trim(Text(zeile, spalte::Pfad)),
      mod_BilderSuchen::Fkt_SplitFileName(Text(zeile, spalte::VollerPfad), 2), alte_endung);
  const QString name = kopiere(quelle, zeile, endung);
  Bildspur& spur = Spur(zeile);
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
  Zelle(zeile, spalte::Bildname, name);
  Zelle(zeile, spalte::BildExt, endung);
  Zelle(zeile, spalte::Pfad, pStandardBildPfad);
  return true;
}

/// Gives the name of the copy, or the one that it would have had. Never overwrites: a name that another desk took in
/// between is passed over as well.
QString frm_BildZuordnung::kopiere(const QString& quelle, std::int32_t zeile, const QString& endung) {
  const QString stempel = Bilddatei::Stempel(uhr::jetzt());
  const QString anfang = Bilddatei::ersetze_verbotene(Text(zeile, spalte::Bildname));
  Bildspur& spur = Spur(zeile);
  spur.quelle = quelle;
  spur.groesse = -1;
  if (!mod_BilderSuchen::Fkt_DirExists(Standardordner())) mod_BilderSuchen::Fkt_MakePath(Standardordner());
  QString name;
  for (int nummer = 1;; ++nummer) {
    name = Bilddatei{anfang, endung}.gestempelt(stempel, nummer).name;
    if (!ist_frei(name, endung, zeile)) continue;
    std::int32_t fehlernummer = 0;
    spur.kopie = {Dateischritt::Stand::Getan, {}};
    const auto sage = [&](const Laufzeitfehler& f) {
      fehlernummer = f.Nummer();
      spur.kopie = {Dateischritt::Stand::Gescheitert, f.Beschreibung()};
    };
    fehler::melden_und_enden(sage, [&] {
      spur.groesse = dateien::FileLen(quelle);
      FileSystemObject().CopyFile(quelle, bilddatei(Standardordner(), name, endung), false);
    });
    if (fehlernummer != fehlernummer::DateiVorhanden) return name;
  }
}

/// No other row and no file has the name, nor would their texts share a file.
bool frm_BildZuordnung::ist_frei(const QString& name, const QString& endung, std::int32_t zeile) const {
  const QString text = text::UCase(Bilddatei{name, endung}.textdatei());
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) {
    const QString anderer = Bilddatei{text::Trim(Text(i, spalte::Bildname)), Text(i, spalte::BildExt)}.textdatei();
    if (i != zeile && text::UCase(anderer) == text) return false;
  }
  return !mod_BilderSuchen::Fkt_FileExists(bilddatei(Standardordner(), name, endung)) &&
      !mod_BilderSuchen::Fkt_FileExists(textdatei(Standardordner(), name, endung));
}

/// The record that the picture gets once its copy succeeds.
void frm_BildZuordnung::merke_ohne_Datei(std::int32_t zeile, const QString& name, const QString& endung) {
  auto satz = std::make_shared<clsBilderSpeicher>();
  uebernimm_in(*satz, zeile);
  satz->Bild_Bildname = name;
  satz->Bild_BildExt = endung;
  satz->Bild_Pfad = pStandardBildPfad;
  satz->Bild_Typ1 = PTyp1;
  satz->Bild_Typ2 = pTyp2;
  satz->Bild_Grafik_Ursprung = u"-"_s;
  satz->Bild_SortIndex = static_cast<std::int16_t>(zeile);
  Spur(zeile).ohne_Datei = std::move(satz);
  Spur(zeile).bildinfo = text::Trim(Text(zeile, spalte::BildInfo));
}

// ── Texts ───────────────────────────────────────────────────────────────────────────────────────────────────────────

/// The text goes beside the picture, where it is looked for. An emptied text leaves the file as it is. A text that
/// can't be written is not told here, as no failure of a file is but a failed renaming.
void frm_BildZuordnung::schreibe_Textdatei(std::int32_t zeile) {
  Bildspur& spur = Spur(zeile);
  spur.bildinfo = text::Trim(Text(zeile, spalte::BildInfo));
  spur.text = {};
  if (spur.bildinfo.isEmpty()) return;
  const QString datei = textdatei(pRootpath + u'\\' + Text(zeile, spalte::Pfad),
      text::Trim(Text(zeile, spalte::Bildname)), text::Trim(Text(zeile, spalte::BildExt)));
  spur.text.stand = Dateischritt::Stand::Getan;
  if (mod_BilderSuchen::Fkt_WriteFile(datei, spur.bildinfo)) return;
  // The second try tells why.
  const auto sage = [&](const Laufzeitfehler& f) { spur.text = {Dateischritt::Stand::Gescheitert, f.Beschreibung()}; };
  fehler::melden_und_enden(sage, [&] { dateien::schreibe_alles(datei, windows1252::encode(spur.bildinfo)); });
}
