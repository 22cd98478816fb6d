#pragma once

#include "host/betrieb/befehl/Befehlszeile.h"
#include "host/betrieb/vorgang/Datensatz.h"

/// The business record that a call names.
namespace datensatzangaben {

/// The one record of a call; --key1 and --typ1 are needed.
Datensatz genau(const Aufruf& aufruf);
/// What a call narrows a list to; a part that was given empty means "-".
Datensatz filter(const Aufruf& aufruf);

}  // namespace datensatzangaben
