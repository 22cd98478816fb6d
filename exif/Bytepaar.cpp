#include "exif/Bytepaar.h"

#include <bit>
#include <cstring>
#include <utility>

namespace {

// 32 bytes as sixteen 16-bit numbers; GCC and Clang compile operations on it for whatever the processor has.
using Vektor = std::uint16_t __attribute__((vector_size(32)));
constexpr std::size_t Schritt = sizeof(Vektor);
constexpr std::size_t Schritte_je_Runde = 8;
constexpr std::size_t Runde = Schritte_je_Runde * Schritt;
// Looked at as a whole; only where the pair is in it, the place is searched.
constexpr std::size_t Abschnitt = 8 * Runde;

/// Marks in `treffer` the pairs that begin at an even place of the 32 bytes at `p`, and those at an odd one.
[[gnu::always_inline]] inline void vergleiche(Vektor& treffer, const std::uint8_t* p, const Vektor& muster) {
  Vektor gerade;
  Vektor ungerade;
  std::memcpy(&gerade, p, sizeof gerade);
  std::memcpy(&ungerade, p + 1, sizeof ungerade);
  treffer |= static_cast<Vektor>(gerade == muster) | static_cast<Vektor>(ungerade == muster);
}

/// One round without a loop.
template <std::size_t... k>
[[gnu::always_inline]] inline void vergleiche_Runde(
    Vektor& treffer, const std::uint8_t* p, const Vektor& muster, std::index_sequence<k...>) {
  (vergleiche(treffer, p + k * Schritt, muster), ...);
}

/// The pair stands in the section at `p`, which is followed by one byte more.
[[gnu::always_inline]] inline bool im_Abschnitt(const std::uint8_t* p, std::uint16_t paar) {
  const Vektor muster = paar - Vektor{};
  Vektor treffer{};
  for (std::size_t i = 0; i < Abschnitt; i += Runde)
    vergleiche_Runde(treffer, p + i, muster, std::make_index_sequence<Schritte_je_Runde>());
  std::uint64_t worte[Schritt / sizeof(std::uint64_t)];
  std::memcpy(worte, &treffer, sizeof worte);
  return (worte[0] | worte[1] | worte[2] | worte[3]) != 0;
}

[[gnu::always_inline]] inline std::size_t ueberspringe(std::span<const std::uint8_t> bytes, std::uint16_t paar) {
  std::size_t i = 0;
  while (i + Abschnitt < bytes.size() && !im_Abschnitt(bytes.data() + i, paar)) i += Abschnitt;
  return i;
}

/// Start of the first section that holds the pair, or that is not whole any more.
std::size_t ueberspringe_schlicht(std::span<const std::uint8_t> bytes, std::uint16_t paar) {
  return ueberspringe(bytes, paar);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] std::size_t ueberspringe_avx2(std::span<const std::uint8_t> bytes, std::uint16_t paar) {
  return ueberspringe(bytes, paar);
}

std::size_t anfang_der_Suche(std::span<const std::uint8_t> bytes, std::uint16_t paar) {
  static const bool avx2 = __builtin_cpu_supports("avx2") != 0;
  return avx2 ? ueberspringe_avx2(bytes, paar) : ueberspringe_schlicht(bytes, paar);
}
#else
std::size_t anfang_der_Suche(std::span<const std::uint8_t> bytes, std::uint16_t paar) {
  return ueberspringe_schlicht(bytes, paar);
}
#endif

std::uint16_t als_Zahl(std::uint8_t erstes, std::uint8_t zweites) {
  const bool klein_zuerst = std::endian::native == std::endian::little;
  return static_cast<std::uint16_t>(klein_zuerst ? zweites << 8 | erstes : erstes << 8 | zweites);
}

}  // namespace

std::optional<std::size_t> finde_Bytepaar(
    std::span<const std::uint8_t> bytes, std::uint8_t erstes, std::uint8_t zweites) {
  for (std::size_t i = anfang_der_Suche(bytes, als_Zahl(erstes, zweites)); i + 1 < bytes.size(); ++i)
    if (bytes[i] == erstes && bytes[i + 1] == zweites) return i;
  return std::nullopt;
}
