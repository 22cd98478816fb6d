#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <array>

#include "host/betrieb/vorgang/Vorgang.h"

/// The business records as a tree of two levels: the kinds, and below each its records with number, subject and number
/// of pictures.
class Vorgangsmodell final : public QAbstractItemModel {
 public:
  enum Spalte { Nummer, Betreff, Bilder, Spaltenzahl };

  using QAbstractItemModel::QAbstractItemModel;

  /// Replaces all records.
  void setze(const QList<Vorgang>& vorgaenge);
  /// The record of an index, or none for a kind and for an index that is not valid. Valid until the next `setze`.
  const Vorgang* vorgang(const QModelIndex& index) const;
  /// The index of a record, by its keys or by its number as the user says it; not valid when it is not there.
  QModelIndex index_von(const Vorgang& vorgang) const;
  QModelIndex index_von(const QString& nummer) const;
  bool leer() const;

  QModelIndex index(int zeile, int spalte, const QModelIndex& oberhalb = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& oberhalb = {}) const override;
  int columnCount(const QModelIndex& = {}) const override { return Spaltenzahl; }
  QVariant data(const QModelIndex& index, int rolle) const override;
  QVariant headerData(int abschnitt, Qt::Orientation richtung, int rolle) const override;

 private:
  QVariant daten_der_Art(Vorgangsart art, int spalte, int rolle) const;
  template <class Bedingung>
  QModelIndex suche(Bedingung&& bedingung) const;

  std::array<QList<Vorgang>, Vorgangsarten.size()> vorgaenge_;
};

/// Lets the records pass whose number, subject or kind holds every word of the filter, in any case.
class Vorgangsfilter final : public QSortFilterProxyModel {
 public:
  explicit Vorgangsfilter(QObject* besitzer) : QSortFilterProxyModel(besitzer) { setRecursiveFilteringEnabled(true); }
  void setze_Filter(const QString& text);

 protected:
  bool filterAcceptsRow(int zeile, const QModelIndex& oberhalb) const override;

 private:
  QStringList worte_;
};
