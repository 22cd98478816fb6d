#pragma once

#include <QByteArrayView>
#include <cstdint>

/// Bytes of a file, read at any position without ever leaving them: what lies outside reads as 0. Ask `hat` first where
/// a missing byte must be told from a zero.
class Bytesicht {
 public:
  explicit Bytesicht(QByteArrayView bytes) noexcept : bytes_(bytes) {}

  qsizetype laenge() const noexcept { return bytes_.size(); }
  /// `anzahl` bytes from `position` on lie inside.
  bool hat(std::uint64_t position, std::uint64_t anzahl) const noexcept {
    const auto alle = static_cast<std::uint64_t>(bytes_.size());
    return position <= alle && anzahl <= alle - position;
  }
  bool beginnt(QByteArrayView muster, qsizetype position = 0) const noexcept {
    return hat(static_cast<std::uint64_t>(position), static_cast<std::uint64_t>(muster.size())) &&
        bytes_.sliced(position, muster.size()) == muster;
  }
  std::uint8_t u8(std::uint64_t position) const noexcept {
    return hat(position, 1) ? static_cast<std::uint8_t>(bytes_[static_cast<qsizetype>(position)]) : std::uint8_t{0};
  }
  /// Unsigned numbers of 2, 4 and 8 bytes, most significant byte first or last.
  std::uint64_t zahl(std::uint64_t position, unsigned breite, bool hohes_zuerst) const noexcept {
    std::uint64_t wert = 0;
    for (unsigned i = 0; i < breite; ++i) wert = wert << 8 | u8(position + (hohes_zuerst ? i : breite - 1 - i));
    return wert;
  }
  std::uint16_t u16_hoch(std::uint64_t p) const noexcept { return static_cast<std::uint16_t>(zahl(p, 2, true)); }
  std::uint16_t u16_tief(std::uint64_t p) const noexcept { return static_cast<std::uint16_t>(zahl(p, 2, false)); }
  std::uint32_t u32_hoch(std::uint64_t p) const noexcept { return static_cast<std::uint32_t>(zahl(p, 4, true)); }
  std::uint32_t u32_tief(std::uint64_t p) const noexcept { return static_cast<std::uint32_t>(zahl(p, 4, false)); }

 private:
  QByteArrayView bytes_;
};
