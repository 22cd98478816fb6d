#pragma once

#include <cstdint>

#include "platform/basic/Laufzeitfehler.h"

namespace adodb {

/// ADO's own failures, under the names and numbers of its ErrorValueEnum.
enum ErrorValueEnum : std::int32_t {
  adErrInvalidArgument = 3001,
  adErrNoCurrentRecord = 3021,
  adErrFeatureNotAvailable = 3251,
  adErrItemNotFound = fehlernummer::SpalteFehlt,
  adErrObjectClosed = fehlernummer::ObjektGeschlossen,
  adErrObjectOpen = 3705,
  adErrProviderNotFound = 3706,
  adErrInvalidConnection = fehlernummer::VerbindungGeschlossen,
};

/// The failure of one of these numbers in its German words.
Laufzeitfehler adofehler(std::int32_t nummer);

}  // namespace adodb
