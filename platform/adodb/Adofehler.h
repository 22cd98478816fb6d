#pragma once

#include <cstdint>

#include "platform/basic/Laufzeitfehler.h"

namespace adodb {

/// ADO's own failures, under the names and numbers of its ErrorValueEnum.
inline constexpr std::int32_t adErrInvalidArgument = 3001;
inline constexpr std::int32_t adErrNoCurrentRecord = 3021;
inline constexpr std::int32_t adErrItemNotFound = 3265;
inline constexpr std::int32_t adErrObjectClosed = 3704;
inline constexpr std::int32_t adErrObjectOpen = 3705;
inline constexpr std::int32_t adErrProviderNotFound = 3706;
inline constexpr std::int32_t adErrInvalidConnection = 3709;

/// The failure of one of these numbers in its German words.
Laufzeitfehler adofehler(std::int32_t nummer);

}  // namespace adodb
