#pragma once

#include <string_view>

struct sqlite3;

namespace adodb {

/// Compares two UTF-8 texts as the field's server does: the case of all letters is ignored, one character to one
/// (Unicode simple case folding, CaseFolding.txt status C and S), and the shorter text counts as filled up with
/// blanks (U+0020), so trailing ones are ignored. Negative, 0 or positive. Bytes that are no UTF-8 compare as
/// characters of their own behind all others. A strict weak order.
int vergleiche_Servertext(std::string_view a, std::string_view b) noexcept;

/// Enters into an SQLite connection what the schema needs:
/// - the collation SERVERTEXT (vergleiche_Servertext);
/// - the function LEN(x): the number of 16-bit characters without trailing blanks, as the server counts; NULL of NULL.
/// Gives SQLite's result code.
int richte_Servertext_ein(sqlite3* datenbank) noexcept;

}  // namespace adodb
