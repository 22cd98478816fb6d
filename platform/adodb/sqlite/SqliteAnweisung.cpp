#include "platform/adodb/sqlite/SqliteAnweisung.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "platform/adodb/Parameter.h"
#include "platform/basic/Windows1252.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {

void SqliteAbschluss::operator()(sqlite3_stmt* anweisung) const noexcept {
  sqlite3_finalize(anweisung);
}

SqliteAnweisung SqliteVorrat::nimm(const QString& text) {
  const auto platz =
      std::find_if(plaetze_.begin(), plaetze_.end(), [&text](const Platz& p) { return p.anweisung && p.text == text; });
  return platz == plaetze_.end() ? SqliteAnweisung() : std::move(platz->anweisung);
}

void SqliteVorrat::lege_zurueck(const QString& text, SqliteAnweisung anweisung) noexcept {
  sqlite3_reset(anweisung.get());
  sqlite3_clear_bindings(anweisung.get());
  // The place that this one left is free; without one the last goes.
  const auto frei =
      std::find_if(plaetze_.begin(), plaetze_.end() - 1, [](const Platz& p) { return p.anweisung == nullptr; });
  *frei = {text, std::move(anweisung)};
  std::rotate(plaetze_.begin(), frei, frei + 1);
}

void pruefe_Marken(sqlite3_stmt* anweisung, std::size_t werte) {
  const int anzahl = sqlite3_bind_parameter_count(anweisung);
  if (anzahl > 0 && werte == 0) keine_Anweisung(u"der Text enthält Parameter ohne Wert"_s, u"07002"_s);
  for (int i = 1; i <= anzahl; ++i)
    if (sqlite3_bind_parameter_name(anweisung, i))
      keine_Anweisung(u"der Text enthält Parameter mit Namen oder Nummer, erlaubt ist nur „?“"_s);
  pruefe_Anzahl(static_cast<std::size_t>(anzahl), werte);
}

namespace {

int binde_Wert(sqlite3_stmt* anweisung, int nummer, const Wert& wert, std::vector<QByteArray>& texte) {
  if (const auto* text = std::get_if<QString>(&wert)) {
    const QByteArray& utf8 = texte.emplace_back(text->toUtf8());
    return sqlite3_bind_text64(
        anweisung, nummer, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()), SQLITE_STATIC, SQLITE_UTF8);
  }
  if (const auto* ganze = std::get_if<std::int64_t>(&wert)) return sqlite3_bind_int64(anweisung, nummer, *ganze);
  if (const auto* zahl = std::get_if<double>(&wert)) return sqlite3_bind_double(anweisung, nummer, *zahl);
  return sqlite3_bind_null(anweisung, nummer);
}

/// Reads one value of the current row behind the others.
void lies_Wert(sqlite3_stmt* anweisung, int spalte, std::size_t breite, Werte& werte) {
  switch (sqlite3_column_type(anweisung, spalte)) {
    case SQLITE_TEXT: {
      const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(anweisung, spalte));
      werte.haenge_utf8_an(bytes, static_cast<std::size_t>(sqlite3_column_bytes(anweisung, spalte)), breite);
      break;
    }
    case SQLITE_INTEGER:
      werte.haenge_zahl_an(std::int64_t{sqlite3_column_int64(anweisung, spalte)});
      break;
    case SQLITE_FLOAT:
      werte.haenge_zahl_an(sqlite3_column_double(anweisung, spalte));
      break;
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(anweisung, spalte));
      werte.haenge_text_an(windows1252::decode(QByteArrayView(bytes, sqlite3_column_bytes(anweisung, spalte))), breite);
      break;
    }
    default:
      werte.haenge_null_an();
  }
}

}  // namespace

std::vector<QByteArray> binde(sqlite3_stmt* anweisung, const std::vector<Wert>& werte) {
  std::vector<QByteArray> texte;
  texte.reserve(werte.size());
  int nummer = 0;
  for (const Wert& wert : werte)
    if (binde_Wert(anweisung, ++nummer, wert, texte) != SQLITE_OK)
      keine_Anweisung(u"der %1. Wert ist zu lang"_s.arg(nummer), u"22001"_s);
  return texte;
}

Ergebnis lies_Zeilen(sqlite3_stmt* anweisung, int& schritt) {
  Ergebnis ergebnis;
  const int spalten = sqlite3_column_count(anweisung);
  ergebnis.spalten.reserve(spalten);
  for (int i = 0; i < spalten; ++i) ergebnis.spalten.append(QString::fromUtf8(sqlite3_column_name(anweisung, i)));
  for (; schritt == SQLITE_ROW; schritt = sqlite3_step(anweisung))
    for (int i = 0; i < spalten; ++i) lies_Wert(anweisung, i, static_cast<std::size_t>(spalten), ergebnis.werte);
  return ergebnis;
}

}  // namespace adodb
