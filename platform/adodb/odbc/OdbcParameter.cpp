#include "platform/adodb/odbc/OdbcParameter.h"

#include <cstdint>
#include <limits>

#include "platform/adodb/Parameter.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

/// Most characters of an nvarchar with a bound.
constexpr qsizetype Begrenzte = 4000;
/// What a call of the server takes beside its text and its declaration.
constexpr std::size_t Hoechstens = 2098;

/// The type of a text behind 4000 characters. The maker's driver takes a size of 0 for "max"; FreeTDS would cut the
/// value to 4000 and say nothing.
SQLSMALLINT langer_Typ(OdbcArt art) {
  return art == OdbcArt::Hersteller ? SQL_WVARCHAR : SQL_WLONGVARCHAR;
}

}  // namespace

QString ohne_halbe_Paare(const QString& text) {
  return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

OdbcParameter::OdbcParameter(const std::vector<Wert>& werte, OdbcArt art, bool ganze_Paare) : art_(art) {
  if (werte.size() > Hoechstens) keine_Anweisung(u"der Text hat mehr als %1 Parameter"_s.arg(Hoechstens), u"07002"_s);
  plaetze_.reserve(werte.size());
  for (const Wert& wert : werte) {
    const auto* text = std::get_if<QString>(&wert);
    plaetze_.push_back({text && ganze_Paare ? ohne_halbe_Paare(*text) : wert});
  }
}

bool OdbcParameter::binde(OdbcSchicht& odbc, SQLHSTMT anweisung) {
  SQLUSMALLINT nummer = 0;
  for (Platz& platz : plaetze_)
    if (!SQL_SUCCEEDED(binde(odbc, anweisung, ++nummer, platz))) return false;
  return true;
}

SQLRETURN OdbcParameter::binde(OdbcSchicht& odbc, SQLHSTMT anweisung, SQLUSMALLINT nummer, Platz& platz) const {
  const auto gib = [&](SQLSMALLINT art, SQLSMALLINT typ, SQLULEN groesse, const void* wert, SQLLEN bytes) {
    platz.laenge = wert ? bytes : SQLLEN{SQL_NULL_DATA};
    return odbc.BindParameter(anweisung, nummer, art, typ, groesse, wert, bytes, &platz.laenge);
  };
  if (const auto* text = std::get_if<QString>(&platz.wert)) {
    const bool lang = text->size() > Begrenzte;
    const auto zeichen = static_cast<SQLULEN>(lang ? text->size() : Begrenzte);
    const SQLULEN groesse = lang && art_ == OdbcArt::Hersteller ? 0 : zeichen;
    return gib(SQL_C_WCHAR, lang ? langer_Typ(art_) : SQLSMALLINT{SQL_WVARCHAR}, groesse, text->utf16(),
        SQLLEN{text->size()} * static_cast<SQLLEN>(sizeof(char16_t)));
  }
  if (const auto* ganze = std::get_if<std::int64_t>(&platz.wert))
    return gib(SQL_C_SBIGINT, SQL_BIGINT, 19, ganze, sizeof *ganze);
  if (const auto* zahl = std::get_if<double>(&platz.wert)) return gib(SQL_C_DOUBLE, SQL_DOUBLE, 15, zahl, sizeof *zahl);
  return gib(SQL_C_WCHAR, SQL_WVARCHAR, 1, nullptr, 0);
}

}  // namespace adodb
