#include "platform/adodb/Treiber.h"

#include <utility>

namespace adodb {

Datenbankfehler::Datenbankfehler(
    std::int32_t nummer, QString beschreibung, QString sqlstate, std::int32_t native_Nummer)
    : Laufzeitfehler(nummer, std::move(beschreibung)), sqlstate_(std::move(sqlstate)), native_Nummer_(native_Nummer) {}

Datenbankfehler::~Datenbankfehler() = default;

Treiber::~Treiber() = default;

}  // namespace adodb
