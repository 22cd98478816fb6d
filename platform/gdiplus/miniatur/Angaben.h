#pragma once

#include <QByteArray>
#include <QList>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/gdiplus/bild/Bildkopf.h"

/// What an entry says about its original, and the texts in which it says so.
namespace miniatur {

/// Keys and their texts, in ASCII.
using Texte = QList<std::pair<QByteArray, QByteArray>>;

struct Angaben {
  QByteArray adresse;
  std::int64_t laenge = 0;
  std::int64_t geaendert_ns = 0;  ///< since 1970, as all times here
  /// When the original was looked at. It is a text of its own, since an entry's time stamp changes when the cache is
  /// copied or put back.
  std::int64_t gesehen_ns = 0;
  Bildkopf kopf;
  std::int32_t status = 0;  ///< a gdiplus::Status; not Ok in failure entries alone
};

/// A file changed so recently may change again without its time showing it (FAT counts in steps of two seconds).
inline constexpr std::int64_t Ruhezeit_ns = 2'000'000'000;

Texte als_Texte(const Angaben& angaben);

/// Nothing where the entry is not of this program, a text is missing, or one can't be what it should be.
std::optional<Angaben> aus_Texten(const Texte& texte);

/// The entry is of this program, whatever else it says.
bool ist_unserer(const Texte& texte);

/// Header and status say the same, and it is the content that they tell of, not the way to it.
bool ist_vom_Inhalt(const Bildkopf& kopf, std::int32_t status) noexcept;

}  // namespace miniatur
