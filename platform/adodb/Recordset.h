#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "platform/adodb/Treiber.h"
#include "platform/basic/Variant.h"
#include "platform/basic/kvo_export.h"

namespace adodb {

class Recordset;

/// One column of the current record. Valid as long as its recordset is.
class KVO_EXPORT Field {
 public:
  const QString& Name() const;
  /// NULL as Null, whole numbers of 32 bits as such, larger ones as double. Raises 3021 with no current record.
  Variant Value() const;
  /// Value + "": NULL becomes the empty text.
  QString Text() const;

 private:
  friend class Recordset;
  Field(const Recordset& satz, std::int32_t spalte) : satz_(&satz), spalte_(spalte) {}
  const Recordset* satz_;
  std::int32_t spalte_;
};

/// A result that was read whole, with a cursor that goes forward. Stands alone: its connection may be closed.
class KVO_EXPORT Recordset {
 public:
  /// A closed recordset.
  Recordset() = default;
  /// Open on the first record, or at the end when there is none.
  explicit Recordset(Ergebnis ergebnis);

  std::int32_t State() const noexcept;
  /// Behind the last record. Raises 3704 when closed, as all of the following do.
  bool Eof() const;
  /// Number of all records.
  std::int32_t RecordCount() const;
  /// Raises 3021 when already at the end.
  void MoveNext();
  void Close();

  /// A column by its name, without regard to case. Raises 3265 when there is none.
  Field Fields(const QString& name) const;
  /// Number of the column of that name, from 0; for loops that would otherwise search it for each record.
  std::int32_t Spalte(const QString& name) const;
  /// The columns' names in the order of the result.
  const QStringList& Spalten() const;
  /// Value + "" of a column of the current record. A number outside the columns raises 3265.
  QString Text(std::int32_t spalte) const;
  Variant Value(std::int32_t spalte) const;

 private:
  /// Where the text last asked for in a column lay. From its second time on it holds the text itself too, which is then
  /// shared.
  struct Letzter {
    std::int64_t ort = -1;
    /// An empty text begins where the next one does.
    qsizetype laenge = 0;
    QString text;
  };
  std::size_t stelle(std::int32_t spalte) const;
  void pruefe_offen() const;

  Ergebnis ergebnis_;
  mutable std::vector<Letzter> letzte_;
  std::size_t zeile_ = 0;
  bool offen_ = false;
  friend class Field;
};

}  // namespace adodb
