#pragma once

#include <QAbstractItemModel>
#include <QList>

#include "host/betrieb/vorgang/Vorgang.h"

/// The records of an answer as a tree of two levels: the kinds that occur, and below each its records with number,
/// subject and number of pictures, in the order of the answer.
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
  bool leer() const { return gruppen_.isEmpty(); }
  /// Number of all records.
  int anzahl() const;

  QModelIndex index(int zeile, int spalte, const QModelIndex& oberhalb = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& oberhalb = {}) const override;
  int columnCount(const QModelIndex& = {}) const override { return Spaltenzahl; }
  QVariant data(const QModelIndex& index, int rolle) const override;
  QVariant headerData(int abschnitt, Qt::Orientation richtung, int rolle) const override;

 private:
  /// The records of one kind.
  struct Gruppe {
    vorgang::Art art;
    QList<Vorgang> vorgaenge;
  };
  static QVariant daten_der_Gruppe(const Gruppe& gruppe, int spalte, int rolle);
  template <class Bedingung>
  QModelIndex suche(Bedingung&& bedingung) const;

  QList<Gruppe> gruppen_;
};
