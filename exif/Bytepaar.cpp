#include "exif/Bytepaar.h"

namespace {

// A section is tested as a whole; the place is searched only in one that holds the pair.
constexpr std::size_t Abschnitt = 2048;

/// The compiler makes vector code of the loop over a section: it has no branch, its length is known, and its numbers
/// are as wide as the bytes.
[[gnu::always_inline]] inline std::optional<std::size_t> suche(
    std::span<const std::uint8_t> bytes, std::uint8_t erstes, std::uint8_t zweites) {
  std::size_t i = 0;
  for (; i + Abschnitt < bytes.size(); i += Abschnitt) {
    const std::uint8_t* p = bytes.data() + i;
    std::uint8_t treffer = 0;
#pragma GCC unroll 8
    for (std::size_t k = 0; k < Abschnitt; ++k)
      treffer = static_cast<std::uint8_t>(treffer | ((p[k] == erstes) & (p[k + 1] == zweites)));
    if (treffer != 0) break;
  }
  for (; i + 1 < bytes.size(); ++i)
    if (bytes[i] == erstes && bytes[i + 1] == zweites) return i;
  return std::nullopt;
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] std::optional<std::size_t> suche_AVX2(
    std::span<const std::uint8_t> bytes, std::uint8_t erstes, std::uint8_t zweites) {
  return suche(bytes, erstes, zweites);
}
#endif

}  // namespace

std::optional<std::size_t> finde_Bytepaar(
    std::span<const std::uint8_t> bytes, std::uint8_t erstes, std::uint8_t zweites) {
#if defined(__x86_64__)
  static const bool Mit_AVX2 = __builtin_cpu_supports("avx2") != 0;
  if (Mit_AVX2) return suche_AVX2(bytes, erstes, zweites);
#endif
  return suche(bytes, erstes, zweites);
}
