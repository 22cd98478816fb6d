#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// The first index where two bytes stand side by side; none where they nowhere do. Takes about a third of the time that
/// it takes to copy the bytes, however often one of the two occurs alone.
std::optional<std::size_t> finde_Bytepaar(
    std::span<const std::uint8_t> bytes, std::uint8_t erstes, std::uint8_t zweites);
