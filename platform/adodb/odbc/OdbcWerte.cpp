#include "platform/adodb/odbc/OdbcWerte.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

/// Characters that are fetched at once, with the closing zero; longer values come in pieces.
constexpr std::size_t Stueckgroesse = 2048;
constexpr SQLLEN Zeichenbreite = sizeof(char16_t);

/// The characters as they are: QString::fromUtf16 would take a first U+FEFF for a mark of the byte order.
QString als_QString(const char16_t* zeichen, qsizetype anzahl) {
  return QString(reinterpret_cast<const QChar*>(zeichen), anzahl);
}

[[noreturn]] void zu_lang() {
  throw Datenbankfehler(fehlernummer::Anweisung,
      u"Die Anweisung ist fehlgeschlagen: ein Wert ist länger, als der ODBC-Treiber für seine "
      "Spalte angibt"_s,
      u"22001"_s, 0);
}

}  // namespace

OdbcWerte::OdbcWerte(
    OdbcSchicht& odbc, SQLHSTMT anweisung, std::function<void()> fehler, std::function<SQLRETURN(const Ruf&)> rufe)
    : odbc_(odbc),
      anweisung_(anweisung),
      fehler_(std::move(fehler)),
      rufe_(std::move(rufe)),
      bindung_(odbc, anweisung),
      stueck_(Stueckgroesse) {}

Ergebnis OdbcWerte::lies(SQLSMALLINT spalten) {
  Ergebnis ergebnis;
  const auto breite = static_cast<std::size_t>(spalten);
  for (SQLUSMALLINT i = 1; i <= breite; ++i) ergebnis.spalten.append(lies_Spalte(i));
  bindung_.binde();
  Werte& werte = ergebnis.werte;
  for (SQLRETURN schritt = hole_Block(); schritt != SQL_NO_DATA; schritt = hole_Block()) {
    pruefe(schritt);
    // A driver that says neither rows nor an end would be asked for ever.
    if (bindung_.zeilen() == 0) fehler_();
    nimm_Block(werte);
  }
  return ergebnis;
}

SQLRETURN OdbcWerte::hole_Block() {
  return rufe_([this] { return bindung_.hole(); });
}

/// Reads the rows of the block behind the others, column by column.
void OdbcWerte::nimm_Block(Werte& werte) {
  const std::size_t zeilen = bindung_.zeilen();
  const std::size_t breite = lesarten_.size();
  for (std::size_t i = 0; i < zeilen; ++i)
    if (bindung_.gescheitert(i)) fehler_();
  const std::size_t erster = werte.haenge_zeilen_an(zeilen, breite);
  for (std::size_t spalte = 0; spalte < bindung_.spalten(); ++spalte)
    for (std::size_t i = 0; i < zeilen; ++i) nimm_gebundenen(spalte, i, erster + i * breite + spalte, werte);
  // Columns that are not bound allow one row at a time.
  for (std::size_t spalte = bindung_.spalten(); spalte < breite; ++spalte)
    lies_Wert(static_cast<SQLUSMALLINT>(spalte + 1), lesarten_[spalte], erster + spalte, werte);
}

void OdbcWerte::nimm_gebundenen(std::size_t spalte, std::size_t zeile, std::size_t nummer, Werte& werte) {
  const SQLLEN laenge = bindung_.laenge(spalte, zeile);
  if (laenge == SQL_NULL_DATA) return;
  const char* stelle = bindung_.wert(spalte, zeile);
  if (lesarten_[spalte] == Lesart::Ganzzahl) {
    std::int64_t ganze = 0;
    std::memcpy(&ganze, stelle, sizeof ganze);
    werte.setze_zahl(nummer, ganze);
  } else if (lesarten_[spalte] == Lesart::Zahl) {
    double zahl = 0;
    std::memcpy(&zahl, stelle, sizeof zahl);
    werte.setze_zahl(nummer, zahl);
  } else {
    // A value that was cut is none: better a failure than a text that the table does not hold.
    if (laenge < 0 || laenge > bindung_.platz(spalte) - Zeichenbreite) zu_lang();
    const auto* zeichen = reinterpret_cast<const char16_t*>(stelle);
    werte.setze_text(nummer, QStringView(zeichen, laenge / Zeichenbreite), lesarten_.size());
  }
}

