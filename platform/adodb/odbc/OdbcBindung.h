#pragma once

#include <vector>

#include "platform/adodb/odbc/OdbcSchicht.h"

namespace adodb {

/// The leading columns of a result whose values have a bound, fetched into memory of our own: a call per block of rows
/// instead of one per value. Columns behind the first one that has no bound stay with SQLGetData, which drivers allow
/// behind the bound ones only. Must outlive every call on the statement, since the driver writes here.
class OdbcBindung {
 public:
  /// Most characters of a text that is bound; longer ones are rare and cost their full width in each row.
  static constexpr SQLULEN Breiteste = 4000;

  OdbcBindung(OdbcSchicht& odbc, SQLHSTMT anweisung) : odbc_(odbc), anweisung_(anweisung) {}
  Q_DISABLE_COPY_MOVE(OdbcBindung)

  /// Notes the next column for binding: to be fetched as `art` (SQL_C_WCHAR, SQL_C_SBIGINT or SQL_C_DOUBLE) from the
  /// type `typ`, whose longest text has `groesse` characters, 0 where there is no bound.
  void merke_vor(SQLSMALLINT art, SQLSMALLINT typ, SQLULEN groesse);
  /// Binds what was noted, several rows at once where no column is left over.
  void binde();
  /// Number of columns that are bound, from the first on.
  std::size_t spalten() const noexcept { return gebundene_; }

  /// The next block, as SQLFetch returns it.
  SQLRETURN hole();
  /// Rows of the last block.
  std::size_t zeilen() const noexcept { return static_cast<std::size_t>(geholte_); }
  /// A row that the driver marked as failed.
  bool gescheitert(std::size_t zeile) const noexcept;
  /// Length in bytes, SQL_NULL_DATA or SQL_NO_TOTAL, as the driver said.
  SQLLEN laenge(std::size_t spalte, std::size_t zeile) const noexcept { return spalten_[spalte].laengen[zeile]; }
  /// Where the value lies, and room for how many bytes there is; a text's closing zero is in it.
  const char* wert(std::size_t spalte, std::size_t zeile) const noexcept {
    const Spalte& s = spalten_[spalte];
    return s.werte.data() + zeile * static_cast<std::size_t>(s.platz);
  }
  SQLLEN platz(std::size_t spalte) const noexcept { return spalten_[spalte].platz; }

 private:
  struct Spalte {
    SQLSMALLINT art = SQL_C_WCHAR;
    SQLLEN platz = 0;
    std::vector<char> werte = {};
    std::vector<SQLLEN> laengen = {};
  };
  std::size_t hoechste_Blockgroesse() const noexcept;
  bool verlange_Block(std::size_t block);
  void nimm_einzelne();

  OdbcSchicht& odbc_;
  SQLHSTMT anweisung_;
  std::vector<Spalte> spalten_;
  std::size_t gebundene_ = 0;
  bool uebrige_ = false;
  std::vector<SQLUSMALLINT> zustaende_;
  SQLULEN geholte_ = 0;
};

}  // namespace adodb
