#include "component/weg/Aufrichten.h"

#include <QStringList>
#include <algorithm>

#include "component/weg/Ablage.h"
#include "component/weg/Meldung.h"
#include "imaging/Dateiaufrichtung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "store/Bilddatei.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg {
namespace {

using Bild = Zuordnungsweg::Bild;

/// Two names of one file, as hard links have them.
bool ist_dieselbe(const QString& datei, const QString& andere) {
  return fehler::still_enden([&] {
    const dateien::Kennung a = dateien::kennung(datei);
    const dateien::Kennung b = dateien::kennung(andere);
    return a.geraet == b.geraet && a.inode == b.inode;
  });
}

/// Exactly one row of the whole table points to the file. False where the table can't be asked.
bool hat_nur_eine_Zeile(const Verbindungen& verbindungen, const clsBilderSpeicher& satz) {
  const Berichtsfang fang;
  clsBildZuordnungen zeilen;
  zeilen.Init(verbindungen.zeichenfolge(), verbindungen.lesende(), {});
  zeilen.FKT_LeseBilder(
      {}, {}, {}, {}, satz.Bild_Bildname, satz.Bild_BildExt, {}, {}, u"BildPfad = '%1'"_s.arg(satz.Bild_Pfad));
  return fang.leer() && zeilen.AnzahlPos() == 1;
}

/// The stored picture that a row of the dialog became, or none.
Bild* gespeichertes(Zuordnungsweg::Ergebnis& ergebnis, const clsBilderSpeicher& satz) {
  const QString name = Bilddatei::von(satz).datei();
  const auto bild = std::find_if(ergebnis.bilder.begin(), ergebnis.bilder.end(),
      [&](const Bild& b) { return b.name == name && b.verbleib == Zuordnungsweg::Verbleib::Neu; });
  return bild == ergebnis.bilder.end() ? nullptr : &*bild;
}

void sage(Bild& bild, const QString& grund) {
  if (!bild.hinweis.isEmpty()) bild.hinweis.append(u' ');
  bild.hinweis.append(u"Das Bild steht nicht aufrecht: "_s + grund);
}

}  // namespace

void richte_Kopien_auf(clsBildZuordnungen& bilder, const Verbindungen& verbindungen, const Auftrag& auftrag,
    Zuordnungsweg::Ergebnis& ergebnis) {
  const auto& spur = Sammlungszugriff::spur(bilder);
  if (!spur) return;
  QStringList saetze;
  for (const Bildspur& eine : spur->bilder) {
    // A copy that only succeeded now has its record beside the dialog's.
    const auto& eintrag = eine.satz ? eine.satz : eine.ohne_Datei;
    if (!eintrag || eine.quelle.isEmpty()) continue;
    const clsBilderSpeicher& satz = *eintrag;
    Bild* const bild = gespeichertes(ergebnis, satz);
    const QString datei = Bilddatei::von(satz, auftrag.wurzel).pfad();
    if (!bild || ist_dieselbe(datei, eine.quelle) || !hat_nur_eine_Zeile(verbindungen, satz)) continue;
    const aufrichtung::Ergebnis gedreht = aufrichtung::richte_Datei_auf(datei, eine.quelle);
    if (gedreht.befund != aufrichtung::Befund::Gescheitert) continue;
    sage(*bild, gedreht.grund);
    saetze.append(u"„%1“: "_s.arg(bild->name) + gedreht.grund);
  }
  if (!saetze.isEmpty())
    meldung::warne(
        u"Zugeordnet, aber nicht aufrecht gestellt, weil das Drehen scheiterte:\r\n\r\n"_s + saetze.join(u"\r\n"_s));
}

}  // namespace weg
