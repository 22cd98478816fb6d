#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace miniatur {

/// Watches what asking costs. A cache on a slow disk, or on a share, would cost more than it saves: when the last
/// asks took over 25 ms on average, it is given up. A single one never decides, since a disk may have to wake up.
/// Asks that have not been count as nothing, so that a very slow disk is given up at the second.
class Kostenwache {
 public:
  static constexpr std::size_t Anzahl = 8;
  static constexpr std::int64_t Im_Mittel_ns = 25'000'000;

  void zaehle(std::int64_t dauer_ns) noexcept {
    letzte_[gezaehlt_++ % Anzahl] = dauer_ns;
    const std::int64_t summe = std::accumulate(letzte_.begin(), letzte_.end(), std::int64_t{0});
    if (gezaehlt_ > 1 && summe > Im_Mittel_ns * static_cast<std::int64_t>(Anzahl)) zu_teuer_ = true;
  }
  bool ist_zu_teuer() const noexcept { return zu_teuer_; }

 private:
  std::array<std::int64_t, Anzahl> letzte_{};
  std::size_t gezaehlt_ = 0;
  bool zu_teuer_ = false;
};

}  // namespace miniatur
