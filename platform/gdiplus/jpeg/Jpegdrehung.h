#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <cstdint>

#include "platform/gdiplus/jpeg/Blockdrehung.h"

/// Turns and mirrors JPEG pictures.
///
/// A component loses nothing when its blocks can be moved as a whole, which takes whole blocks at the sides that come
/// to lie at the left and at the top. The others are coded again (see jpegneukodierung). Nothing is trimmed.
/// Quantisation tables and sampling factors stay the source's own, for a quarter turn with rows and columns exchanged.
/// All APPn and COM segments stay byte for byte and in their order, and so do the restart interval and what stands
/// behind the end. A progressive picture stays one; arithmetic coding becomes Huffman's.
namespace jpegdrehung {

/// `bytes` is a whole file with a header that jpegdekoder::ist_Kopf_lesbar takes. The result is a gdiplus::Status: 0
/// (also for a truncated or damaged stream: what it does not give is grey), 1 for a stream that can't be read on or
/// whose new sides no JPEG can have, 3 when memory runs out.
std::int32_t drehe(QByteArrayView bytes, const Drehung& drehung, QByteArray& ergebnis);

}  // namespace jpegdrehung
