#include "host/betrieb/vorgaenge/Spaltenwahl.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace spaltenwahl {
namespace {

/// A single known word may be a value as well.
constexpr qsizetype Noetige_Namen = 2;

qsizetype anzahl_bekannter(const Spaltenwahl& wahl) {
  return std::count_if(wahl.spalten.begin(), wahl.spalten.end(), [](const auto& spalte) { return spalte.has_value(); });
}

}  // namespace

Spaltenwahl nach_Platz() {
  Spaltenwahl wahl;
  for (const Vorgangsspalte spalte : vorgangsspalten::alle()) wahl.spalten.append(spalte);
  return wahl;
}

Spaltenwahl nach_Kopfzeile(const QList<Listenwert>& kopf) {
  Spaltenwahl wahl;
  wahl.kopfzeile = true;
  for (const Listenwert& name : kopf) {
    const auto spalte = vorgangsspalten::nach_Namen(name.text);
    wahl.spalten.append(spalte && !wahl.spalten.contains(spalte) ? spalte : std::nullopt);
  }
  return wahl;
}

Spaltenwahl vorschlag(Listenleser& liste) {
  if (!liste.feste_Namen().isEmpty()) return nach_Platz();
  liste.von_vorn();
  Listenzeile erste;
  const bool lesbar = liste.naechste(erste) && erste.fehler.isEmpty();
  liste.von_vorn();
  if (!lesbar) return nach_Platz();
  const Spaltenwahl wahl = nach_Kopfzeile(erste.werte);
  return anzahl_bekannter(wahl) >= std::min<qsizetype>(Noetige_Namen, erste.werte.size()) ? wahl : nach_Platz();
}

QString pruefe(const Spaltenwahl& wahl) {
  for (const Vorgangsspalte spalte : vorgangsspalten::alle())
    if (wahl.spalten.count(spalte) > 1)
      return u"Die Spalte %1 ist mehrmals gewählt"_s.arg(vorgangsspalten::eigenschaft(spalte).name);
  if (!wahl.spalten.contains(Vorgangsspalte::Key1)) return u"Es fehlt die Spalte Key1, der erste Teil der Nummer"_s;
  if (!wahl.spalten.contains(Vorgangsspalte::Typ1) && wahl.typ1.isEmpty())
    return u"Es fehlt die Spalte Typ1, die Art der Vorgänge"_s;
  return {};
}

}  // namespace spaltenwahl
