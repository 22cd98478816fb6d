#include "component/weg/Pruefung.h"

#include <QHash>
#include <algorithm>

namespace weg {
namespace {

using Lage = Befund::Lage;

/// The wishes and the rows of one identity.
struct Gruppe {
  std::vector<std::size_t> ziele;
  std::vector<std::size_t> zu_entfernende;
  std::vector<const Stand*> da;
};

/// Gives each wanted row the found one that equals it.
std::vector<std::size_t> ordne_gleiche_zu(
    const Gruppe& gruppe, const std::vector<Wunsch>& wuensche, std::vector<const Stand*>& uebrige) {
  std::vector<std::size_t> ohne;
  for (const std::size_t ziel : gruppe.ziele) {
    const auto gleich = std::find_if(uebrige.begin(), uebrige.end(),
        [&](const Stand* ist) { return abweichungen(wuensche[ziel].soll, *ist).isEmpty(); });
    if (gleich == uebrige.end())
      ohne.push_back(ziel);
    else
      uebrige.erase(gleich);
  }
  return ohne;
}

void pruefe_Gruppe(const Gruppe& gruppe, const std::vector<Wunsch>& wuensche, std::vector<Befund>& befunde) {
  std::vector<const Stand*> uebrige = gruppe.da;
  const std::vector<std::size_t> ohne = ordne_gleiche_zu(gruppe, wuensche, uebrige);
  for (const std::size_t ziel : ohne) {
    befunde[ziel].lage = uebrige.empty() ? Lage::Fehlt : Lage::Anders;
    if (uebrige.empty()) continue;
    befunde[ziel].abweichungen = abweichungen(wuensche[ziel].soll, *uebrige.front());
    uebrige.erase(uebrige.begin());
  }
  for (const std::size_t ziel : gruppe.zu_entfernende)
    if (!uebrige.empty()) befunde[ziel].lage = Lage::Steht_noch;
  // One row too many, and one that this run wrote: its statement ran twice. Anything else is somebody's own.
  if (!ohne.empty() || uebrige.size() != 1) return;
  std::vector<std::size_t> neue;
  for (const std::size_t ziel : gruppe.ziele)
    if (wuensche[ziel].art == Wunsch::Art::Einfuegen) neue.push_back(ziel);
  if (neue.size() == 1 && abweichungen(wuensche[neue.front()].soll, *uebrige.front()).isEmpty())
    befunde[neue.front()].lage = Lage::Doppelt;
}

}  // namespace

std::vector<Befund> pruefe(const std::vector<Wunsch>& wuensche, const std::vector<Stand>& gefunden) {
  QHash<QString, Gruppe> gruppen;
  for (std::size_t i = 0; i < wuensche.size(); ++i) {
    Gruppe& gruppe = gruppen[kennung(wuensche[i].soll.satz)];
    (wuensche[i].art == Wunsch::Art::Entfernen ? gruppe.zu_entfernende : gruppe.ziele).push_back(i);
  }
  for (const Stand& stand : gefunden)
    if (const auto gruppe = gruppen.find(kennung(stand.satz)); gruppe != gruppen.end()) gruppe->da.push_back(&stand);
  std::vector<Befund> befunde(wuensche.size());
  for (const Gruppe& gruppe : std::as_const(gruppen)) pruefe_Gruppe(gruppe, wuensche, befunde);
  return befunde;
}

}  // namespace weg