QString OdbcWerte::lies_Spalte(SQLUSMALLINT spalte) {
  std::vector<char16_t> name(256);
  SQLSMALLINT laenge = 0;
  SQLSMALLINT typ = SQL_WVARCHAR;
  SQLULEN groesse = 0;
  const auto beschreibe = [&] {
    pruefe(odbc_.DescribeCol(
        anweisung_, spalte, name.data(), static_cast<SQLSMALLINT>(name.size()), &laenge, &typ, &groesse));
    return static_cast<std::size_t>(std::max<SQLSMALLINT>(laenge, 0));
  };
  if (const std::size_t ganze = beschreibe(); ganze >= name.size()) {
    name.resize(std::min<std::size_t>(ganze + 1, 32767));
    beschreibe();
  }
  lesarten_.push_back(lesart(typ));
  constexpr SQLSMALLINT Ziele[] = {SQL_C_SBIGINT, SQL_C_DOUBLE, SQL_C_WCHAR};
  bindung_.merke_vor(Ziele[static_cast<int>(lesarten_.back())], typ, groesse);
  return als_QString(name.data(), std::clamp<qsizetype>(laenge, 0, static_cast<qsizetype>(name.size()) - 1));
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

/// Fetches one value of the current row; NULL leaves it as it is.
void OdbcWerte::lies_Wert(SQLUSMALLINT spalte, Lesart art, std::size_t nummer, Werte& werte) {
  SQLLEN laenge = SQL_NULL_DATA;
  std::int64_t ganze = 0;
  double zahl = 0;
  switch (art) {
    case Lesart::Ganzzahl:
      if (hole(spalte, SQL_C_SBIGINT, &ganze, sizeof ganze, &laenge) && laenge != SQL_NULL_DATA)
        werte.setze_zahl(nummer, ganze);
      break;
    case Lesart::Zahl:
      if (hole(spalte, SQL_C_DOUBLE, &zahl, sizeof zahl, &laenge) && laenge != SQL_NULL_DATA)
        werte.setze_zahl(nummer, zahl);
      break;
    default:
      lies_Text(spalte, nummer, werte);
  }
}

void OdbcWerte::lies_Text(SQLUSMALLINT spalte, std::size_t nummer, Werte& werte) {
  const SQLLEN platz = static_cast<SQLLEN>(stueck_.size()) * Zeichenbreite;
  SQLLEN laenge = SQL_NULL_DATA;
  const std::size_t breite = lesarten_.size();
  if (!hole(spalte, SQL_C_WCHAR, stueck_.data(), platz, &laenge))
    werte.setze_text(nummer, QStringView(), breite);
  else if (laenge < 0 ? laenge != SQL_NULL_DATA : laenge > platz - Zeichenbreite)
    werte.setze_text(nummer, lies_Stuecke(spalte, laenge), breite);
  else if (laenge != SQL_NULL_DATA)
    werte.setze_text(nummer, QStringView(stueck_.data(), laenge / Zeichenbreite), breite);
}

/// The rest of a value whose first piece fills `stueck_`. `laenge` is what was left before that piece, in bytes, or
/// SQL_NO_TOTAL. A driver that never splits a surrogate pair may leave the last place of a piece free. How much the
/// piece held then follows from what is left after it or, where that is unknown, from its closing zero.
QString OdbcWerte::lies_Stuecke(SQLUSMALLINT spalte, SQLLEN laenge) {
  const SQLLEN platz = static_cast<SQLLEN>(stueck_.size()) * Zeichenbreite;
  const auto volle = static_cast<qsizetype>(stueck_.size()) - 1;
  QString ganzer;
  for (;;) {
    const bool luecke = stueck_[static_cast<std::size_t>(volle) - 1] == u'\0';
    ganzer.append(als_QString(stueck_.data(), volle));
    SQLLEN danach = 0;
    const bool mehr = hole(spalte, SQL_C_WCHAR, stueck_.data(), platz, &danach);
    const bool gezaehlt = laenge >= 0 && mehr && danach >= 0 && danach < laenge;
    if (gezaehlt ? laenge - danach == (volle - 1) * Zeichenbreite : luecke) ganzer.chop(1);
    if (!mehr) return ganzer;
    if (danach >= 0 && danach <= platz - Zeichenbreite)
      return ganzer + als_QString(stueck_.data(), static_cast<qsizetype>(danach / Zeichenbreite));
    laenge = danach;
  }
}

}  // namespace adodb
