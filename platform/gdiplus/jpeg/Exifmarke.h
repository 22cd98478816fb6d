#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>

#include "platform/gdiplus/Drehung.h"

/// The mark of a JPEG that tells how its pixels are to be turned to stand upright: Orientation, tag 274 of TIFF 6.0, in
/// the Exif block (Exif 2.32). Every byte is distrusted: what leads out of the block is not there.
namespace exifmarke {

/// 1 (upright) to 8, of the first Exif block that has the mark; 1 where there is none or its value is no such number.
int lies(QByteArrayView jpeg);
/// The turn that a picture with that mark needs; none for 1 and for no such number.
std::optional<Drehung> drehung(int marke);
/// Width and height of the pixels as the camera noted them (tags 40962 and 40963); empty where they are missing.
QSize notierte_Groesse(QByteArrayView jpeg);

/// Sets the mark to 1 wherever the JPEG holds one: in each Exif block, for the thumbnail too, and in XMP. Nothing else
/// changes, and neither does the length.
void setze_aufrecht(QByteArray& jpeg);
/// Turns the thumbnail of the Exif blocks. One that is no JPEG, or has no room once it is turned, is taken out of the
/// block's directories: none is better than one that lies on its side.
void drehe_Vorschau(QByteArray& jpeg, const Drehung& drehung);
/// Lets the noted width and height change places.
void tausche_notierte_Groesse(QByteArray& jpeg);

}  // namespace exifmarke
