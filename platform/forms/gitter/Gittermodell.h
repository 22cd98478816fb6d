#pragma once

#include <QAbstractTableModel>
#include <optional>
#include <vector>

#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/gitter/Gitterspalte.h"

/// What a TDBGrid shows: a snapshot of its array, the edit that is not committed yet, and the line for a new row. Lines
/// count from 0, whatever the lower bound of the array. Used by the grid alone.
class Gittermodell final : public QAbstractTableModel {
 public:
  /// An edit on its way into the array.
  struct Eingabe {
    int zeile = 0;
    int spalte = 0;
    Variant wert;
    /// The edit event has been raised.
    bool gemeldet = false;
  };

  int rowCount(const QModelIndex& ueber = {}) const override { return ueber.isValid() ? 0 : zeilen() + neue_Zeile_; }
  int columnCount(const QModelIndex& ueber = {}) const override {
    return ueber.isValid() ? 0 : static_cast<int>(spalten_.size());
  }
  QVariant data(const QModelIndex& index, int rolle) const override;
  QVariant headerData(int abschnitt, Qt::Orientation richtung, int rolle) const override {
    return richtung == Qt::Horizontal ? spaltenkopf(abschnitt, rolle) : zeilenkopf(abschnitt, rolle);
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  /// Rows of the snapshot, without the line for a new one.
  int zeilen() const noexcept { return stand_.Count(XArrayDBObject::Dimension::Zeilen); }
  /// The array's index of a line, also of the one behind the last.
  std::int32_t arrayzeile(int zeile) const noexcept {
    return stand_.LowerBound(XArrayDBObject::Dimension::Zeilen) + zeile;
  }
  std::int32_t arrayspalte(int spalte) const noexcept {
    return stand_.LowerBound(XArrayDBObject::Dimension::Spalten) + spalte;
  }
  bool ist_neue_Zeile(int zeile) const noexcept { return zeile == zeilen(); }
  /// Empty where the snapshot has no such cell.
  Variant wert(int zeile, int spalte) const;
  bool angehakt(int zeile, int spalte) const;
  /// The text of a cell as an editor shows it.
  QString text(int zeile, int spalte) const;

  const std::vector<Gitterspalte>& spalten() const noexcept { return spalten_; }
  void haenge_Spalte_an(Gitterspalte spalte);
  void entferne_Spalten();
  void setze_Spalte(int spalte, Gitterspalte wert);

  /// A new snapshot; everything that refers to lines is void.
  void binde(const XArrayDBObject& quelle);
  /// A new snapshot with lines that stay what they are, but for those that came or went at the end.
  void uebernimm(const XArrayDBObject& quelle);
  void setze_Zelle(int zeile, int spalte, Variant wert);
  void haenge_Zeile_an();
  void setze_neue_Zeile(bool wert);

  void setze_Eingabe(std::optional<Eingabe> eingabe);
  const std::optional<Eingabe>& eingabe() const noexcept { return eingabe_; }
  void merke_gemeldet() { eingabe_->gemeldet = true; }

  void setze_aktuelle_Zeile(int zeile);
  bool AllowUpdate = true;

 private:
  QVariant spaltenkopf(int spalte, int rolle) const;
  QVariant zeilenkopf(int zeile, int rolle) const;
  void gleiche_Zeilenzahl_an(int anzahl);
  void zeige_Zelle(int zeile, int spalte);
  bool gibt_Zelle(int zeile, int spalte) const noexcept;

  std::vector<Gitterspalte> spalten_;
  XArrayDBObject stand_;
  std::optional<Eingabe> eingabe_;
  bool neue_Zeile_ = false;
  int aktuelle_Zeile_ = -1;
};
