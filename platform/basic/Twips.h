#pragma once

#include <cmath>

/// The measure of the forms: 15 twips to a logical pixel.
namespace twips {

inline constexpr double JePixel = 15;

/// The pixels of a measure; halves go to the even neighbour. What no screen holds is cut.
inline int pixel(double twips) {
  constexpr double Hoechstens = 1 << 24;
  return static_cast<int>(std::nearbyint(std::fmin(std::fmax(twips / JePixel, -Hoechstens), Hoechstens)));
}

inline double aus_Pixel(int pixel) {
  return pixel * JePixel;
}

}  // namespace twips
