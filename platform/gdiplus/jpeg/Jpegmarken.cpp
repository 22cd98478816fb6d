#include "platform/gdiplus/jpeg/Jpegmarken.h"

#include <cstring>
#include <utility>

#include "platform/basic/Bytesicht.h"

bool ist_SOF(std::uint8_t marke) noexcept {
  return marke >= 0xc0 && marke <= 0xcf && marke != 0xc4 && marke != 0xc8 && marke != 0xcc;
}

// Data ends at the first marker that is no restart; FF 00 is a data byte FF, and any number of FF may stand before a
// marker.
qsizetype Jpegmarken::ende_der_Daten(qsizetype position) const {
  const char* const anfang = bytes_.data();
  const qsizetype laenge = bytes_.size();
  while (position + 1 < laenge) {
    const void* const treffer = std::memchr(anfang + position, 0xff, static_cast<std::size_t>(laenge - position - 1));
    if (treffer == nullptr) return laenge;
    position = static_cast<const char*>(treffer) - anfang;
    const auto folgt = static_cast<std::uint8_t>(anfang[position + 1]);
    if (folgt != 0x00 && folgt != 0xff && !(folgt >= 0xd0 && folgt <= 0xd7)) return position;
    position += folgt == 0xff ? 1 : 2;
  }
  return laenge;
}

std::optional<Jpegmarken::Segment> Jpegmarken::naechstes() {
  const Bytesicht b(bytes_);
  const auto u8 = [&](qsizetype p) { return b.u8(static_cast<std::uint64_t>(p)); };
  // The data of a scan are only searched when somebody asks what comes behind them.
  if (std::exchange(in_Daten_, false)) position_ = ende_der_Daten(position_);
  for (;;) {
    while (position_ < bytes_.size() && u8(position_) != 0xff) ++position_;
    while (position_ + 1 < bytes_.size() && u8(position_ + 1) == 0xff) ++position_;
    if (position_ + 1 >= bytes_.size()) return std::nullopt;
    const std::uint8_t marke = u8(position_ + 1);
    if (marke == EOI) return std::nullopt;
    // No marker, TEM, restarts and SOI: none has a length.
    if (marke == 0x00 || marke == 0x01 || (marke >= 0xd0 && marke <= 0xd8)) {
      position_ += 2;
      continue;
    }
    const qsizetype laenge = b.u16_hoch(static_cast<std::uint64_t>(position_ + 2));
    if (laenge < 2 || position_ + 2 + laenge > bytes_.size()) return std::nullopt;
    const Segment s{marke, position_, position_ + 4, position_ + 2 + laenge};
    position_ = s.ende;
    in_Daten_ = marke == SOS;
    return s;
  }
}

std::optional<Jpegrahmen> lies_Rahmen(QByteArrayView bytes, const Jpegmarken::Segment& segment) {
  const Bytesicht b(bytes);
  const auto p = static_cast<std::uint64_t>(segment.inhalt);
  Jpegrahmen r{segment.marke, b.u8(p), b.u16_hoch(p + 1), b.u16_hoch(p + 3), b.u8(p + 5), {}};
  if (r.anzahl < 1 || r.anzahl > 4 || segment.ende - segment.inhalt != 6 + 3 * r.anzahl) return std::nullopt;
  for (std::size_t i = 0; i < static_cast<std::size_t>(r.anzahl); ++i) {
    const std::uint8_t abtastung = b.u8(p + 7 + 3 * i);
    Jpegrahmen::Komponente& k = r.komponenten[i];
    k = {b.u8(p + 6 + 3 * i), static_cast<std::uint8_t>(abtastung >> 4), static_cast<std::uint8_t>(abtastung & 15)};
    if (k.waagrecht < 1 || k.waagrecht > 4 || k.senkrecht < 1 || k.senkrecht > 4) return std::nullopt;
  }
  return r;
}

void trage_Hoehe_ein(QByteArray& bytes) {
  Jpegmarken marken(bytes);
  qsizetype hoehe = -1;
  while (const auto segment = marken.naechstes()) {
    if (hoehe < 0 && ist_SOF(segment->marke)) {
      const auto rahmen = lies_Rahmen(bytes, *segment);
      if (!rahmen || rahmen->hoehe != 0) return;
      hoehe = segment->inhalt + 1;
    } else if (hoehe >= 0 && segment->marke == Jpegmarken::DNL) {
      const qsizetype inhalt = segment->inhalt;
      if (segment->ende - inhalt != 2) return;
      bytes.replace(hoehe, 2, bytes.mid(inhalt, 2));
      return;
    }
  }
}
