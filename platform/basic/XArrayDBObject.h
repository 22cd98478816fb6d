#pragma once

#include <QList>
#include <cstdint>
#include <vector>

#include "platform/basic/Variant.h"

/// A two-dimensional table of variants with a lower and an upper bound for rows and columns.
/// An index outside the bounds raises 9. New cells are Empty. A copy shares the cells with its source until one of the
/// two changes, column by column.
class KVO_EXPORT XArrayDBObject {
 public:
  /// The two dimensions of the table.
  enum class Dimension { Zeilen, Spalten };

  /// A table without rows and columns, until ReDim.
  XArrayDBObject() = default;
  ~XArrayDBObject();
  XArrayDBObject(const XArrayDBObject&) = default;
  XArrayDBObject& operator=(const XArrayDBObject&) = default;

  /// Sets all bounds, inclusive, and empties every cell. An upper bound may be one below the lower (no row, no column);
  /// anything lower raises 9.
  void ReDim(std::int32_t zeile_von, std::int32_t zeile_bis, std::int32_t spalte_von, std::int32_t spalte_bis);

  /// Valid until the table changes.
  const Variant& Value(std::int32_t zeile, std::int32_t spalte) const;
  void Value(std::int32_t zeile, std::int32_t spalte, Variant wert);

  std::int32_t Count(Dimension dimension) const noexcept;
  std::int32_t LowerBound(Dimension dimension) const noexcept;
  /// One below the lower bound when the dimension has no element.
  std::int32_t UpperBound(Dimension dimension) const noexcept;

  /// Adds empty rows at the end; a number below 0 raises 5.
  void AppendRows(std::int32_t anzahl = 1);
  /// Puts one empty row in front of `zeile`, which may also be the row behind the last.
  void InsertRows(std::int32_t zeile);
  /// Removes one row; the rows behind it move up. A table may end with no row at all.
  void DeleteRows(std::int32_t zeile);

 private:
  /// The cells of one column. Most columns of a long table begin with the same value many times, which is kept once; a
  /// long table then costs what tells its rows apart.
  class Spalte {
   public:
    /// Empty behind the last cell that was set.
    const Variant& operator[](qsizetype zeile) const;
    void setze(qsizetype zeile, Variant wert);
    /// Every one of the `zeilen` cells kept on its own, with room for one more. A failure changes no cell.
    void breite_aus(qsizetype zeilen);
    /// An empty cell in front of one; only after breite_aus.
    void fuege_ein(qsizetype zeile);
    /// Shares no cell with a copy.
    void trenne() { weitere_.detach(); }
    void entferne(qsizetype zeile);

   private:
    Variant erster_;
    /// So many cells at the top hold `erster_`; `weitere_` stand below.
    qsizetype gleiche_ = 0;
    QList<Variant> weitere_;
  };
  qsizetype zeilenindex(std::int32_t zeile, qsizetype anzahl) const;
  std::size_t spaltenindex(std::int32_t spalte) const;

  std::int32_t zeile_von_ = 0;
  std::int32_t spalte_von_ = 0;
  qsizetype zeilen_ = 0;
  std::vector<Spalte> spalten_;
};
