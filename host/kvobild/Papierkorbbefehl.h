#pragma once

#include "host/betrieb/befehl/Befehlszeile.h"

/// What "aufraeumen" does with what earlier runs of it have put away. No database is asked.
namespace papierkorbbefehl {

QList<Option> optionen();

/// The folder that was named for the Papierkorb in place of the one beside the picture root, as a path of the table, or
/// none. One that is missing ends with Abbruch, Ausgang::Datei.
std::optional<QString> anderswo(const Aufruf& aufruf);

/// The call is about an earlier run; what else it says does not go with that, or it ends with Abbruch, Ausgang::Aufruf.
bool ist_gemeint(const Aufruf& aufruf);
Ausgang fuehre_aus(const Aufruf& aufruf);

/// Asks on standard error and reads the answer; anything but a yes is none.
bool ist_bestaetigt(const QString& frage);

/// A length in bytes, as "12,3 MB".
QString groesse(std::int64_t bytes);

/// A whole number from `kleinste` on behind an option; anything else ends with Abbruch, Ausgang::Aufruf.
std::optional<int> zahl(const Aufruf& aufruf, const QString& option, int kleinste);

}  // namespace papierkorbbefehl
