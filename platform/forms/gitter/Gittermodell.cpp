#include "platform/forms/gitter/Gittermodell.h"

#include <QBrush>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Nachschlagen.h"
#include "platform/forms/steuerelemente/Farbwert.h"
#include "platform/forms/steuerelemente/Zelltext.h"

using namespace Qt::Literals::StringLiterals;
using Dimension = XArrayDBObject::Dimension;

namespace {

int qt(Ausrichtung ausrichtung) {
  constexpr std::pair<Ausrichtung, int> Waagrecht[] = {{Ausrichtung::Links, Qt::AlignLeft},
      {Ausrichtung::Rechts, Qt::AlignRight}, {Ausrichtung::Zentriert, Qt::AlignHCenter}};
  return nachgeschlagen(Waagrecht, ausrichtung, 0) | Qt::AlignVCenter;
}

// Escaped: what the table holds is no markup.
QVariant hinweis(const QString& text) {
  return text.isEmpty() ? QVariant() : QVariant(u"<p>"_s + zelltext::angezeigt(text).toHtmlEscaped() + u"</p>"_s);
}

QVariant pinsel(const std::optional<Farbe>& farbe) {
  return farbe ? QVariant(QBrush(farben::qt(*farbe))) : QVariant();
}

}  // namespace

bool Gittermodell::gibt_Zelle(int zeile, int spalte) const noexcept {
  return zeile >= 0 && spalte >= 0 && zeile < zeilen() && spalte < stand_.Count(Dimension::Spalten);
}

Variant Gittermodell::wert(int zeile, int spalte) const {
  if (eingabe_ && eingabe_->zeile == zeile && eingabe_->spalte == spalte) return eingabe_->wert;
  return gibt_Zelle(zeile, spalte) ? stand_.Value(arrayzeile(zeile), arrayspalte(spalte)) : Variant();
}

// No value, an object, and a Boolean without a check box mean nothing to a reader and show as no text.
QString Gittermodell::text(int zeile, int spalte) const {
  const Variant inhalt = wert(zeile, spalte);
  const bool lesbar = !std::holds_alternative<Null>(inhalt) && !std::holds_alternative<bool>(inhalt) &&
      !std::holds_alternative<Objekt>(inhalt);
  return lesbar ? CStr(inhalt) : QString();
}

bool Gittermodell::angehakt(int zeile, int spalte) const {
  return fehler::still_enden([&] { return ist_True(wert(zeile, spalte)); });
}

QVariant Gittermodell::data(const QModelIndex& index, int rolle) const {
  if (!index.isValid() || index.column() >= columnCount()) return {};
  const Gitterspalte& spalte = spalten_[static_cast<std::size_t>(index.column())];
  switch (rolle) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return spalte.CheckBox ? QVariant() : QVariant(text(index.row(), index.column()));
    case Qt::ToolTipRole:
      return spalte.CheckBox ? QVariant() : hinweis(text(index.row(), index.column()));
    case Qt::CheckStateRole:
      if (!spalte.CheckBox) return {};
      return angehakt(index.row(), index.column()) ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
      return qt(spalte.Alignment);
    case Qt::BackgroundRole:
      return pinsel(spalte.BackColor);
    default:
      return {};
  }
}

QVariant Gittermodell::spaltenkopf(int spalte, int rolle) const {
  if (spalte < 0 || spalte >= columnCount()) return {};
  const Gitterspalte& s = spalten_[static_cast<std::size_t>(spalte)];
  if (rolle == Qt::DisplayRole) return s.Caption;
  if (rolle == Qt::TextAlignmentRole) return qt(s.HeadAlignment);
  if (rolle == Qt::BackgroundRole) return pinsel(s.HeadBackColor);
  return {};
}

// The row selector shows where the current row and the line for a new one are.
QVariant Gittermodell::zeilenkopf(int zeile, int rolle) const {
  if (rolle == Qt::TextAlignmentRole) return qt(Ausrichtung::Zentriert);
  if (rolle != Qt::DisplayRole) return {};
  if (neue_Zeile_ && ist_neue_Zeile(zeile)) return u"*"_s;
  return zeile == aktuelle_Zeile_ ? u"▸"_s : QString();
}

