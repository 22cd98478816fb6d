#pragma once

#include <QString>
#include <QStringView>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/adodb/Treiber.h"

namespace adodb {

/// Number of the markers "?" in a text of the field's server: those in literals, quoted names and comments are none.
std::size_t zaehle_Marken(QStringView text);

/// Raises -2147217900, before anything ran, when the text has `marken` markers for another number of values.
void pruefe_Anzahl(std::size_t marken, std::size_t werte);

/// Raises -2147217900 for values that not every database keeps as they are: a text with a zero character, which some
/// take for its end, and a number that is infinite or none, which SQLite would write as NULL.
void pruefe_Werte(const std::vector<Wert>& werte);

/// A statement that can't be run, -2147217900; nothing of it ran.
[[noreturn]] void keine_Anweisung(const QString& worte, const QString& sqlstate = QStringLiteral("42000"));

/// The failure of a statement that `gib_auf` ended.
Datenbankfehler aufgegebene_Anweisung(std::int32_t native_Nummer = 0);

}  // namespace adodb
