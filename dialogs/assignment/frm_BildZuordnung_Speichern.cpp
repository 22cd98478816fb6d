// Saving: the table goes into the collection, and the changes of files are carried out.
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Uhr.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Stempelform = u"yyyyMMdd_HHmmss"_s;
constexpr qsizetype Stempellaenge = 15;
/// Longest name that the database keeps.
constexpr qsizetype Namenslaenge = 50;

}  // namespace

void frm_BildZuordnung::speichere_und_schliesse() {
  if (mod_BilderSuchen::Fkt_DirExists(Standardordner())) {
    std::int32_t zeile = -1;
    Suche_NameDoppelt(zeile);
    if (zeile >= 0) {
      melde_Doppelte(zeile);
      return;
    }
  }
  Zuordnung_Speichern();
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
      if (!betroffen) return;
      Sammlung().Verarbeite_Dateinamen_Aenderung(pRootpath, Text(i, spalte::Pfad), Text(i, spalte::OriginalName),
                                                 Text(i, spalte::BildExt), text::Trim(Text(i, spalte::Bildname)));
    });
}

void frm_BildZuordnung::Zuordnung_Speichern() {
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& f) {
        mauszeiger().form(Zeigerform::Standard);
        melde(u"Zuordnung_Speichern", f);
      },
      [&] { speichere_Zeilen(); });
}

void frm_BildZuordnung::speichere_Zeilen() {
  bool umbenannt = false;
  bool erledigt = false;
  Pruefe_NameGeaendert(umbenannt);
  if (umbenannt) {
    switch (
        MsgBox(u"Der Dateiname eines oder mehrere schon zugeordneten Bilder wurde verändert.\r\n\r\n"
               "Wollen Sie diese Änderung jetzt durchführen?"_s,
               Knoepfe::JaNeinAbbrechen, Symbol::Keins, u"Dateinamen wurden verändert"_s)) {
      case Antwort::Ja:
        Namen_Aendern();
        erledigt = true;
        break;
      case Antwort::Abbrechen:
        return;
      default:
        Namen_Zuruecksetzen(-1);
        break;
    }
  }
  // The order is that of the rows; a row that nothing else changed keeps its mark, so that it is written when it is.
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i) Zelle(i, spalte::SortIndex, i);
  for (std::int32_t i = 0; i <= LetzteZeile(); ++i)
    if (Ja(i, spalte::ZeileGeaendert) && !text::Trim(Text(i, spalte::VollerPfad)).isEmpty())
      speichere_Zeile(i, erledigt);
  SetzeDatenGeaendert(false);
  Zeichne_Status();
}

void frm_BildZuordnung::speichere_Zeile(std::int32_t zeile, bool namen_erledigt) {
  // A picture that leaves the record is not renamed on its way out.
  if (Ja(zeile, spalte::Entfernen) && Ja(zeile, spalte::NameGeaendert))
    Zelle(zeile, spalte::Bildname, Text(zeile, spalte::OriginalName));
  if (Ja(zeile, spalte::Gespeichert)) {
    if (!benenne_gespeicherte_um(zeile, namen_erledigt)) return;
  } else {
    lege_neue_an(zeile);
  }
  clsBildZuordnungen& b = Sammlung();
  pRootpath = Text(zeile, spalte::Root);
  b.Bild_Pfad(Text(zeile, spalte::Pfad));
  b.Bild_Bildname(Text(zeile, spalte::Bildname));
  b.Bild_BildExt(Text(zeile, spalte::BildExt));
  b.Bild_AlsAnhang(Ja(zeile, spalte::AlsAnhang));
  b.Bild_Beschreibung(Text(zeile, spalte::Beschreibung));
  b.Bild_Drucken(Ja(zeile, spalte::Drucken));
  b.Bild_DruckGesamteSeite(Ja(zeile, spalte::DruckGesamteSeite));
  b.Bild_NeueSeite(Ja(zeile, spalte::NeueSeite));
  schreibe_Textdatei(zeile);
  b.Bild_Delete(Ja(zeile, spalte::Entfernen));
  b.Bild_Changeflag(true);
  b.Bild_SortIndex(zeile);
  Zelle(zeile, spalte::ZeileGeaendert, false);
  Zelle(zeile, spalte::Gespeichert, true);
}

