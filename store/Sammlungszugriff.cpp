#include "store/Sammlungszugriff.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "platform/basic/Fehlerbehandlung.h"
#include "store/Bilddatei.h"
#include "store/Bildereignis.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void melde_Umbenennung(const Bilddatei& alt, const Bilddatei& neu, bool gelungen) {
  bildereignis::melde({Bildereignis::Tat::Umbenennen, gelungen, {}, {}, {}, {}, {}, {}, alt.pfad(), neu.pfad()});
}

}  // namespace

void Sammlungszugriff::ordne(clsBildZuordnungen& sammlung, const std::vector<const clsBilderSpeicher*>& folge) {
  std::unordered_map<const clsBilderSpeicher*, std::size_t> rang;
  for (std::size_t i = 0; i < folge.size(); ++i) rang.try_emplace(folge[i], i);
  const auto rang_von = [&](const clsBildZuordnungen::Zeile& zeile) {
    const auto stelle = rang.find(zeile.Zeile_Objekt.get());
    return stelle == rang.end() ? folge.size() : stelle->second;
  };
  auto& zeilen = sammlung.zeilen();
  std::stable_sort(
      zeilen.begin(), zeilen.end(), [&](const auto& a, const auto& b) { return rang_von(a) < rang_von(b); });
  sammlung.AktInd(-1);
}

void Sammlungszugriff::haenge_an(clsBildZuordnungen& sammlung, std::shared_ptr<clsBilderSpeicher> satz) {
  sammlung.AktInd(sammlung.haenge_an(std::move(satz)));
}

void Sammlungszugriff::entnimm(clsBildZuordnungen& sammlung, const clsBilderSpeicher* satz) {
  const std::int32_t nummer = platz(sammlung, satz);
  if (nummer < 0) return;
  auto& zeilen = sammlung.zeilen();
  zeilen.erase(std::next(zeilen.begin(), nummer));
  // A table without any row counts as one blank row.
  if (zeilen.empty()) sammlung.haenge_Zeile_an();
  sammlung.AktInd(-1);
}

std::int32_t Sammlungszugriff::platz(const clsBildZuordnungen& sammlung, const clsBilderSpeicher* satz) {
  if (!satz) return -1;
  const auto& zeilen = sammlung.zeilen();
  const auto stelle =
      std::find_if(zeilen.begin(), zeilen.end(), [&](const auto& z) { return z.Zeile_Objekt.get() == satz; });
  return stelle == zeilen.end() ? -1 : static_cast<std::int32_t>(std::distance(zeilen.begin(), stelle));
}

std::vector<std::int64_t> Sammlungszugriff::gespeicherte_Reihenfolge(const clsBildZuordnungen& sammlung) {
  std::vector<std::int64_t> folge;
  for (std::int32_t i = 0; i < sammlung.AnzahlPos(); ++i) {
    const Variant& wert = sammlung.zeilen()[static_cast<std::size_t>(i)].Zeile_SortIndex;
    folge.push_back(mit_Leertext(wert).toLongLong());
  }
  return folge;
}

std::shared_ptr<Dialogspur>& Sammlungszugriff::spur(clsBildZuordnungen& sammlung) {
  return sammlung.mSpur;
}

Umbenennung Sammlungszugriff::benenne_um(clsBildZuordnungen& sammlung, const QString& wurzel, const QString& pfad,
    const QString& alter_Name, const QString& endung, const QString& neuer_Name) {
  const Bilddatei alt{alter_Name, endung, wurzel + u'\\' + pfad};
  Umbenennung ergebnis(Namenswechsel(alt.pfad(), Bilddatei{neuer_Name, endung, alt.ordner}.pfad()));
  const auto sage = [&](const Laufzeitfehler& f) { ergebnis.grund = f.Beschreibung(); };
  const auto gelingt = [&](auto&& schritt) {
    return fehler::melden_und_enden(sage, [&] {
      schritt();
      return true;
    });
  };
  ergebnis.datei = gelingt([&] { ergebnis.wechsel.benenne(); });
  ergebnis.tabelle = ergebnis.datei && gelingt([&] {
    sammlung.lesende_Verbindung().Execute(
        u"Update Bild_Zuordnungen SET Bildname = '%1' WHERE Bildname = '%2' and BildExt = '%3' and BildPfad = '%4'"_s
            .arg(neuer_Name, alter_Name, endung, pfad));
  });
  melde_Umbenennung({alter_Name, endung, pfad}, {neuer_Name, endung, pfad}, ergebnis.tabelle);
  return ergebnis;
}

bool Sammlungszugriff::folge_der_Datei(
    clsBildZuordnungen& sammlung, const Fruehere& alt, const QString& endung, const Fruehere& neu) {
  const bool gelungen = fehler::still_enden([&] {
    sammlung.lesende_Verbindung().Execute(
        u"Update Bild_Zuordnungen SET Bildname = '%1', BildPfad = '%2' WHERE Bildname = '%3' and BildExt = '%4' "
        "and BildPfad = '%5'"_s.arg(neu.name, neu.pfad, alt.name, endung, alt.pfad));
    return true;
  });
  melde_Umbenennung({alt.name, endung, alt.pfad}, {neu.name, endung, neu.pfad}, gelungen);
  return gelungen;
}