Qt::ItemFlags Gittermodell::flags(const QModelIndex& index) const {
  if (!index.isValid() || index.column() >= columnCount()) return Qt::NoItemFlags;
  const Gitterspalte& spalte = spalten_[static_cast<std::size_t>(index.column())];
  const Qt::ItemFlags immer = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return AllowUpdate && !spalte.Locked && !spalte.CheckBox ? immer | Qt::ItemIsEditable : immer;
}

void Gittermodell::haenge_Spalte_an(Gitterspalte spalte) {
  beginInsertColumns({}, columnCount(), columnCount());
  spalten_.push_back(std::move(spalte));
  endInsertColumns();
}

void Gittermodell::entferne_Spalten() {
  if (spalten_.empty()) return;
  beginRemoveColumns({}, 0, columnCount() - 1);
  spalten_.clear();
  endRemoveColumns();
}

void Gittermodell::setze_Spalte(int spalte, Gitterspalte wert) {
  spalten_[static_cast<std::size_t>(spalte)] = std::move(wert);
  Q_EMIT headerDataChanged(Qt::Horizontal, spalte, spalte);
  if (rowCount() > 0) Q_EMIT dataChanged(index(0, spalte), index(rowCount() - 1, spalte));
}

void Gittermodell::binde(const XArrayDBObject& quelle) {
  beginResetModel();
  stand_ = quelle;
  eingabe_.reset();
  aktuelle_Zeile_ = -1;
  endResetModel();
}

void Gittermodell::gleiche_Zeilenzahl_an(int anzahl) {
  const int vorher = zeilen();
  const int spaltenzahl = stand_.Count(Dimension::Spalten);
  if (anzahl > vorher) {
    beginInsertRows({}, vorher, anzahl - 1);
    stand_.AppendRows(anzahl - vorher);
    endInsertRows();
  } else if (anzahl < vorher) {
    beginRemoveRows({}, anzahl, vorher - 1);
    XArrayDBObject kurz;
    kurz.ReDim(arrayzeile(0), arrayzeile(anzahl) - 1, arrayspalte(0), arrayspalte(spaltenzahl) - 1);
    stand_ = kurz;
    endRemoveRows();
  }
}

void Gittermodell::uebernimm(const XArrayDBObject& quelle) {
  gleiche_Zeilenzahl_an(quelle.Count(Dimension::Zeilen));
  stand_ = quelle;
  if (rowCount() > 0 && columnCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void Gittermodell::zeige_Zelle(int zeile, int spalte) {
  const QModelIndex zelle = index(zeile, spalte);
  if (zelle.isValid()) Q_EMIT dataChanged(zelle, zelle);
}

void Gittermodell::setze_Zelle(int zeile, int spalte, Variant wert) {
  if (gibt_Zelle(zeile, spalte)) stand_.Value(arrayzeile(zeile), arrayspalte(spalte), std::move(wert));
  zeige_Zelle(zeile, spalte);
}

void Gittermodell::haenge_Zeile_an() {
  // The line for a new row becomes the row, so that the one that is inserted is the next line for a new row.
  beginInsertRows({}, rowCount(), rowCount());
  stand_.AppendRows();
  endInsertRows();
  Q_EMIT headerDataChanged(Qt::Vertical, zeilen() - 1, zeilen() - 1);
}

void Gittermodell::setze_neue_Zeile(bool wert) {
  if (wert == neue_Zeile_) return;
  wert ? beginInsertRows({}, zeilen(), zeilen()) : beginRemoveRows({}, zeilen(), zeilen());
  neue_Zeile_ = wert;
  wert ? endInsertRows() : endRemoveRows();
}

void Gittermodell::setze_Eingabe(std::optional<Eingabe> eingabe) {
  const std::optional<Eingabe> vorher = std::exchange(eingabe_, std::move(eingabe));
  if (vorher) zeige_Zelle(vorher->zeile, vorher->spalte);
  if (eingabe_) zeige_Zelle(eingabe_->zeile, eingabe_->spalte);
}

void Gittermodell::setze_aktuelle_Zeile(int zeile) {
  const int vorher = std::exchange(aktuelle_Zeile_, zeile);
  for (const int z : {vorher, zeile})
    if (z >= 0 && z < rowCount()) Q_EMIT headerDataChanged(Qt::Vertical, z, z);
}
