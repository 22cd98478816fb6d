#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>
#include <cstdint>
#include <optional>

/// The formats that the system's pictures come in. They are told by the content alone; a file's name never matters.
/// Metafiles are not among them, nor is what only newer programs write (WebP, HEIC, AVIF): other workstations on the
/// same share could not show such a picture.
enum class Bildformat { Unbekannt, Jpeg, Png, Gif, Bmp, Tiff, Ico };

enum class Kopfbefund {
  Ok,
  Unbekannt,  ///< the content is of no known format
  Defekt,     ///< a known format, but a header that is incomplete, contradicts itself or that no decoder here takes
  ZuGross,    ///< a sound header with a size that nobody can hold
};

/// What a picture's header tells.
struct Bildkopf {
  Bildformat format = Bildformat::Unbekannt;
  Kopfbefund befund = Kopfbefund::Unbekannt;
  /// Size in pixels, both sides positive; empty unless the finding is Ok or ZuGross.
  QSize groesse;
  /// The picture of an ICO file that counts: the one with the most pixels. Index into its directory.
  int nummer = 0;
};

/// So many bytes from the start of a file are enough for `erkenne_Bildformat`.
inline constexpr qsizetype Signaturlaenge = 16;

/// The format, from the signature alone: JPEG FF D8 (ITU T.81 B.1.1), PNG (W3C PNG 5.2), GIF87a and GIF89a, BMP
/// "BM" of Windows and OS/2, TIFF and BigTIFF of both byte orders (TIFF 6.0 section 2), ICO (cursors are no pictures).
Bildformat erkenne_Bildformat(QByteArrayView anfang);

/// Judges signature and header of a whole file; never looks at pixels.
Bildkopf lies_Bildkopf(QByteArrayView bytes);

inline std::int64_t flaeche(QSize groesse) noexcept {
  return std::int64_t{groesse.width()} * groesse.height();
}

/// A picture of that size can be held as 32-bit pixels in at most 2 GB.
bool ist_haltbar(QSize groesse) noexcept;

/// The parsers, one for each format. They expect a content of their own signature.
namespace bildkopf {
Bildkopf jpeg(QByteArrayView bytes);
Bildkopf png(QByteArrayView bytes);
Bildkopf gif(QByteArrayView bytes);
Bildkopf bmp(QByteArrayView bytes);
Bildkopf tiff(QByteArrayView bytes);
Bildkopf ico(QByteArrayView bytes);

/// Many programs write a TIFF's directory behind its pixels. `anfang` holds the first Signaturlaenge bytes; the
/// result is the position that they name, or none where they name none.
std::optional<std::uint64_t> tiff_Verzeichnis(QByteArrayView anfang);
/// So many bytes hold any directory: 65535 entries of a BigTIFF and their count.
inline constexpr qsizetype Laengstes_Verzeichnis = 8 + 20 * 0xffff;
/// A short TIFF of the same header: the first Signaturlaenge bytes, made to name what follows, and the bytes from the
/// directory on.
QByteArray tiff_gekuerzt(QByteArrayView anfang, QByteArrayView verzeichnis);

Bildkopf defekt(Bildformat format) noexcept;
/// A sound header: too big where the size can't be held or a side is over `groesste_Seite`; broken for a side of 0.
Bildkopf gelesen(
    Bildformat format, std::uint64_t breite, std::uint64_t hoehe, std::uint64_t groesste_Seite = 0x7fffffff);
}  // namespace bildkopf
