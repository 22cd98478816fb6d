#pragma once

#include <QByteArray>
#include <QImage>

/// HEIC and AVIF files as phones write them.
namespace heifbild {

enum class Art { Heic, Avif };

/// Codes the pixels as they are; a viewer turns them as `ausrichtung` (1 to 8, as the Exif mark counts) tells. `exif`
/// is a TIFF structure that goes along, or nothing. Empty where this machine has no encoder of that kind.
QByteArray schreibe(const QImage& pixel, Art art, int ausrichtung = 1, const QByteArray& exif = {});

}  // namespace heifbild
