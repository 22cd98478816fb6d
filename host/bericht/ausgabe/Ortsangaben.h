#pragma once

#include <QByteArray>

/// Place data (GPS) of picture files, which customers do not get unless somebody wants it. Pixels are never touched.
namespace ortsangaben {

enum class Befund {
  /// There was none; the bytes are as they were.
  Keine,
  Entfernt,
  /// There is some that can't be taken out; the bytes may have changed.
  Nicht_zu_entfernen,
};

/// Takes the place data out of a whole picture file, in place: no length changes. In JPEG, TIFF, PNG, WebP, HEIC and
/// AVIF the directories of Exif 2.32 and the packets of XMP, those of further pictures behind the first one too, and
/// the place of a film that a phone has put behind the picture (ISO 6709). Names of places in fields of IPTC and what
/// makers keep in notes of their own stay.
Befund entferne(QByteArray& bytes);

}  // namespace ortsangaben
