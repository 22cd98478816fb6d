#pragma once

#include <cstdint>

/// The sessions of the picture operations: a plain count for the whole process.
namespace gdiplus::bildersitzung {

/// At least one session runs.
bool laeuft() noexcept;

/// The next start gives this status and starts nothing; 0 takes the order back. For tests only: by itself no start of
/// version 1 fails here.
void naechster_Start(std::int32_t status) noexcept;

}  // namespace gdiplus::bildersitzung
