#include "host/betrieb/aufnahme/Bildzeilen.h"

#include <algorithm>
#include <limits>

#include "host/betrieb/Ausgang.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace bildzeilen {
Vergebene::Vergebene(clsBildZuordnungen& store, const QString& ordner) {
  const FileSystemObject dateien;
  if (dateien.FolderExists(ordner))
    for (const QString& datei : dateien.GetFolder(ordner).Files()) namen_.insert(text::UCase(datei));
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    namen_.insert(text::UCase(Bilddatei::von(*store.AktBildObj).datei()));
  }
}

namen::Bilddatei Vergebene::freier_Name(const namen::Bilddatei& alt, const QString& stempel) {
  for (int nummer = 1;; ++nummer) {
    const namen::Bilddatei neu = alt.gestempelt(stempel, nummer);
    const QString datei = text::UCase(neu.datei());
    const QString textdatei = text::UCase(neu.textdatei());
    if (namen_.contains(datei) || namen_.contains(textdatei)) continue;
    namen_ += {datei, textdatei};
    return neu;
  }
}

void mache_Ordner(clsBildZuordnungen& store, const QString& ordner) {
  store.Fkt_MakePath(ordner);
  if (!store.Fkt_DirExists(ordner))
    throw Abbruch(Ausgang::Datei, u"Der Ordner „%1“ ist nicht anzulegen. Nichts ist zugeordnet."_s.arg(ordner));
}

std::int64_t naechster_Platz(clsBildZuordnungen& store, std::int64_t anzahl) {
  std::int64_t platz = 0;
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    platz = std::max<std::int64_t>(platz, store.Bild_SortIndex() + 1);
  }
  if (platz + anzahl > std::numeric_limits<std::int16_t>::max())
    throw Abbruch(Ausgang::Datenbank,
        u"Die Reihenfolge des Vorgangs reicht nicht weiter; „aendern --sortierung“ zählt sie neu."_s);
  return platz;
}

void lege_an(clsBildZuordnungen& store, const Datensatz& satz, const namen::Bilddatei& alt, const namen::Bilddatei& neu,
    const QString& pfad, std::int64_t platz) {
  if (!store.FKT_NeuesBild(satz.key1, satz.key2, satz.key3, satz.key4, neu.name, neu.ext, satz.typ1, satz.typ2))
    throw Abbruch(Ausgang::Datenbank, u"„%1“ ist nicht zuzuordnen."_s.arg(alt.datei()));
  store.Bild_Pfad(pfad);
  store.Bild_SortIndex(static_cast<int>(platz));
}

}  // namespace bildzeilen
