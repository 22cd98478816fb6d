#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Binaerdatei.h"

/// The bytes of a file as an array with the indices 0 to the file's length: one element more than the file, the last
/// one is 0. Nothing is read before it is asked for, in blocks, and at most 16 MB of them are kept, so that a picture
/// of any size costs only the blocks its Exif data lies in. The length is the one at the time of opening; where the
/// file was cut short since, the missing bytes are 0.
class Dateibytes {
 public:
  /// Opens the file as Binaerdatei::oeffne_Binaer does, with its failures. Raises 6 for a length that no 32-bit index
  /// can tell.
  void oeffne(const QString& pfad);
  /// From now on every index is out of range. What was read is forgotten.
  void schliesse() noexcept;

  /// The upper index, which is the file's length; -1 while no file is open.
  std::int32_t Obergrenze() const noexcept { return obergrenze_; }

  /// The byte of an index. Raises 6 for an index above 32 bits, 9 for any other outside the array, 57 when the disk
  /// fails.
  std::uint8_t operator[](std::int64_t index) {
    const auto im_Block = static_cast<std::uint64_t>(index - block_von_);
    return im_Block < block_.size() ? block_[im_Block] : ab(index).front();
  }

  /// The bytes from an index to the end of the block it lies in, at least one. They stay valid until the next call of
  /// any member. Raises as operator[].
  std::span<const std::uint8_t> ab(std::int64_t index);

  /// The first index from `ab` on where `erstes` and, right behind it, `zweites` stand. Neither may be 0. Raises 57.
  std::optional<std::int32_t> finde_Paar(std::uint8_t erstes, std::uint8_t zweites, std::int32_t ab_index);

  /// The failure of the disk that some read has met since the opening, if any: it must be told even where the reader
  /// itself passes over failures.
  const std::optional<Laufzeitfehler>& Lesefehler() const noexcept { return lesefehler_; }

 private:
  static constexpr std::int64_t Blocklaenge = 16LL * 1024;
  static constexpr std::int64_t Hoechstzahl_Bloecke = 1024;

  struct Block {
    std::int64_t nummer = -1;
    std::array<std::uint8_t, Blocklaenge> bytes{};
  };

  void lade(Block& block, std::int64_t nummer);
  void lies(std::int64_t position, std::span<std::uint8_t> ziel);

  Binaerdatei datei_;
  std::int32_t obergrenze_ = -1;
  std::vector<std::unique_ptr<Block>> bloecke_;
  // The block asked for last.
  std::span<const std::uint8_t> block_;
  std::int64_t block_von_ = 0;
  std::optional<Laufzeitfehler> lesefehler_;
};
