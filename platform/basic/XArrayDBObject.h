#pragma once

#include <cstdint>
#include <vector>

#include "platform/basic/Variant.h"

/// A two-dimensional table of variants with a lower and an upper bound for rows and columns.
/// An index outside the bounds raises 9. New cells are Empty.
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
  using Zeile = std::vector<Variant>;
  std::size_t zeilenindex(std::int32_t zeile, std::size_t anzahl) const;
  std::size_t spaltenindex(std::int32_t spalte) const;

  std::int32_t zeile_von_ = 0;
  std::int32_t spalte_von_ = 0;
  std::size_t spalten_ = 0;
  std::vector<Zeile> zeilen_;
};
