#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "store/Bildbaum.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"
#include "store/clsBildZuordnungen.h"

// Keeping the picture tree and the table in step. Nothing here is told to the central report.

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype Laenge_Ext = 3;
constexpr qsizetype Laenge_Text_Ende = 4;

/// The picture that a text file belongs to, by the rule that extensions have three characters. Raises 5 when the name
/// is too short for that.
QString bild_zur_Textdatei(const QString& name) {
  const qsizetype vorn = name.size() - Laenge_Text_Ende - Laenge_Ext;
  if (vorn < 0) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  return name.left(vorn) + u'.' + name.mid(vorn, Laenge_Ext);
}

bool ohne_Zeile(const std::shared_ptr<adodb::Recordset>& antwort) {
  if (!antwort) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return antwort->Eof();
}

}  // namespace

Variant clsBildZuordnungen::FKT_Loesche_Bild_Ohne_Zuordnung(const QString& pAbPfad, const QString& pBasisBildPfad) {
  Bildbaum baum;
  return raeume_auf(pAbPfad, pBasisBildPfad, baum);
}

Aufraeumliste clsBildZuordnungen::FKT_Liste_Bild_Ohne_Zuordnung(
    const QString& pAbPfad, const QString& pBasisBildPfad, const std::function<bool(std::size_t)>& weiter) {
  Gedachter_Bildbaum baum(weiter);
  const Variant ergebnis = raeume_auf(pAbPfad, pBasisBildPfad, baum);
  return {ergebnis, baum.Posten()};
}

Variant clsBildZuordnungen::raeume_auf(const QString& pAbPfad, const QString& pBasisBildPfad, Bildbaum& baum) {
  return fehler::still_enden([&]() -> Variant {
    for (const QString& name : FileSystemObject().GetFolder(pAbPfad).SubFolders())
      if (!ist_True(raeume_auf(pAbPfad + u'\\' + name, pBasisBildPfad, baum))) return false;
    Loesche_Ordner_Ohne_Zuordnung(pAbPfad, pBasisBildPfad, baum);
    return !baum.angehalten();
  });
}

void clsBildZuordnungen::Loesche_Ordner_Ohne_Zuordnung(
    const QString& pPfad, const QString& pBasisBildPfad, Bildbaum& baum) {
  fehler::Weiter weiter;
  // A picture whose only content is left under a hidden name has its own again before anybody looks for it.
  weiter([&] { dateien::raeume_Reste(pPfad); });
  weiter([&] { loesche_Bilder_ohne_Zuordnung(pPfad, pBasisBildPfad, baum); });
  weiter([&] { loesche_Texte_ohne_Bild(pPfad, baum); });
  bool leer = false;
  weiter([&] { leer = baum.ist_leer(pPfad); });
  if (leer) weiter([&] { baum.DeleteFolder(pPfad); });
}

void clsBildZuordnungen::loesche_Bilder_ohne_Zuordnung(
    const QString& pPfad, const QString& pBasisBildPfad, Bildbaum& baum) {
  QString relativ = pPfad;
  relativ.remove(pBasisBildPfad + u'\\');
  fehler::Weiter weiter;
  std::shared_ptr<adodb::Recordset> antwort;
  for (const QString& name : baum.Files(pPfad)) {
    if (!baum.naechste_Datei()) break;
    const QStringList stuecke = name.split(u'.');
    if (Bilddatei::ist_Textdatei(name) || stuecke.size() < 2) continue;
    // A question that fails leaves the answer to the file before in force.
    const bool gefragt = weiter([&] {
      antwort = lesende_Verbindung().Execute(u"select Top 1 Key1 from "_s + u"Bild_Zuordnungen where Bildname = '"_s +
          stuecke[0] + u"' and "_s + u"BildExt = '"_s + stuecke[1] + u"' and Bildpfad = '"_s + relativ + u"'"_s);
    });
    // Where there never was an answer the test itself fails, and the deletion behind it runs. That is known and kept.
    bool loeschen = true;
    weiter([&] { loeschen = ohne_Zeile(antwort); });
    using Grund = Aufraeumposten::Grund;
    if (loeschen)
      weiter([&] { baum.DeleteFile(pPfad, name, gefragt ? Grund::OhneZuordnung : Grund::AbfrageGescheitert); });
  }
  if (antwort) weiter([&] { antwort->Close(); });
}

void clsBildZuordnungen::loesche_Texte_ohne_Bild(const QString& pPfad, Bildbaum& baum) {
  fehler::Weiter weiter;
  for (const QString& name : baum.Files(pPfad)) {
    if (baum.angehalten()) return;
    if (!Bilddatei::ist_Textdatei(name)) continue;
    // A name too short to give a picture fails in the test, and the deletion behind it runs.
    bool loeschen = true;
    weiter([&] { loeschen = !baum.FileExists(pPfad, bild_zur_Textdatei(name)); });
    if (loeschen) weiter([&] { baum.DeleteFile(pPfad, name, Aufraeumposten::Grund::TextOhneBild); });
  }
}

bool clsBildZuordnungen::Verarbeite_Dateinamen_Aenderung(
    const QString& pRoot, const QString& pPfad, const QString& pOldName, const QString& pExt, const QString& pNewName) {
  Umbenennung ergebnis = Sammlungszugriff::benenne_um(*this, pRoot, pPfad, pOldName, pExt, pNewName);
  if (ergebnis.datei) fehler::still_enden([&] { ergebnis.wechsel.vollende(); });
  // The result was never set and so tells nothing, after a success too.
  return false;
}
