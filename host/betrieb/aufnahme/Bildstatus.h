#pragma once

#include <QString>
#include <cstdint>

namespace bildstatus {

/// German words for a status of the picture operations other than 0.
QString worte(std::int32_t status);

}  // namespace bildstatus
