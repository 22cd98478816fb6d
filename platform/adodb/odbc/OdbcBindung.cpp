#include "platform/adodb/odbc/OdbcBindung.h"

#include <algorithm>

namespace adodb {
namespace {

/// Bytes of a block: enough to make the calls cheap, little enough to stay in the processor's cache.
constexpr std::size_t Blockbytes = 128 * 1024;
constexpr std::size_t HoechstensZeilen = 64;

/// Types that are as wide as their text. A time or bytes have another width as text.
bool zaehlt_Zeichen(SQLSMALLINT typ) {
  return typ == SQL_CHAR || typ == SQL_VARCHAR || typ == SQL_WCHAR || typ == SQL_WVARCHAR;
}

}  // namespace

void OdbcBindung::merke_vor(SQLSMALLINT art, SQLSMALLINT typ, SQLULEN groesse) {
  const bool text = art == SQL_C_WCHAR;
  uebrige_ = uebrige_ || (text && (!zaehlt_Zeichen(typ) || groesse == 0 || groesse > Breiteste));
  if (uebrige_) return;
  const SQLULEN platz = text ? (groesse + 1) * sizeof(char16_t) : 8;
  spalten_.push_back({.art = art, .platz = static_cast<SQLLEN>(platz)});
}

std::size_t OdbcBindung::hoechste_Blockgroesse() const noexcept {
  std::size_t zeile = 1;
  for (const Spalte& s : spalten_) zeile += static_cast<std::size_t>(s.platz) + sizeof(SQLLEN);
  return std::clamp<std::size_t>(Blockbytes / zeile, 1, HoechstensZeilen);
}

void OdbcBindung::binde() {
  if (spalten_.empty()) return;
  std::size_t block = !uebrige_ ? hoechste_Blockgroesse() : 1;
  if (block > 1 && !verlange_Block(block)) block = 1;
  for (Spalte& s : spalten_) {
    s.werte.resize(block * static_cast<std::size_t>(s.platz));
    s.laengen.assign(block, SQL_NULL_DATA);
    const auto nummer = static_cast<SQLUSMALLINT>(gebundene_ + 1);
    if (odbc_.BindCol(anweisung_, nummer, s.art, s.werte.data(), s.platz, s.laengen.data()) != SQL_SUCCESS) break;
    ++gebundene_;
  }
  // What is left goes by SQLGetData, which reads single rows only.
  if (block > 1 && gebundene_ < spalten_.size()) nimm_einzelne();
}

/// A driver that refuses one of the three attributes gives one row at a time.
bool OdbcBindung::verlange_Block(std::size_t block) {
  zustaende_.assign(block, SQL_ROW_SUCCESS);
  const bool genommen = odbc_.SetStmtZeiger(anweisung_, SQL_ATTR_ROW_STATUS_PTR, zustaende_.data()) == SQL_SUCCESS &&
      odbc_.SetStmtZeiger(anweisung_, SQL_ATTR_ROWS_FETCHED_PTR, &geholte_) == SQL_SUCCESS &&
      odbc_.SetStmtAttr(anweisung_, SQL_ATTR_ROW_ARRAY_SIZE, block) == SQL_SUCCESS;
  if (!genommen) nimm_einzelne();
  return genommen;
}

/// One row at a time. The driver must not keep the place that it wrote states to: it is freed here.
void OdbcBindung::nimm_einzelne() {
  odbc_.SetStmtAttr(anweisung_, SQL_ATTR_ROW_ARRAY_SIZE, 1);
  odbc_.SetStmtZeiger(anweisung_, SQL_ATTR_ROW_STATUS_PTR, nullptr);
  zustaende_.clear();
}

SQLRETURN OdbcBindung::hole() {
  geholte_ = 0;
  const SQLRETURN ergebnis = odbc_.Fetch(anweisung_);
  if (zustaende_.empty()) geholte_ = SQL_SUCCEEDED(ergebnis) ? 1 : 0;
  geholte_ = std::min<SQLULEN>(geholte_, std::max<std::size_t>(zustaende_.size(), 1));
  return ergebnis;
}

bool OdbcBindung::gescheitert(std::size_t zeile) const noexcept {
  return zeile < zustaende_.size() && zustaende_[zeile] == SQL_ROW_ERROR;
}

}  // namespace adodb
