#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <array>

#include "platform/basic/kvo_export.h"

/// The 8-bit code page of text files and of Exif text: Windows-1252 (registered at IANA as "windows-1252").
/// One byte is one 16-bit character both ways, so lengths agree. The five bytes that the code page leaves undefined
/// (0x81, 0x8D, 0x8F, 0x90, 0x9D) stand for the control character of the same number.
namespace windows1252 {

/// The character of each byte.
extern const std::array<char16_t, 256> Zeichen;

KVO_EXPORT QString decode(QByteArrayView bytes);
/// A character outside the code page becomes "?", one for each 16-bit unit.
KVO_EXPORT QByteArray encode(QStringView text);

}  // namespace windows1252
