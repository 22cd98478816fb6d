#include "exif/Dateibytes.h"

#include <algorithm>
#include <limits>

#include "exif/Bytepaar.h"
#include "platform/basic/Fehlerbehandlung.h"

namespace {

constexpr std::int64_t Suchlaenge = 64LL * 1024;

}  // namespace

void Dateibytes::oeffne(const QString& pfad) {
  schliesse();
  datei_.oeffne_Binaer(pfad);
  const std::int64_t laenge = datei_.laenge();
  if (laenge > std::numeric_limits<std::int32_t>::max()) {
    schliesse();
    throw Laufzeitfehler(fehlernummer::Ueberlauf);
  }
  bloecke_.resize(static_cast<std::size_t>(std::min(laenge / Blocklaenge + 1, Hoechstzahl_Bloecke)));
  obergrenze_ = static_cast<std::int32_t>(laenge);
}

void Dateibytes::schliesse() noexcept {
  datei_.schliesse();
  obergrenze_ = -1;
  bloecke_.clear();
  block_ = {};
  block_von_ = 0;
  lesefehler_.reset();
}

std::span<const std::uint8_t> Dateibytes::ab(std::int64_t index) {
  if (index > std::numeric_limits<std::int32_t>::max()) throw Laufzeitfehler(fehlernummer::Ueberlauf);
  if (index < 0 || index > obergrenze_) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  const std::int64_t nummer = index / Blocklaenge;
  auto& block = bloecke_[static_cast<std::size_t>(nummer) % bloecke_.size()];
  if (!block) block = std::make_unique<Block>();
  if (block->nummer != nummer) lade(*block, nummer);
  block_von_ = nummer * Blocklaenge;
  const auto laenge = static_cast<std::size_t>(std::min(Blocklaenge, std::int64_t{obergrenze_} + 1 - block_von_));
  block_ = std::span(block->bytes).first(laenge);
  return block_.subspan(static_cast<std::size_t>(index - block_von_));
}

void Dateibytes::lade(Block& block, std::int64_t nummer) {
  // The block may be the one asked for last: until it is whole, nobody may take bytes from it.
  block_ = {};
  block.nummer = -1;
  lies(nummer * Blocklaenge, block.bytes);
  block.nummer = nummer;
}

void Dateibytes::lies(std::int64_t position, std::span<std::uint8_t> ziel) {
  // The file may have grown since it was opened: what stands behind its length then is not part of the array.
  const auto vorhanden = std::clamp<std::int64_t>(obergrenze_ - position, 0, std::ssize(ziel));
  const auto gelesen = fehler::melden_und_enden(
      [this](const Laufzeitfehler& fehler) {
    lesefehler_ = fehler;
    throw fehler;
      },
      [&] { return datei_.lies(position, std::as_writable_bytes(ziel.first(static_cast<std::size_t>(vorhanden)))); });
  std::ranges::fill(ziel.subspan(gelesen), std::uint8_t{0});
}

std::optional<std::int32_t> Dateibytes::finde_Paar(std::uint8_t erstes, std::uint8_t zweites, std::int32_t ab_index) {
  if (ab_index > obergrenze_) return std::nullopt;
  // As a rule the pair stands in the first block, which will be needed anyway.
  const auto anfang = ab(ab_index);
  if (const auto treffer = finde_Bytepaar(anfang, erstes, zweites))
    return ab_index + static_cast<std::int32_t>(*treffer);

  // In front of each piece stands the last byte of the one before, for a pair across the edge.
  constexpr std::size_t Davor = 64;
  const auto speicher = std::make_unique_for_overwrite<std::uint8_t[]>(Davor + Suchlaenge);
  const std::span puffer(speicher.get(), Davor + Suchlaenge);
  puffer[Davor - 1] = anfang.back();
  for (std::int64_t von = ab_index + std::ssize(anfang); von < obergrenze_;) {
    const auto laenge = static_cast<std::size_t>(std::min<std::int64_t>(Suchlaenge, obergrenze_ - von));
    lies(von, puffer.subspan(Davor, laenge));
    const auto stueck = std::span<const std::uint8_t>(puffer).subspan(Davor - 1, laenge + 1);
    if (const auto treffer = finde_Bytepaar(stueck, erstes, zweites))
      return static_cast<std::int32_t>(von - 1 + static_cast<std::int64_t>(*treffer));
    puffer[Davor - 1] = stueck.back();
    von += static_cast<std::int64_t>(laenge);
  }
  return std::nullopt;
}
