#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QString>

/// Pictures of formats that the other desks and the search do not know, made into JPEG.
namespace umwandlung {

enum class Format { Keines, Heif, Webp };

/// So many bytes from the start of a file are enough for `erkenne`.
inline constexpr qsizetype Signaturlaenge = 256;

/// By the content alone: HEIC and AVIF by the brands of ISO/IEC 23008-12, WebP by RIFF and its form type. Keines for
/// everything else, a film included.
Format erkenne(QByteArrayView anfang);

/// A JPEG, and what got lost on the way in German words, mostly empty.
struct Ergebnis {
  QByteArray jpeg;
  QString hinweis;
};

/// A whole file of that format as a JPEG of quality 92 in sRGB, with its Exif block. A film of pictures gives its
/// first one. The rotation that a HEIF container asks for is done, so that the mark is 1; WebP knows none but the mark,
/// which stays with the pixels as they are. What can't be read ends with Abbruch, Ausgang::Datei, also where the
/// machine lacks the reader, which is named.
Ergebnis in_Jpeg(const QByteArray& bytes, Format format);
/// Pixels as a JPEG of quality 92; what is transparent becomes white. Pixels that no JPEG can hold end with Abbruch,
/// Ausgang::Datei.
QByteArray in_Jpeg(const QImage& pixel);

}  // namespace umwandlung
