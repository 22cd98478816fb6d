#pragma once

#include <QByteArray>
#include <QString>

#include "platform/basic/kvo_export.h"

/// Setting a picture upright as its Exif mark (Orientation, tag 274) tells: its pixels are turned and its mark becomes
/// 1. Afterwards it stands the same way for those who follow the mark and for those who do not.
namespace aufrichtung {

enum class Befund {
  Unveraendert,  ///< it stands upright, or is no JPEG
  Gedreht,
  /// The mark was left over: the pixels had been turned before, by the user in this program's run, or, as width and
  /// height that the camera noted tell, by somebody by a quarter. Only the mark is set.
  Nur_Marke,
  Gescheitert,
};

struct Ergebnis {
  Befund befund = Befund::Unveraendert;
  /// The new content, for Gedreht and Nur_Marke; empty otherwise.
  QByteArray bytes;
  /// German words for Gescheitert; empty otherwise.
  QString grund;
};

/// Sets the picture of a JPEG file's bytes upright, without loss where its size allows and coded again with its own
/// tables where not (see bilddrehung). All other segments stay as they are, but for a thumbnail, which is turned too,
/// and the noted width and height. `quelle` is the file that the bytes come from, or empty. Never raises.
KVO_EXPORT Ergebnis richte_auf(const QByteArray& bytes, const QString& quelle = {});

/// The JPEG with its mark set to 1 and nothing turned, for pixels that stand upright already.
KVO_EXPORT QByteArray mit_aufrechter_Marke(const QByteArray& jpeg);

}  // namespace aufrichtung
