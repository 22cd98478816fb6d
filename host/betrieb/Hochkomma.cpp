#include "host/betrieb/Hochkomma.h"

#include "host/betrieb/Ausgang.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void pruefe(const clsBilderSpeicher& satz, std::span<const felder::Feld> liste) {
  for (const felder::Feld& feld : liste) {
    const QString& wert = satz.*feld.Wert;
    if (feld.besonderes == felder::Besonderheit::Verdoppelt || !wert.contains(u'\'')) continue;
    throw Abbruch(Ausgang::Datenbank,
        u"Die Zuordnung von „%1“ enthält ein Hochkomma (%2: „%3“); damit ist keine Anweisung an die Datenbank möglich."_s
            .arg(Bilddatei::von(satz).datei(), feld.Name, wert));
  }
}

}  // namespace

void hochkomma::pruefe_Kennung(const clsBilderSpeicher& satz) {
  pruefe(satz, felder::Kennung);
}

void hochkomma::pruefe_Zeile(const clsBilderSpeicher& satz) {
  pruefe(satz, felder::Texte);
}

void hochkomma::pruefe_Zeilen(clsBildZuordnungen& store) {
  for (std::int32_t i = store.AnzahlPos() - 1; i >= 0; --i) {
    store.AktInd(i);
    pruefe_Zeile(*store.AktBildObj);
  }
}
