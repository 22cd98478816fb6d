#pragma once

#include <QImage>
#include <QString>
#include <memory>

#include "platform/basic/kvo_export.h"
#include "platform/gdiplus/Bild.h"

/// The small pictures of the picture list.
namespace vorschaubild {

/// The four extensions, in any case, that count as pictures.
KVO_EXPORT bool ist_Bildtyp(const QString& endung);

/// A square of paper `breite` by `hoehe` twips (and 10 more), white, with the picture on it: one that is larger is
/// stretched over it without regard to its proportions, a smaller one stands in the middle in its own size. With
/// `nur_mittig` it stands in the middle in any case, as icons do. None leaves it blank. `dichte` is the pixels of the
/// screen to a logical one. What can't be decoded shows what could be.
KVO_EXPORT QImage zeichne(const std::shared_ptr<const Bild>& bild, double breite, double hoehe, bool nur_mittig = false,
                          double dichte = 1);

}  // namespace vorschaubild
