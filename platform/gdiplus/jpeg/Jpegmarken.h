#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <array>
#include <cstdint>
#include <optional>

/// Walks the marker segments of a JPEG stream (ITU T.81 annex B) without decoding anything. Bytes between segments and
/// fill bytes are passed over, as decoders do.
class Jpegmarken {
 public:
  static constexpr std::uint8_t EOI = 0xd9;
  static constexpr std::uint8_t SOS = 0xda;
  static constexpr std::uint8_t DNL = 0xdc;

  struct Segment {
    std::uint8_t marke = 0;
    qsizetype anfang = 0;  ///< of the marker's FF
    qsizetype inhalt = 0;  ///< behind the length
    qsizetype ende = 0;    ///< behind the segment, without the entropy-coded data of a scan
  };

  /// `bytes` begins with SOI.
  explicit Jpegmarken(QByteArrayView bytes) noexcept : bytes_(bytes) {}

  /// The next segment, or none at EOI, at the end of the bytes and where a segment runs past it. Behind SOS the walk
  /// goes on after the scan's data.
  std::optional<Segment> naechstes();

 private:
  qsizetype ende_der_Daten(qsizetype position) const;

  QByteArrayView bytes_;
  qsizetype position_ = 2;
  bool in_Daten_ = false;
};

/// A frame header.
struct Jpegrahmen {
  struct Komponente {
    std::uint8_t kennung = 0;
    std::uint8_t waagrecht = 0;
    std::uint8_t senkrecht = 0;
  };
  std::uint8_t marke = 0;
  std::uint8_t bits = 0;
  std::uint16_t hoehe = 0;
  std::uint16_t breite = 0;
  int anzahl = 0;
  std::array<Komponente, 4> komponenten{};
};

/// The marker is one of the frame headers SOF0 to SOF15.
bool ist_SOF(std::uint8_t marke) noexcept;

/// Reads a frame header: none when its length does not fit, or a count or sampling factor is out of range.
std::optional<Jpegrahmen> lies_Rahmen(QByteArrayView bytes, const Jpegmarken::Segment& segment);

/// Some cameras leave the height in the frame header at 0 and tell it by a DNL marker behind the first scan (ITU T.81
/// B.2.5). Decoders here want it in front: the height is entered in the frame header. All other streams stay as they
/// are.
void trage_Hoehe_ein(QByteArray& bytes);
