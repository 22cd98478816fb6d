#include "host/betrieb/vorgang/Wurzelgrenze.h"

#include "host/betrieb/Ausgang.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void pruefe(const clsBilderSpeicher& satz) {
  if (Bilddatei::liegt_unter_Wurzel(satz)) return;
  throw Abbruch(Ausgang::Datei,
      u"Die Zuordnung von „%1“ nennt den Ordner „%2“, der nicht unter der Bildablage liegt; dort wird nichts geöffnet."_s
          .arg(Bilddatei::von(satz).datei(), satz.Bild_Pfad));
}

}  // namespace

void wurzelgrenze::pruefe_Zeilen(clsBildZuordnungen& store) {
  for (std::int32_t i = store.AnzahlPos() - 1; i >= 0; --i) {
    store.AktInd(i);
    pruefe(*store.AktBildObj);
  }
}

void wurzelgrenze::pruefe_Bild(adodb::Connection& verbindung, const QString& name, const QString& ext) {
  const auto zeilen = verbindung.Execute(
      u"SELECT DISTINCT BildPfad FROM Bild_Zuordnungen WHERE Bildname = ? AND BildExt = ?"_s, {name, ext});
  clsBilderSpeicher satz;
  satz.Bild_Bildname = name;
  satz.Bild_BildExt = ext;
  for (; !zeilen->Eof(); zeilen->MoveNext()) {
    satz.Bild_Pfad = zeilen->Text(0);
    pruefe(satz);
  }
}
