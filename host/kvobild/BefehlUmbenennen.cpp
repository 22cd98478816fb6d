#include <optional>

#include "host/betrieb/Hochkomma.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/wirt/Namenswechsel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A rename of one picture of the tree.
struct Vorhaben {
  QString wurzel;
  QString pfad;
  namen::Bilddatei alt;
  namen::Bilddatei neu;

  QString ordner() const { return wurzel + u'\\' + pfad + u'\\'; }
};

/// The new name may be given with the extension, which stays the same.
namen::Bilddatei neuer_Name(const QString& angabe, const namen::Bilddatei& alt) {
  namen::pruefe_Dateiname(angabe);
  QString name = text::Trim(angabe);
  const QString ende = u'.' + alt.ext;
  if (text::UCase(name).endsWith(text::UCase(ende))) name.chop(ende.size());
  if (name.isEmpty()) throw Abbruch(Ausgang::Aufruf, u"Der neue Name ist leer."_s);
  if (name.size() > Bilddatei::Namenslaenge)
    throw Abbruch(Ausgang::Aufruf,
        u"Der neue Name „%1“ ist länger als %2 Zeichen."_s.arg(name, QString::number(Bilddatei::Namenslaenge)));
  if (name == alt.name) throw Abbruch(Ausgang::Aufruf, u"Das Bild heißt schon „%1“."_s.arg(alt.datei()));
  return {name, alt.ext};
}

void pruefe_Dateien(const Vorhaben& u) {
  const FileSystemObject dateien;
  if (!dateien.FileExists(u.ordner() + u.alt.datei()))
    throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ gibt es nicht."_s.arg(u.ordner() + u.alt.datei()));
  if (u.alt.gleich(u.neu)) return;  // only the case of letters changes: the file itself is not in its own way
  for (const QString& ziel : {u.neu.datei(), u.neu.textdatei()})
    if (dateien.FileExists(u.ordner() + ziel))
      throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ gibt es schon."_s.arg(u.ordner() + ziel));
}

/// Two rows of one record under one name could never be told apart again, and rows that wait for a file of the new name
/// would get this one.
void pruefe_Zeilen(Befehlssitzung& sitzung, const Vorhaben& u) {
  clsBildZuordnungen& store = sitzung.store();
  const bool nur_Schreibung = u.alt.gleich(u.neu);
  if (!nur_Schreibung && sitzung.lies(u.pfad, u.neu))
    throw Abbruch(Ausgang::Datei,
        u"Auf „%1“ zeigen schon Zuordnungen, obwohl die Datei fehlt."_s.arg(u.ordner() + u.neu.datei()));
  if (!sitzung.lies(u.pfad, u.alt))
    throw Abbruch(Ausgang::Teilweise, u"Auf „%1“ im Ordner „%2“ zeigt keine Zuordnung."_s.arg(u.alt.datei(), u.pfad));
  if (nur_Schreibung) return;
  // Each record is asked for by its keys, which may come from another program.
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    hochkomma::pruefe_Kennung(*store.AktBildObj);
  }
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    if (store.FKT_BilderVorhanden(store.Bild_Key1(), store.Bild_Key2(), store.Bild_Key3(), store.Bild_Key4(),
            u.neu.name, u.neu.ext, store.Bild_Typ1(), store.Bild_Typ2(), {}))
      throw Abbruch(Ausgang::Datei,
          u"Ein betroffener Vorgang hat schon ein Bild „%1“ aus einem anderen Ordner."_s.arg(u.neu.datei()));
  }
}

/// The folder holds a file of that very spelling.
bool liegt_da(const Vorhaben& u, const namen::Bilddatei& bild) {
  return FileSystemObject().GetFolder(u.ordner()).Files().contains(bild.datei());
}

/// All rows of the picture bear that very spelling.
bool zeilen_heissen(Befehlssitzung& sitzung, const Vorhaben& u, const namen::Bilddatei& bild, std::int32_t anzahl) {
  sitzung.lies(u.pfad, bild);
  bool alle = sitzung.store().AnzahlPos() == anzahl;
  for (std::int32_t i = 0; i < sitzung.store().AnzahlPos(); ++i) {
    sitzung.store().AktInd(i);
    alle = alle && sitzung.store().Bild_Bildname() == bild.name;
  }
  return alle;
}

void stelle_um(Befehlssitzung& sitzung, const Vorhaben& u, const namen::Bilddatei& von, const namen::Bilddatei& nach) {
  sitzung.store().Verarbeite_Dateinamen_Aenderung(u.wurzel, u.pfad, von.name, von.ext, nach.name);
}

