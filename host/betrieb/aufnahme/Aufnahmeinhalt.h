#pragma once

#include <QByteArray>
#include <QString>

#include "host/betrieb/aufnahme/Aufnahmequelle.h"

/// What the copy of a source is to hold.
struct Aufnahmeinhalt {
  /// The copy holds what the source holds; `bytes` is that, or empty where nobody has read it.
  bool wie_Quelle = true;
  QByteArray bytes;
  /// The copy's extension.
  QString ext;
  /// German words for the user: what could not be done to the picture, which is taken in all the same. Mostly empty.
  QString hinweis;
};

namespace aufnahmeinhalt {

/// HEIC, AVIF and WebP become JPEG; with `aufrecht` a JPEG that its Exif mark calls turned is turned, or stays as it is
/// with a note where that fails. Everything else stays as it is; with `ganz` its bytes are read all the same. What
/// can't be read or made into JPEG ends with Abbruch, Ausgang::Datei.
Aufnahmeinhalt bereite(const Aufnahmequelle& quelle, bool aufrecht, bool ganz);

}  // namespace aufnahmeinhalt
