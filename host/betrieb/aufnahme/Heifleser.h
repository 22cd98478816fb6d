#pragma once

#include <QByteArray>
#include <QImage>

/// Reads HEIC and AVIF through libheif, which is loaded when the first such picture comes: whoever has none pays
/// nothing for it, and a machine without the library runs all the rest.
namespace heifleser {

struct Bild {
  /// Cropped, turned and mirrored as the container asks (ISO/IEC 23008-12); transparency is kept.
  QImage pixel;
  /// The Exif block from its TIFF header on, or nothing.
  QByteArray exif;
};

/// The main picture of a whole file. Ends with Abbruch, Ausgang::Datei, and words where the file is broken, where its
/// codec is not there, or where the library is not.
Bild lies(const QByteArray& bytes);

/// The version of the library that is found; empty where none is.
QString fassung();

}  // namespace heifleser
