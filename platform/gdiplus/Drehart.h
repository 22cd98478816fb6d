#pragma once

#include <cstdint>

namespace gdiplus {

/// The kinds of turning a picture, with GDI+'s numbers (learn.microsoft.com, "EncoderValue enumeration"). Turns are
/// clockwise; the mirrorings exchange left and right, and top and bottom.
enum Drehart : std::int32_t { Um90 = 13, Um180 = 14, Um270 = 15, Waagerecht = 16, Senkrecht = 17 };

}  // namespace gdiplus
