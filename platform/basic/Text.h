#pragma once

#include <QString>
#include <QStringView>

#include "platform/basic/kvo_export.h"

/// Text helpers in the manner of the records: 16-bit characters, blanks only, one character to one character.
namespace text {

/// Cuts blanks (U+0020, no other white space) at both ends.
KVO_EXPORT QString Trim(QStringView s);
/// Upper case, one 16-bit character to one; "ß" and letters whose upper form is longer stay as they are.
KVO_EXPORT QString UCase(QStringView s);
/// Lower case, one 16-bit character to one.
QString LCase(QStringView s);
/// The first `anzahl` 16-bit characters, or all of them. A negative number raises 5.
QString Left(const QString& s, qsizetype anzahl);

}  // namespace text
