#include "platform/gdiplus/miniatur/Klassen.h"

#include <algorithm>
#include <cstdint>

namespace miniatur {

QSize eintragsgroesse(QSize original, int kante) noexcept {
  const std::int64_t laengere = std::max(original.width(), original.height());
  if (laengere <= 0) return {};
  const auto seite = [&](std::int64_t s) {
    return static_cast<int>(std::max<std::int64_t>((2 * s * kante + laengere) / (2 * laengere), 1));
  };
  return {seite(original.width()), seite(original.height())};
}

bool reicht(const Klasse& klasse, QSize eintrag, QSize ziel) noexcept {
  const auto seite_reicht = [&](std::int64_t seite, std::int64_t wunsch) {
    return 100 * seite >= klasse.prozent * wunsch;
  };
  return seite_reicht(eintrag.width(), ziel.width()) && seite_reicht(eintrag.height(), ziel.height());
}

bool lohnt(QSize original, int kante) noexcept {
  return std::max(original.width(), original.height()) / 3 >= kante;
}

}  // namespace miniatur
