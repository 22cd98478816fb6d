#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QSize>
#include <vector>

/// JPEG through libjpeg itself, so that every sampling, CMYK and arithmetic coding works.
namespace jpegdekoder {

/// libjpeg takes the header, tables included.
bool ist_Kopf_lesbar(QByteArrayView bytes);

/// Decodes at the smallest of the scales 1/8 to 8/8 that is not below `ziel` (8/8 where none is, or for an empty
/// `ziel`), as RGB32. Of a picture in several scans only those are decoded that show at the size `ziel`. What a broken
/// or truncated stream does not give is grey or black, never undefined; a null image means that no row of blocks came
/// through sound. Running out of memory raises 7.
QImage dekodiere(QByteArrayView bytes, QSize ziel);

/// Numerator over 8 of the scale that `dekodiere` takes.
int massstab(QSize groesse, QSize ziel) noexcept;

/// The size at which `dekodiere` decodes, before anybody scales.
QSize dekodierte_Groesse(QSize groesse, QSize ziel) noexcept;

/// Bytes of coefficients that the decoder holds all at once: those of a picture in several scans (ITU T.81 G.1),
/// 0 for any other.
qint64 Koeffizienten_im_Speicher(QByteArrayView bytes);

/// The pieces of a picture in several scans that are needed for `ziel`, in their order: a scan is left out when it only
/// carries frequencies that the component can't show at that size. At most 100 scans, so that a small file can't keep a
/// decoder busy for hours.
std::vector<QByteArrayView> noetige_Stuecke(QByteArrayView bytes, QSize ziel);

}  // namespace jpegdekoder
