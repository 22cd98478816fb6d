#include "host/betrieb/Hochkomma.h"

#include <utility>

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Feld = std::pair<const char16_t*, QString clsBilderSpeicher::*>;

constexpr Feld Kennung[]{{u"Key1", &clsBilderSpeicher::Bild_Key1}, {u"Key2", &clsBilderSpeicher::Bild_Key2},
    {u"Key3", &clsBilderSpeicher::Bild_Key3}, {u"Key4", &clsBilderSpeicher::Bild_Key4},
    {u"Bildname", &clsBilderSpeicher::Bild_Bildname}, {u"BildExt", &clsBilderSpeicher::Bild_BildExt},
    {u"Typ1", &clsBilderSpeicher::Bild_Typ1}, {u"Typ2", &clsBilderSpeicher::Bild_Typ2}};
constexpr Feld Inhalt[]{{u"BildPfad", &clsBilderSpeicher::Bild_Pfad},
    {u"GrafikAnbNr", &clsBilderSpeicher::Bild_GrafikAnbNr},
    {u"Grafik_Ursprung", &clsBilderSpeicher::Bild_Grafik_Ursprung}};

template <class Felder>
void pruefe(const clsBilderSpeicher& satz, const Felder& felder) {
  for (const auto& [spalte, feld] : felder) {
    if (!(satz.*feld).contains(u'\'')) continue;
    throw Abbruch(Ausgang::Datenbank,
        u"Die Zuordnung von „%1“ enthält ein Hochkomma (%2: „%3“); damit ist keine Anweisung an die Datenbank möglich."_s
            .arg(satz.Bild_Bildname + u'.' + satz.Bild_BildExt, QString::fromUtf16(spalte), satz.*feld));
  }
}

}  // namespace

void hochkomma::pruefe_Kennung(const clsBilderSpeicher& satz) {
  pruefe(satz, Kennung);
}

void hochkomma::pruefe_Zeile(const clsBilderSpeicher& satz) {
  pruefe(satz, Kennung);
  pruefe(satz, Inhalt);
}

void hochkomma::pruefe_Zeilen(clsBildZuordnungen& store) {
  for (std::int32_t i = store.AnzahlPos() - 1; i >= 0; --i) {
    store.AktInd(i);
    pruefe_Zeile(*store.AktBildObj);
  }
}
