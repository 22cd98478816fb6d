#pragma once

#include <cstddef>
#include <utility>

/// The value that stands beside a key in a table, or `sonst` where the key is not in it.
template <class Schluessel, class Wert, std::size_t N>
constexpr Wert nachgeschlagen(const std::pair<Schluessel, Wert> (&tabelle)[N], Schluessel schluessel, Wert sonst) {
  for (const auto& [einer, wert] : tabelle)
    if (einer == schluessel) return wert;
  return sonst;
}
