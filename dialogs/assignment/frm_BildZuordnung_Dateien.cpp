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
void frm_BildZuordnung::benenne_mit_allen_um(Arbeitszeile& zeile) {
  const QString ordner = ordner_von(zeile);
  const QString alt = zeile.Spur.dateiname;
  const QString neu = zeile.Bildname = text::Trim(zeile.Bildname);
  if (neu == alt) return;
  const Umbenennung ergebnis = Sammlungszugriff::benenne_um(Sammlung(), pRootpath, zeile.Pfad, alt, zeile.BildExt, neu);
  if (ergebnis.datei && !ergebnis.tabelle)
    mod_BilderSuchen::Fkt_FileReName(bilddatei(ordner, neu, zeile.BildExt), bilddatei(ordner, alt, zeile.BildExt));
  if (!ergebnis.tabelle) return zeile.lehne_Namen_ab(ergebnis.grund);
  nimm_Text_mit(textdatei(ordner, alt, zeile.BildExt), textdatei(ordner, neu, zeile.BildExt));
  zeile.merke_Namen(neu, zeile.Pfad);
}

/// A rename that the user's "Nein" left standing, into the record's own folder. All assignments follow the file.
void frm_BildZuordnung::benenne_gespeicherte_um(Arbeitszeile& zeile) {
  const QString neu = text::Trim(zeile.Bildname);
  const Fruehere vorher{zeile.Spur.dateiname, zeile.Spur.dateipfad};
  if (!zeile.NameGeaendert || zeile.NeuAusSuche || neu == vorher.name) return;
  const QString endung = text::Trim(zeile.BildExt);
  const QString ziel = bilddatei(Standardordner(), neu, endung);
  const bool umbenannt = mod_BilderSuchen::Fkt_FileReName(zeile.VollerPfad, ziel);
  const bool gefolgt =
      umbenannt && Sammlungszugriff::folge_der_Datei(Sammlung(), vorher, endung, {neu, pStandardBildPfad});
  if (umbenannt && !gefolgt) mod_BilderSuchen::Fkt_FileReName(ziel, zeile.VollerPfad);
  if (!gefolgt) {
    MsgBox(u"Datei "_s + zeile.VollerPfad + u" konnte nicht umbennant werden"_s);
    return zeile.lehne_Namen_ab({});
  }
  nimm_Text_mit(
      textdatei(zeile.Root + u'\\' + vorher.pfad, vorher.name, endung), textdatei(Standardordner(), neu, endung));
  zeile.Bildname = neu;
  zeile.Pfad = pStandardBildPfad;
  zeile.merke_Namen(neu, pStandardBildPfad);
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
bool frm_BildZuordnung::lege_neue_an(Arbeitszeile& zeile) {
  const QString alte_endung = text::Trim(zeile.BildExt);
  const QString endung = Bilddatei::ersetze_verbotene(alte_endung);
  const QString quelle =
      bilddatei(text::Trim(zeile.Pfad), mod_BilderSuchen::Fkt_SplitFileName(zeile.VollerPfad, 2), alte_endung);
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
    const QString ziel = bilddatei(ordner, name, endung);
    if (mod_BilderSuchen::Fkt_FileExists(ziel) || mod_BilderSuchen::Fkt_FileExists(textdatei(ordner, name, endung)))
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
  const QString datei = textdatei(ordner_von(zeile), text::Trim(zeile.Bildname), text::Trim(zeile.BildExt));
  spur.text.stand = Dateischritt::Stand::Getan;
  if (mod_BilderSuchen::Fkt_WriteFile(datei, spur.bildinfo)) return;
  // The second try tells why.
  const auto sage = [&](const Laufzeitfehler& f) { spur.text = {Dateischritt::Stand::Gescheitert, f.Beschreibung()}; };
  fehler::melden_und_enden(sage, [&] { dateien::schreibe_alles(datei, windows1252::encode(spur.bildinfo)); });
}