/// Renames file, rows and text file. The store's result says nothing, so folder and table are asked.
bool fuehre_aus(Befehlssitzung& sitzung, const Vorhaben& u, std::int32_t zeilen, Namenswechsel* text) {
  stelle_um(sitzung, u, u.alt, u.neu);
  if (!liegt_da(u, u.neu) || !zeilen_heissen(sitzung, u, u.neu, zeilen)) return false;
  if (text) text->vollende();
  return true;
}

/// Gives the picture its old name back when its rows or its text file could not follow.
void nimm_zurueck(Befehlssitzung& sitzung, const Vorhaben& u, std::int32_t zeilen) {
  bool zeilen_neu = false;
  gelingt([&] { zeilen_neu = zeilen_heissen(sitzung, u, u.neu, zeilen); });
  gelingt([&] {
    if (zeilen_neu)
      stelle_um(sitzung, u, u.neu, u.alt);
    else if (liegt_da(u, u.neu))
      sitzung.store().Fkt_FileReName(u.ordner() + u.neu.datei(), u.ordner() + u.alt.datei());
  });
  bool wie_vorher = false;
  gelingt([&] { wie_vorher = liegt_da(u, u.alt) && (!zeilen_neu || zeilen_heissen(sitzung, u, u.alt, zeilen)); });
  if (!wie_vorher)
    ausgabe::meldung(
        u"Achtung: Datei und Zuordnungen stimmen nicht mehr überein; die Datei „%1“ sollte „%2“ heißen."_s.arg(
            u.neu.datei(), u.alt.datei()));
}

Ausgang benenne_um(const Aufruf& aufruf) {
  Vorhaben u{{}, namen::ordner(aufruf.noetig(u"ordner"_s)), namen::zerlege_geprueft(aufruf.argumente().at(0)), {}};
  u.neu = neuer_Name(aufruf.argumente().at(1), u.alt);
  u.wurzel = bildwurzel(aufruf);
  Befehlssitzung sitzung(aufruf);
  pruefe_Dateien(u);
  pruefe_Zeilen(sitzung, u);
  const std::int32_t zeilen = sitzung.store().AnzahlPos();
  std::optional<Namenswechsel> text;
  if (FileSystemObject().FileExists(u.ordner() + u.alt.textdatei()))
    text.emplace(u.ordner() + u.alt.textdatei(), u.ordner() + u.neu.textdatei());
  bool gelungen = false;
  if (!gelingt([&] { gelungen = fuehre_aus(sitzung, u, zeilen, text ? &*text : nullptr); }) || !gelungen) {
    // Where the file kept its name the folder refused; where it had the new one, the table or the text file did.
    const bool datei_neu = liegt_da(u, u.neu);
    bool zeilen_neu = false;
    gelingt([&] { zeilen_neu = zeilen_heissen(sitzung, u, u.neu, zeilen); });
    nimm_zurueck(sitzung, u, zeilen);
    if (text) gelingt([&] { text->nimm_zurueck(); });
    if (!datei_neu) throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ ist nicht umzubenennen."_s.arg(u.alt.datei()));
    if (!zeilen_neu)
      throw Abbruch(Ausgang::Datenbank,
          u"„%1“ ist nicht umbenannt: Die Tabelle nahm den neuen Namen nicht an."_s.arg(u.alt.datei()));
    throw Abbruch(
        Ausgang::Datei, u"„%1“ ist nicht umbenannt: Die Textdatei ließ sich nicht umbenennen."_s.arg(u.alt.datei()));
  }
  ausgabe::zeile(u.neu.datei());
  return Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::umbenennen() {
  return {u"umbenennen"_s, u"benennt ein Bild der Ablage um, mit Textdatei und allen Zuordnungen"_s,
      u"BILD NEUER_NAME"_s,
      uR"(Benennt die Bilddatei (NAME.ENDUNG) um, ihre Textdatei ebenso, und ändert alle Zuordnungen, die
auf sie zeigen, gleich zu welchem Vorgang sie gehören. Die Endung bleibt. Ein Name, den es in
dem Ordner schon gibt, wird abgelehnt.)"_s,
      {{u"ordner"_s, u"PFAD"_s, u"Ordner des Bildes unter der Bildablage, wie „lesen“ ihn zeigt"_s},
          befehlszeile::bilder_Option(), befehlszeile::verbindung_Option()},
      2, 2, benenne_um};
}
