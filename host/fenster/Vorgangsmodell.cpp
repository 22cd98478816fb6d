#include "host/fenster/Vorgangsmodell.h"

#include <QFont>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// The internal number of an index: 0 for a kind, the kind's place and 1 for a record of it.
constexpr quintptr Kopf = 0;

QVariant daten_des_Vorgangs(const Vorgang& vorgang, int spalte, int rolle) {
  if (rolle == Qt::TextAlignmentRole && spalte == Vorgangsmodell::Bilder)
    return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
  if (rolle == Qt::ToolTipRole)
    return u"%1\n%2"_s.arg(vorgang::infozeile(vorgang), vorgang::anzahl_Bilder(vorgang.bilder));
  if (rolle == Qt::AccessibleTextRole && spalte == Vorgangsmodell::Nummer)
    return vorgang::infozeile(vorgang) + u", "_s + vorgang::anzahl_Bilder(vorgang.bilder);
  if (rolle != Qt::DisplayRole) return {};
  if (spalte == Vorgangsmodell::Bilder) return vorgang.bilder;
  return spalte == Vorgangsmodell::Nummer ? vorgang.nummer : vorgang.betreff;
}

}  // namespace

void Vorgangsmodell::setze(const QList<Vorgang>& vorgaenge) {
  beginResetModel();
  for (QList<Vorgang>& liste : vorgaenge_) liste.clear();
  for (const Vorgang& vorgang : vorgaenge) vorgaenge_.at(static_cast<std::size_t>(vorgang.art)).append(vorgang);
  endResetModel();
}

const Vorgang* Vorgangsmodell::vorgang(const QModelIndex& index) const {
  if (!index.isValid() || index.internalId() == Kopf) return nullptr;
  return &vorgaenge_.at(index.internalId() - 1).at(index.row());
}

template <class Bedingung>
QModelIndex Vorgangsmodell::suche(Bedingung&& bedingung) const {
  for (std::size_t art = 0; art < vorgaenge_.size(); ++art) {
    const auto treffer = std::find_if(vorgaenge_[art].begin(), vorgaenge_[art].end(), bedingung);
    if (treffer != vorgaenge_[art].end())
      return createIndex(static_cast<int>(treffer - vorgaenge_[art].begin()), 0, art + 1);
  }
  return {};
}

QModelIndex Vorgangsmodell::index_von(const Vorgang& vorgang) const {
  const QString kennung = vorgang::kennung(vorgang);
  return suche([&](const Vorgang& v) { return vorgang::kennung(v) == kennung; });
}

QModelIndex Vorgangsmodell::index_von(const QString& nummer) const {
  return suche([&](const Vorgang& v) { return v.nummer.compare(nummer, Qt::CaseInsensitive) == 0; });
}

bool Vorgangsmodell::leer() const {
  return std::all_of(vorgaenge_.begin(), vorgaenge_.end(), [](const QList<Vorgang>& l) { return l.isEmpty(); });
}

QModelIndex Vorgangsmodell::index(int zeile, int spalte, const QModelIndex& oberhalb) const {
  if (!hasIndex(zeile, spalte, oberhalb)) return {};
  return createIndex(zeile, spalte, oberhalb.isValid() ? static_cast<quintptr>(oberhalb.row()) + 1 : Kopf);
}

QModelIndex Vorgangsmodell::parent(const QModelIndex& index) const {
  if (!index.isValid() || index.internalId() == Kopf) return {};
  return createIndex(static_cast<int>(index.internalId()) - 1, 0, Kopf);
}

int Vorgangsmodell::rowCount(const QModelIndex& oberhalb) const {
  if (!oberhalb.isValid()) return static_cast<int>(vorgaenge_.size());
  if (oberhalb.internalId() != Kopf || oberhalb.column() != 0) return 0;
  return static_cast<int>(vorgaenge_.at(static_cast<std::size_t>(oberhalb.row())).size());
}

QVariant Vorgangsmodell::data(const QModelIndex& index, int rolle) const {
  if (const Vorgang* v = vorgang(index)) return daten_des_Vorgangs(*v, index.column(), rolle);
  if (!index.isValid()) return {};
  return daten_der_Art(Vorgangsarten.at(static_cast<std::size_t>(index.row())), index.column(), rolle);
}

QVariant Vorgangsmodell::daten_der_Art(Vorgangsart art, int spalte, int rolle) const {
  if (rolle == Qt::FontRole) {
    QFont schrift;
    schrift.setBold(true);
    return schrift;
  }
  if (spalte != Nummer || rolle != Qt::DisplayRole) return {};
  return u"%1 (%2)"_s.arg(vorgang::woerter(art).mehrzahl).arg(vorgaenge_.at(static_cast<std::size_t>(art)).size());
}

QVariant Vorgangsmodell::headerData(int abschnitt, Qt::Orientation richtung, int rolle) const {
  if (richtung != Qt::Horizontal) return {};
  if (rolle == Qt::TextAlignmentRole)
    return QVariant::fromValue(
        Qt::Alignment((abschnitt == Bilder ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
  if (rolle != Qt::DisplayRole) return {};
  return abschnitt == Nummer ? u"Vorgang"_s : abschnitt == Betreff ? u"Kunde oder Betreff"_s : u"Bilder"_s;
}

void Vorgangsfilter::setze_Filter(const QString& text) {
  worte_ = text.simplified().split(u' ', Qt::SkipEmptyParts);
  invalidateFilter();
}

bool Vorgangsfilter::filterAcceptsRow(int zeile, const QModelIndex& oberhalb) const {
  if (worte_.isEmpty()) return true;
  // A kind shows with its records or not at all.
  if (!oberhalb.isValid()) return false;
  const auto* modell = dynamic_cast<const Vorgangsmodell*>(sourceModel());
  if (!modell) return false;
  const Vorgang* vorgang = modell->vorgang(modell->index(zeile, 0, oberhalb));
  const QString text = vorgang::infozeile(*vorgang) + u' ' + vorgang::woerter(vorgang->art).mehrzahl;
  return std::all_of(
      worte_.begin(), worte_.end(), [&](const QString& wort) { return text.contains(wort, Qt::CaseInsensitive); });
}
