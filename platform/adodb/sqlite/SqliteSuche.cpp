#include "platform/adodb/sqlite/SqliteSuche.h"

#include <sqlite3.h>

#include <QString>

#include "platform/basic/Suchworte.h"

namespace adodb {
namespace {

using Wandlung = QString (*)(QStringView);

/// No exception may pass through SQLite; the only one that can come up is that the memory is short.
template <Wandlung wandle>
void rufe(sqlite3_context* kontext, int, sqlite3_value** werte) {
  if (sqlite3_value_type(werte[0]) == SQLITE_NULL) return;
  try {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(werte[0]));
    if (!bytes) return sqlite3_result_error_nomem(kontext);
    const QByteArray ergebnis = wandle(QString::fromUtf8(bytes, sqlite3_value_bytes(werte[0]))).toUtf8();
    sqlite3_result_text(kontext, ergebnis.constData(), static_cast<int>(ergebnis.size()), SQLITE_TRANSIENT);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(kontext);
  }
}

}  // namespace

int richte_Suche_ein(sqlite3* datenbank) noexcept {
  constexpr int Art = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  const int ergebnis = sqlite3_create_function_v2(
      datenbank, "SUCHTEXT", 1, Art, nullptr, rufe<suchworte::gefaltet>, nullptr, nullptr, nullptr);
  if (ergebnis != SQLITE_OK) return ergebnis;
  return sqlite3_create_function_v2(
      datenbank, "WORTANFAENGE", 1, Art, nullptr, rufe<suchworte::anfaenge>, nullptr, nullptr, nullptr);
}

}  // namespace adodb
