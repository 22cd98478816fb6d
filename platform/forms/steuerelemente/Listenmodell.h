#pragma once

#include <QAbstractListModel>
#include <utility>
#include <vector>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/ImageList.h"

/// What a ListView shows. Used by the list alone.
class Listenmodell final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  struct Eintrag {
    QString text;
    QString tag;
    int bild = 0;
  };

  int rowCount(const QModelIndex& ueber) const override { return ueber.isValid() ? 0 : gezeigt_; }

  QVariant data(const QModelIndex& index, int rolle) const override {
    if (!index.isValid() || index.row() >= gezeigt_) return {};
    const Eintrag& e = eintraege[static_cast<std::size_t>(index.row())];
    switch (rolle) {
      case Qt::DisplayRole:
      case Qt::ToolTipRole:
      case Qt::AccessibleTextRole:
        return e.text;
      case Qt::DecorationRole:
        return bilder && e.bild >= 1 && e.bild <= bilder->Count() ? QVariant(bilder->Image(e.bild)) : QVariant();
      default:
        return {};
    }
  }

  Eintrag& eintrag(int index) {
    if (index < 1 || index > anzahl()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
    return eintraege[static_cast<std::size_t>(index - 1)];
  }
  int anzahl() const noexcept { return static_cast<int>(eintraege.size()); }

  /// The display catches up with what was added.
  void zeige_alle() {
    if (gezeigt_ == anzahl()) return;
    beginInsertRows({}, gezeigt_, anzahl() - 1);
    gezeigt_ = anzahl();
    endInsertRows();
  }
  void leere() {
    beginResetModel();
    eintraege.clear();
    gezeigt_ = 0;
    endResetModel();
  }
  void geaendert(int index) {
    if (index <= gezeigt_) Q_EMIT dataChanged(this->index(index - 1), this->index(index - 1));
  }
  void zeige_Bilder(const ImageList* neue) {
    if (std::exchange(bilder, neue) != neue && gezeigt_ > 0) Q_EMIT dataChanged(index(0), index(gezeigt_ - 1));
  }

  std::vector<Eintrag> eintraege;
  const ImageList* bilder = nullptr;

 private:
  int gezeigt_ = 0;
};
