#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// Place data in packets of XMP (ISO 16684-1), wherever they lie in a file.
namespace xmpblock {

/// The text tells a place: coordinates, or the name of a town, a state or a country.
bool nennt_Ort(QByteArrayView text);
/// Overwrites each packet that tells a place with blanks, those over several segments of a JPEG too; the wrapping
/// around it stays. No length changes. True where there was any.
bool entferne_Ort(QByteArray& bytes);

}  // namespace xmpblock
