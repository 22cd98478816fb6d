#include "platform/adodb/Treiber.h"

#include <utility>

#include "platform/adodb/Adofehler.h"

namespace adodb {

Datenbankfehler::Datenbankfehler(
    std::int32_t nummer, QString beschreibung, QString sqlstate, std::int32_t native_Nummer)
    : Laufzeitfehler(nummer, std::move(beschreibung)), sqlstate_(std::move(sqlstate)), native_Nummer_(native_Nummer) {}

Datenbankfehler::~Datenbankfehler() = default;

Treiber::~Treiber() = default;

Ergebnis Treiber::fuehre_aus(const QString& text, const std::vector<Wert>& werte) {
  if (!werte.empty()) throw adofehler(adErrFeatureNotAvailable);
  return fuehre_aus(text);
}

void Treiber::gib_auf() noexcept {}

}  // namespace adodb
