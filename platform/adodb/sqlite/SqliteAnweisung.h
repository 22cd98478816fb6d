#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "platform/adodb/Treiber.h"

struct sqlite3_stmt;

namespace adodb {

struct SqliteAbschluss {
  void operator()(sqlite3_stmt* anweisung) const noexcept;
};
/// A prepared statement, finalized at the end of its scope.
using SqliteAnweisung = std::unique_ptr<sqlite3_stmt, SqliteAbschluss>;

/// Prepared statements that wait for their text to come again, as it does for every row of a load. They are reset and
/// have no values, so they hold no lock and no state of the database; SQLite prepares them anew where the schema has
/// changed. Of more than a few the one that was used longest ago goes.
class SqliteVorrat {
 public:
  /// The statement of that text, which is taken out; none where there is none.
  SqliteAnweisung nimm(const QString& text);
  void lege_zurueck(const QString& text, SqliteAnweisung anweisung) noexcept;
  void leere() noexcept { plaetze_ = {}; }

 private:
  struct Platz {
    QString text;
    SqliteAnweisung anweisung;
  };
  /// Loads alternate between a few statements.
  std::array<Platz, 4> plaetze_;
};

/// Raises -2147217900 unless the statement has `werte` markers, all of them "?".
void pruefe_Marken(sqlite3_stmt* anweisung, std::size_t werte);

/// Gives each marker its value: TEXT, INTEGER, REAL or NULL. What comes back are the texts, which must live until the
/// statement's values are taken away. Half of a surrogate pair becomes "?".
std::vector<QByteArray> binde(sqlite3_stmt* anweisung, const std::vector<Wert>& werte);

/// Reads the columns' names, and the rows as `schritt`, the result of the first step, and all further steps give them;
/// `schritt` then is the result of the last one.
Ergebnis lies_Zeilen(sqlite3_stmt* anweisung, int& schritt);

}  // namespace adodb
