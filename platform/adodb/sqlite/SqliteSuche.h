#pragma once

struct sqlite3;

namespace adodb {

/// Enters into an SQLite connection what the search in a firm's records needs, NULL of NULL:
/// - SUCHTEXT(text): suchworte::gefaltet;
/// - WORTANFAENGE(text): suchworte::anfaenge.
/// Gives SQLite's result code.
int richte_Suche_ein(sqlite3* datenbank) noexcept;

}  // namespace adodb
