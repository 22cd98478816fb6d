#pragma once

#include <QSize>
#include <array>

/// The sizes that the standard knows, and which of them serves what is to be shown.
namespace miniatur {

struct Klasse {
  int kante;           ///< side of the square that an entry fits into, in pixels
  const char* ordner;  ///< name of the folder of that size
  /// So many times as large as what is shown, in percent, an entry must be. What is scaled twice gets softer, and the
  /// smaller an entry, the more of its pixels are detail. Measured with photos against what is shown without entries:
  /// 35 dB or better.
  int prozent;
};
/// From the smallest to the largest.
inline constexpr std::array<Klasse, 4> Klassen{
    {{128, "normal", 200}, {256, "large", 150}, {512, "x-large", 150}, {1024, "xx-large", 125}}};

/// Size of the entry of an original: its longer side is the edge, the other one goes by the proportions, at least 1.
QSize eintragsgroesse(QSize original, int kante) noexcept;

/// An entry of that size reaches for what is shown at `ziel`.
bool reicht(const Klasse& klasse, QSize eintrag, QSize ziel) noexcept;

/// The original is so much larger than its entry that the entry is read sooner, and hardly to be told from it.
bool lohnt(QSize original, int kante) noexcept;

}  // namespace miniatur
