#include "component/weg/Satz.h"

#include <algorithm>

#include "store/Felder.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QChar Trenner = u'\x1f';

bool gleiche_Druckangaben(const clsBilderSpeicher& a, const clsBilderSpeicher& b) {
  const auto& alle = felder::Kennzeichen;
  return std::all_of(alle.begin(), alle.end(), [&](const auto feld) { return a.*feld == b.*feld; });
}

}  // namespace

namespace weg {

Stand wie_gespeichert(const clsBilderSpeicher& satz) {
  Stand stand{satz, satz.Bild_SortIndex};
  clsBilderSpeicher& s = stand.satz;
  for (const felder::Feld& feld : felder::Kennung) s.*feld.Wert = felder::oder_Strich(s.*feld.Wert);
  for (const felder::Feld& feld : felder::Texte)
    if (feld.besonderes != felder::Besonderheit::Verdoppelt) s.*feld.Wert = feld.gekuerzt(s);
  return stand;
}

QString kennung(const clsBilderSpeicher& satz) {
  QStringList texte;
  for (const felder::Feld& feld : felder::Kennung)
    texte.append(felder::vergleichsform(felder::oder_Strich(satz.*feld.Wert)));
  return texte.join(Trenner);
}

bool hat_ganze_Kennung(const clsBilderSpeicher& satz) {
  const auto alle = felder::Kennung;
  return std::none_of(alle.begin(), alle.end(), [&](const auto& feld) { return (satz.*feld.Wert).isEmpty(); });
}

QStringList abweichungen(const Stand& soll, const Stand& ist) {
  using felder::ohne_Fuellung;
  using felder::vergleichsform;
  QStringList worte;
  if (ohne_Fuellung(soll.satz.Bild_Bildname) != ohne_Fuellung(ist.satz.Bild_Bildname)) worte.append(u"Name"_s);
  if (vergleichsform(soll.satz.Bild_Pfad) != vergleichsform(ist.satz.Bild_Pfad)) worte.append(u"Ordner"_s);
  if (ohne_Fuellung(soll.satz.Bild_Beschreibung) != ohne_Fuellung(ist.satz.Bild_Beschreibung))
    worte.append(u"Drucktext"_s);
  if (!gleiche_Druckangaben(soll.satz, ist.satz)) worte.append(u"Druckangaben"_s);
  if (soll.platz != ist.platz) worte.append(u"Reihenfolge"_s);
  return worte;
}

Zuordnungsweg::Vorgang mit_Strichen(Zuordnungsweg::Vorgang vorgang) {
  for (QString* teil : teile(vorgang)) *teil = felder::oder_Strich(*teil);
  return vorgang;
}

}  // namespace weg
