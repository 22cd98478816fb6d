#include "host/betrieb/vorgaenge/Vorgangsspalten.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

namespace vorgangsspalten {
namespace {

constexpr int Kurz = 50;
constexpr int Lang = 250;

QString vereinfacht(const QString& name) {
  QString rest;
  for (const QChar zeichen : name.toLower())
    if (zeichen.isLetterOrNumber()) rest += zeichen;
  return rest;
}

/// How other programs head the column.
QStringList andere_Namen(Vorgangsspalte spalte) {
  switch (spalte) {
    case Vorgangsspalte::Typ1:
      return {u"Typ"_s, u"Vorgangsart"_s};
    case Vorgangsspalte::Key1:
      return {u"Belegart"_s, u"Artikelnummer"_s, u"Artikel-Nr."_s, u"Referenz1"_s};
    case Vorgangsspalte::Key2:
      return {u"Belegnummer"_s, u"Beleg-Nr."_s, u"Referenz2"_s};
    case Vorgangsspalte::Key3:
      return {u"MontageNr"_s, u"Montagenummer"_s, u"Referenz3"_s};
    case Vorgangsspalte::Kundennummer:
      return {u"Kunden-Nr."_s, u"Kdnr"_s, u"Kunde Nr"_s};
    case Vorgangsspalte::Kundenname:
      return {u"Kunde"_s, u"Name"_s, u"Firma"_s};
    case Vorgangsspalte::Ort:
      return {u"Kundenort"_s};
    case Vorgangsspalte::Projektnummer:
      return {u"Projekt"_s, u"Projekt-Nr."_s};
    case Vorgangsspalte::Text:
      return {u"Betreff"_s, u"Bezeichnung"_s, u"Beschreibung"_s, u"Aufgabe"_s};
    case Vorgangsspalte::Ordner:
      return {u"Bildordner"_s, u"Bildpfad"_s};
    case Vorgangsspalte::Stand:
      return {u"Datum"_s, u"Geändert"_s, u"Änderungsdatum"_s};
  }
  return {};
}

QHash<QString, Vorgangsspalte> alle_Namen() {
  QHash<QString, Vorgangsspalte> namen;
  for (const Vorgangsspalte spalte : alle()) {
    namen.insert(vereinfacht(eigenschaft(spalte).name), spalte);
    for (const QString& name : andere_Namen(spalte)) namen.insert(vereinfacht(name), spalte);
  }
  return namen;
}

}  // namespace

const Eigenschaft& eigenschaft(Vorgangsspalte spalte) {
  static const std::array<Eigenschaft, Vorgangsspaltenzahl> Alle{{{u"Typ1"_s, Kurz, false}, {u"Key1"_s, Kurz, false},
      {u"Key2"_s, Kurz, false}, {u"Key3"_s, Kurz, false}, {u"Kundennummer"_s, Kurz, true},
      {u"Kundenname"_s, Lang, true}, {u"Ort"_s, Lang, true}, {u"Projektnummer"_s, Kurz, true}, {u"Text"_s, Lang, false},
      {u"Ordner"_s, Lang, true}, {u"Stand"_s, 0, true}}};
  return Alle.at(platz(spalte));
}

const QList<Vorgangsspalte>& alle() {
  static const QList<Vorgangsspalte> Alle{Vorgangsspalte::Typ1, Vorgangsspalte::Key1, Vorgangsspalte::Key2,
      Vorgangsspalte::Key3, Vorgangsspalte::Kundennummer, Vorgangsspalte::Kundenname, Vorgangsspalte::Ort,
      Vorgangsspalte::Projektnummer, Vorgangsspalte::Text, Vorgangsspalte::Ordner, Vorgangsspalte::Stand};
  return Alle;
}

std::optional<Vorgangsspalte> nach_Namen(const QString& kopf) {
  static const QHash<QString, Vorgangsspalte> Namen = alle_Namen();
  const auto treffer = Namen.find(vereinfacht(kopf));
  return treffer == Namen.end() ? std::nullopt : std::optional(*treffer);
}

}  // namespace vorgangsspalten
