#include "platform/adodb/OdbcWerte.h"

#include <algorithm>
#include <array>
#include <utility>

namespace adodb {

namespace {

/// Characters that are fetched at once, with the closing zero; longer values come in pieces.
constexpr std::size_t Stueckgroesse = 2048;
constexpr SQLLEN Zeichenbreite = sizeof(char16_t);

/// The characters as they are: QString::fromUtf16 would take a first U+FEFF for a mark of the byte order.
QString als_text(const char16_t* zeichen, qsizetype anzahl) {
  return QString(reinterpret_cast<const QChar*>(zeichen), anzahl);
}

bool ist_gleich(const Wert* wert, const char16_t* zeichen, qsizetype anzahl) {
  const QString* text = wert ? std::get_if<QString>(wert) : nullptr;
  return text && text->size() == anzahl && QStringView(zeichen, anzahl) == *text;
}

}  // namespace

OdbcWerte::OdbcWerte(OdbcSchicht& odbc, SQLHSTMT anweisung, std::function<void()> fehler)
    : odbc_(odbc), anweisung_(anweisung), fehler_(std::move(fehler)), stueck_(Stueckgroesse) {}

void OdbcWerte::pruefe(SQLRETURN ergebnis) {
  if (!SQL_SUCCEEDED(ergebnis)) fehler_();
}

Ergebnis OdbcWerte::lies(SQLSMALLINT spalten) {
  Ergebnis ergebnis;
  const auto breite = static_cast<std::size_t>(spalten);
  for (SQLUSMALLINT i = 1; i <= breite; ++i) ergebnis.spalten.append(lies_spalte(i));
  std::vector<Wert>& werte = ergebnis.werte;
  SQLRETURN schritt = odbc_.Fetch(anweisung_);
  for (; schritt != SQL_NO_DATA; schritt = odbc_.Fetch(anweisung_)) {
    pruefe(schritt);
    const bool erste = werte.empty();
    // Grown here by whole rows, so that the row above stays where it is while this one is read.
    if (werte.capacity() < werte.size() + breite) werte.reserve(2 * werte.size() + 16 * breite);
    for (std::size_t i = 0; i < breite; ++i) {
      const Wert* darueber = erste ? nullptr : werte.data() + (werte.size() - breite);
      werte.push_back(lies_wert(static_cast<SQLUSMALLINT>(i + 1), lesarten_[i], darueber));
    }
  }
  return ergebnis;
}

QString OdbcWerte::lies_spalte(SQLUSMALLINT spalte) {
  std::vector<char16_t> name(256);
  SQLSMALLINT laenge = 0;
  SQLSMALLINT typ = SQL_WVARCHAR;
  const auto beschreibe = [&] {
    pruefe(odbc_.DescribeCol(anweisung_, spalte, name.data(), static_cast<SQLSMALLINT>(name.size()), &laenge, &typ));
    return static_cast<std::size_t>(std::max<SQLSMALLINT>(laenge, 0));
  };
  if (const std::size_t ganze = beschreibe(); ganze >= name.size()) {
    name.resize(std::min<std::size_t>(ganze + 1, 32767));
    beschreibe();
  }
  lesarten_.push_back(lesart(typ));
  return als_text(name.data(), std::clamp<qsizetype>(laenge, 0, static_cast<qsizetype>(name.size()) - 1));
}

OdbcWerte::Lesart OdbcWerte::lesart(SQLSMALLINT typ) {
  switch (typ) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return Lesart::Ganzzahl;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return Lesart::Zahl;
    default:
      return Lesart::Text;
  }
}

/// False where the value has nothing more to give.
bool OdbcWerte::hole(SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laenge) {
  const SQLRETURN ergebnis = odbc_.GetData(anweisung_, spalte, art, ziel, platz, laenge);
  if (ergebnis == SQL_NO_DATA) return false;
  pruefe(ergebnis);
  return true;
}

Wert OdbcWerte::lies_wert(SQLUSMALLINT spalte, Lesart art, const Wert* darueber) {
  SQLLEN laenge = SQL_NULL_DATA;
  std::int64_t ganze = 0;
  double zahl = 0;
  switch (art) {
    case Lesart::Ganzzahl:
      if (!hole(spalte, SQL_C_SBIGINT, &ganze, sizeof ganze, &laenge) || laenge == SQL_NULL_DATA) return {};
      return ganze;
    case Lesart::Zahl:
      if (!hole(spalte, SQL_C_DOUBLE, &zahl, sizeof zahl, &laenge) || laenge == SQL_NULL_DATA) return {};
      return zahl;
    default:
      return lies_text(spalte, darueber);
  }
}

/// Columns of a record repeat from row to row, so the text of the row above is shared where it is equal.
Wert OdbcWerte::lies_text(SQLUSMALLINT spalte, const Wert* darueber) {
  const SQLLEN platz = static_cast<SQLLEN>(stueck_.size()) * Zeichenbreite;
  SQLLEN laenge = SQL_NULL_DATA;
  if (!hole(spalte, SQL_C_WCHAR, stueck_.data(), platz, &laenge)) return QString();
  if (laenge == SQL_NULL_DATA) return {};
  if (laenge < 0 || laenge > platz - Zeichenbreite) return lies_stuecke(spalte, laenge);
  const auto anzahl = static_cast<qsizetype>(laenge / Zeichenbreite);
  if (ist_gleich(darueber, stueck_.data(), anzahl)) return *darueber;
  return als_text(stueck_.data(), anzahl);
}

/// The rest of a value whose first piece fills `stueck_`. `laenge` is what was left before that piece, in bytes, or
/// SQL_NO_TOTAL. A driver that never parts a pair of surrogates leaves the last place of a piece free; how much a piece
/// held is then told by what is left after it, and where that is unknown by the zero at its end.
QString OdbcWerte::lies_stuecke(SQLUSMALLINT spalte, SQLLEN laenge) {
  const SQLLEN platz = static_cast<SQLLEN>(stueck_.size()) * Zeichenbreite;
  const auto volle = static_cast<qsizetype>(stueck_.size()) - 1;
  QString ganzer;
  for (;;) {
    const bool luecke = stueck_[static_cast<std::size_t>(volle) - 1] == u'\0';
    ganzer.append(als_text(stueck_.data(), volle));
    SQLLEN danach = 0;
    const bool mehr = hole(spalte, SQL_C_WCHAR, stueck_.data(), platz, &danach);
    const bool gezaehlt = laenge >= 0 && mehr && danach >= 0 && danach < laenge;
    if (gezaehlt ? laenge - danach == (volle - 1) * Zeichenbreite : luecke) ganzer.chop(1);
    if (!mehr) return ganzer;
    if (danach >= 0 && danach <= platz - Zeichenbreite)
      return ganzer + als_text(stueck_.data(), static_cast<qsizetype>(danach / Zeichenbreite));
    laenge = danach;
  }
}

}  // namespace adodb
