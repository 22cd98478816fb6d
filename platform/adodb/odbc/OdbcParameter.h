#pragma once

#include <vector>

#include "platform/adodb/Treiber.h"
#include "platform/adodb/odbc/OdbcSchicht.h"
#include "platform/adodb/odbc/OdbcTreiberwahl.h"

namespace adodb {

/// The values of a statement's markers, as the driver fetches them when the statement runs: must outlive that call.
/// Texts go as nvarchar(4000), so that the server keeps one plan for them whatever their length, longer ones as
/// nvarchar(max); whole numbers as bigint, numbers as float.
class OdbcParameter {
 public:
  /// `ganze_Paare`: half of a surrogate pair becomes "?".
  OdbcParameter(const std::vector<Wert>& werte, OdbcArt art, bool ganze_Paare);

  /// Binds them in their order; false as soon as the driver refuses one.
  bool binde(OdbcSchicht& odbc, SQLHSTMT anweisung);

 private:
  struct Platz {
    Wert wert;
    SQLLEN laenge = SQL_NULL_DATA;
  };
  SQLRETURN binde(OdbcSchicht& odbc, SQLHSTMT anweisung, SQLUSMALLINT nummer, Platz& platz) const;

  std::vector<Platz> plaetze_;
  OdbcArt art_;
};

/// The text with "?" for each half of a surrogate pair that stands alone.
QString ohne_halbe_Paare(const QString& text);

}  // namespace adodb