// The row's number is the collection's index. After a drop the two are out of step: the values then go to the record at
// that place, and an index that does not exist is passed over.
bool frm_BildZuordnung::benenne_gespeicherte_um(std::int32_t zeile, bool namen_erledigt) {
  Sammlung().AktInd(zeile);
  if (!Sammlung().AktBildObj) {
    melde(u"Zuordnung_Speichern", Laufzeitfehler(fehlernummer::IndexAusserhalb));
    return false;
  }
  Sammlung().Bild_Neu(false);
  const bool umbenannt = Ja(zeile, spalte::NameGeaendert) && !Ja(zeile, spalte::NeuAusSuche) &&
                         text::Trim(Text(zeile, spalte::Bildname)) != text::Trim(Text(zeile, spalte::OriginalName));
  if (!umbenannt || namen_erledigt) return true;
  const QString alt = Text(zeile, spalte::VollerPfad);
  const QString neu = Standardordner() + u'\\' + text::Trim(Text(zeile, spalte::Bildname)) + u'.' +
                      text::Trim(Text(zeile, spalte::BildExt));
  if (mod_BilderSuchen::Fkt_FileReName(alt, neu)) {
    Zelle(zeile, spalte::Pfad, pStandardBildPfad);
    return true;
  }
  MsgBox(u"Datei "_s + alt + u" konnte nicht umbennant werden"_s);
  Zelle(zeile, spalte::Bildname, Text(zeile, spalte::OriginalName));
  return true;
}

void frm_BildZuordnung::lege_neue_an(std::int32_t zeile) {
  Zelle(zeile, spalte::Bildname, gestempelter_Name(zeile));
  const QString name = text::Trim(Text(zeile, spalte::Bildname));
  const QString endung = text::Trim(Text(zeile, spalte::BildExt));
  Sammlung().FKT_NeuesBild({}, {}, {}, {}, name, endung, PTyp1, pTyp2);
  Sammlung().Bild_Neu(true);
  QString ziel = Standardordner();
  const QString quelle = text::Trim(Text(zeile, spalte::Pfad));
  // Compared letter by letter: a picture that lies there already keeps its file and its name on the disk.
  if (quelle == ziel) return;
  if (!mod_BilderSuchen::Fkt_DirExists(ziel)) mod_BilderSuchen::Fkt_MakePath(ziel);
  const QString datei = mod_BilderSuchen::Fkt_SplitFileName(Text(zeile, spalte::VollerPfad), 2) + u'.' + endung;
  mod_BilderSuchen::Fkt_FileCopy(quelle + u'\\' + datei, ziel, false, false, name + u'.' + endung, false);
  Zelle(zeile, spalte::Pfad, pStandardBildPfad);
}

// The stamp follows the last letter. A name that would not fit the database with it is cut before it: cut behind it,
// the row would point to no file.
QString frm_BildZuordnung::gestempelter_Name(std::int32_t zeile) const {
  const QString stempel = uhr::jetzt().toString(Stempelform);
  const QString name = Text(zeile, spalte::Bildname);
  if (text::Trim(name).size() + Stempellaenge <= Namenslaenge) return name + stempel;
  const auto vergeben = [&](const QString& neu) {
    for (std::int32_t i = 0; i <= LetzteZeile(); ++i)
      if (i != zeile && text::UCase(text::Trim(Text(i, spalte::Bildname))) == text::UCase(neu)) return true;
    return false;
  };
  QString neu = text::Left(name, Namenslaenge - Stempellaenge) + stempel;
  for (int nummer = 2; vergeben(neu); ++nummer) {
    const QString anhang = u"_%1"_s.arg(nummer);
    neu = text::Left(name, Namenslaenge - Stempellaenge - anhang.size()) + anhang + stempel;
  }
  return neu;
}

// An emptied text leaves the file as it is. A text that can't be written is not told, as no failure of a file is but a
// failed renaming.
void frm_BildZuordnung::schreibe_Textdatei(std::int32_t zeile) {
  const QString inhalt = text::Trim(Text(zeile, spalte::BildInfo));
  if (inhalt.isEmpty()) return;
  const QString datei = Standardordner() + u'\\' + text::Trim(Text(zeile, spalte::Bildname)) +
                        text::Trim(Text(zeile, spalte::BildExt)) + u".txt"_s;
  mod_BilderSuchen::Fkt_WriteFile(datei, inhalt);
}

void frm_BildZuordnung::ShowVerzeichnisDialog(QString& pErgebnis) {
  const auto objekt =
      std::dynamic_pointer_cast<KVFileFunctions>(komponenten::CreateObject(u"KVOCore.KVFileFunctions"_s));
  if (!objekt) throw Laufzeitfehler(fehlernummer::ObjektNichtErstellbar);
  pErgebnis = objekt->SelectFolder(u"Root-Verzeichnis suchen"_s);
}
