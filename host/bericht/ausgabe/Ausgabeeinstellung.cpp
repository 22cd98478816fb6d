#include "host/bericht/ausgabe/Ausgabeeinstellung.h"

#include "host/betrieb/Einstellungsdatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Texte = u"Texte"_s;
const QString Gekennzeichnete = u"nur_gekennzeichnete"_s;
const QString Zip = u"als_Zip"_s;
const QString Ordner = u"Ordner"_s;

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Ausgabe"_s) {}
};

}  // namespace

Ausgabeeinstellung Ausgabeeinstellung::gemerkte() {
  const Datei datei;
  Ausgabeeinstellung alte;
  alte.wahl.texte = datei.value(Texte, false).toBool();
  alte.wahl.nur_gekennzeichnete = datei.value(Gekennzeichnete, false).toBool();
  alte.als_Zip = datei.value(Zip, false).toBool();
  alte.ordner = datei.value(Ordner).toString();
  return alte;
}

void Ausgabeeinstellung::merke() const {
  Datei datei;
  datei.setValue(Texte, wahl.texte);
  datei.setValue(Gekennzeichnete, wahl.nur_gekennzeichnete);
  datei.setValue(Zip, als_Zip);
  datei.setValue(Ordner, ordner);
}
