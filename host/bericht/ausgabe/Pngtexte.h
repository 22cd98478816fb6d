#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <functional>

/// The chunks of a PNG (PNG 1.2, with the Exif chunk of its extensions 1.5) as far as they may tell a place.
namespace pngtexte {

bool ist_Png(QByteArrayView bytes);
/// Makes each text chunk that tells a place an empty one of a kind that every reader passes over: compressed ones, and
/// Exif blocks written as text. `ort_im_Block` says of such a block whether it tells a place. No length changes. True
/// where there was any.
bool entferne_Ort(QByteArray& png, const std::function<bool(QByteArray block)>& ort_im_Block);
/// Renews the check sums of the chunks that differ from `vorher`, a file of the same length.
void erneuere_Pruefsummen(QByteArray& png, QByteArrayView vorher);

}  // namespace pngtexte
