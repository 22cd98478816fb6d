#pragma once

#include <array>
#include <cstdint>

/// Colours as the forms know them: a number, blue in the high byte, then green, red in the low byte.
using Farbe = std::uint32_t;

namespace farben {

inline constexpr Farbe Rot = 255;
inline constexpr Farbe Gruen = 65280;
inline constexpr Farbe Hellgruen = 0xC0FFC0;
inline constexpr Farbe Hellrot = 0xC0C0FF;
inline constexpr Farbe Hellgrau = 0xC0C0C0;

/// The classic 16 colours, by their numbers 0 to 15.
inline constexpr std::array<Farbe, 16> Klassisch{0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080,
    0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

}  // namespace farben
