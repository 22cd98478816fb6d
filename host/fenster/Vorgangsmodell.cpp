#include "host/fenster/Vorgangsmodell.h"

#include <QFont>
#include <algorithm>
#include <numeric>
#include <utility>

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
  gruppen_.clear();
  for (const Vorgang& vorgang : vorgaenge) {
    const vorgang::Art art = vorgang::art_von(vorgang.satz.typ1);
    auto gruppe =
        std::find_if(gruppen_.begin(), gruppen_.end(), [&](const Gruppe& g) { return g.art.typ1 == art.typ1; });
    if (gruppe == gruppen_.end()) gruppe = gruppen_.insert(gruppen_.end(), {art, {}});
    gruppe->vorgaenge.append(vorgang);
  }
  const auto rang = [](const Gruppe& g) { return std::pair(vorgang::rang(g.art.typ1), g.art.typ1); };
  std::sort(gruppen_.begin(), gruppen_.end(), [&](const Gruppe& a, const Gruppe& b) { return rang(a) < rang(b); });
  endResetModel();
}

const Vorgang* Vorgangsmodell::vorgang(const QModelIndex& index) const {
  if (!index.isValid() || index.internalId() == Kopf) return nullptr;
  return &gruppen_.at(static_cast<qsizetype>(index.internalId()) - 1).vorgaenge.at(index.row());
}

int Vorgangsmodell::anzahl() const {
  return std::accumulate(gruppen_.begin(), gruppen_.end(), 0,
      [](int summe, const Gruppe& g) { return summe + static_cast<int>(g.vorgaenge.size()); });
}

template <class Bedingung>
QModelIndex Vorgangsmodell::suche(Bedingung&& bedingung) const {
  for (qsizetype i = 0; i < gruppen_.size(); ++i) {
    const QList<Vorgang>& liste = gruppen_.at(i).vorgaenge;
    const auto treffer = std::find_if(liste.begin(), liste.end(), bedingung);
    if (treffer != liste.end())
      return createIndex(static_cast<int>(treffer - liste.begin()), 0, static_cast<quintptr>(i) + 1);
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

QModelIndex Vorgangsmodell::index(int zeile, int spalte, const QModelIndex& oberhalb) const {
  if (!hasIndex(zeile, spalte, oberhalb)) return {};
  return createIndex(zeile, spalte, oberhalb.isValid() ? static_cast<quintptr>(oberhalb.row()) + 1 : Kopf);
}

QModelIndex Vorgangsmodell::parent(const QModelIndex& index) const {
  if (!index.isValid() || index.internalId() == Kopf) return {};
  return createIndex(static_cast<int>(index.internalId()) - 1, 0, Kopf);
}

int Vorgangsmodell::rowCount(const QModelIndex& oberhalb) const {
  if (!oberhalb.isValid()) return static_cast<int>(gruppen_.size());
  if (oberhalb.internalId() != Kopf || oberhalb.column() != 0) return 0;
  return static_cast<int>(gruppen_.at(oberhalb.row()).vorgaenge.size());
}

QVariant Vorgangsmodell::data(const QModelIndex& index, int rolle) const {
  if (const Vorgang* v = vorgang(index)) return daten_des_Vorgangs(*v, index.column(), rolle);
  if (!index.isValid()) return {};
  return daten_der_Gruppe(gruppen_.at(index.row()), index.column(), rolle);
}

QVariant Vorgangsmodell::daten_der_Gruppe(const Gruppe& gruppe, int spalte, int rolle) {
  if (rolle == Qt::FontRole) {
    QFont schrift;
    schrift.setBold(true);
    return schrift;
  }
  if (spalte != Nummer || rolle != Qt::DisplayRole) return {};
  return u"%1 (%2)"_s.arg(gruppe.art.mehrzahl).arg(gruppe.vorgaenge.size());
}

QVariant Vorgangsmodell::headerData(int abschnitt, Qt::Orientation richtung, int rolle) const {
  if (richtung != Qt::Horizontal) return {};
  if (rolle == Qt::TextAlignmentRole)
    return QVariant::fromValue(
        Qt::Alignment((abschnitt == Bilder ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
  if (rolle != Qt::DisplayRole) return {};
  return abschnitt == Nummer ? u"Vorgang"_s : abschnitt == Betreff ? u"Kunde oder Betreff"_s : u"Bilder"_s;
}
