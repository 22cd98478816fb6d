#pragma once

#include <functional>
#include <vector>

#include "platform/adodb/Treiber.h"
#include "platform/adodb/odbc/OdbcBindung.h"
#include "platform/adodb/odbc/OdbcSchicht.h"

namespace adodb {

/// Reads the rows of an open result of ODBC. Must outlive every call on the statement. Whole numbers, and bits as 0 and
/// 1, come as whole numbers; floating and decimal numbers as numbers; all else as the text that ODBC makes of it:
/// characters as they are with their blanks, times in ODBC's form, bytes in hexadecimal form.
class OdbcWerte {
 public:
  /// A call on the statement that may wait for the server.
  using Ruf = std::function<SQLRETURN()>;

  /// `fehler` is called when a call failed; it must raise. `rufe` makes a call that fetches rows; it may raise instead.
  OdbcWerte(
      OdbcSchicht& odbc, SQLHSTMT anweisung, std::function<void()> fehler, std::function<SQLRETURN(const Ruf&)> rufe);

  /// Reads the columns' names and then every row to the last.
  Ergebnis lies(SQLSMALLINT spalten);

 private:
  enum class Lesart { Ganzzahl, Zahl, Text };
  QString lies_Spalte(SQLUSMALLINT spalte);
  static Lesart lesart(SQLSMALLINT typ);
  SQLRETURN hole_Block();
  void nimm_Block(Werte& werte);
  void nimm_gebundenen(std::size_t spalte, std::size_t zeile, std::size_t nummer, Werte& werte);
  void lies_Wert(SQLUSMALLINT spalte, Lesart art, std::size_t nummer, Werte& werte);
  void lies_Text(SQLUSMALLINT spalte, std::size_t nummer, Werte& werte);
  QString lies_Stuecke(SQLUSMALLINT spalte, SQLLEN laenge);
  bool hole(SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laenge);
  void pruefe(SQLRETURN ergebnis) {
    if (!SQL_SUCCEEDED(ergebnis)) fehler_();
  }

  OdbcSchicht& odbc_;
  SQLHSTMT anweisung_;
  std::function<void()> fehler_;
  std::function<SQLRETURN(const Ruf&)> rufe_;
  std::vector<Lesart> lesarten_;
  OdbcBindung bindung_;
  std::vector<char16_t> stueck_;
};

}  // namespace adodb
