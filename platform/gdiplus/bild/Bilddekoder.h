#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include "platform/gdiplus/bild/Bildkopf.h"

/// From a file's bytes to pixels.
namespace bilddekoder {

/// The whole picture at exactly `ziel` pixels, as RGB32. Transparency shows `hintergrund` (red, green, blue; alpha is
/// not looked at). What a broken file does not give is black or grey, never undefined; a null image means that it gives
/// nothing at all. Orientation marks are not applied. Running out of memory raises 7.
QImage lies(const Bildkopf& kopf, const QByteArray& bytes, QSize ziel, QRgb hintergrund);

/// The same before it is scaled: a JPEG comes at the nearest scale that its transform allows (see jpegdekoder), any
/// other picture in its own size.
QImage entpacke(const Bildkopf& kopf, const QByteArray& bytes, QSize ziel, QRgb hintergrund);

/// Bytes that `lies` needs at its height beside the file's content and the result, for a header of that content.
qint64 speicherbedarf(const Bildkopf& kopf, const QByteArray& bytes, QSize ziel);

/// The opaque form (RGB32) of any image on a background.
QImage undurchsichtig(QImage bild, QRgb hintergrund);

/// Black all over. Running out of memory raises 7.
QImage schwarz(QSize groesse);

/// Scaled smoothly to exactly `ziel`, whatever the proportions; null for a null image.
QImage auf_Groesse(const QImage& bild, QSize ziel);

}  // namespace bilddekoder
