#pragma once

#include <QtGlobal>
#include <cstdint>
#include <deque>
#include <functional>
#include <unordered_set>

/// The selected rows of a grid, as row indexes of its array, in the order in which they were selected. Changes made
/// here show at once and raise no event of the grid. Telling whether a row is selected, adding, and removing at either
/// end take the same time whatever the number of rows.
class Zeilenauswahl {
 public:
  Zeilenauswahl() = default;
  Q_DISABLE_COPY_MOVE(Zeilenauswahl)

  std::int32_t Count() const noexcept { return static_cast<std::int32_t>(folge_.size()); }
  /// The row index at a position, counted from 0; a position outside raises 9.
  std::int32_t Item(std::int32_t stelle) const { return *ort(stelle); }
  bool Contains(std::int32_t zeile) const { return menge_.contains(zeile); }

  /// Adds a row at the end; one that is selected stays where it is. An index without a row is kept, and shows nothing.
  void Add(std::int32_t zeile);
  /// Takes out what stands at a position, not the row of that index; a position outside raises 9.
  void Remove(std::int32_t stelle);
  void Clear();

  friend bool operator==(const Zeilenauswahl& a, const Zeilenauswahl& b) { return a.folge_ == b.folge_; }

 private:
  friend class TDBGrid;
  std::deque<std::int32_t>::const_iterator ort(std::int32_t stelle) const;
  void melde() const {
    if (geaendert_) geaendert_();
  }

  std::deque<std::int32_t> folge_;
  std::unordered_set<std::int32_t> menge_;
  std::function<void()> geaendert_;
};
