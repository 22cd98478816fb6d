#pragma once

#include <QPainter>
#include <functional>

#include "host/bericht/Seitenplan.h"

namespace seitenmaler {

/// Paints a picture of the report into its place, by its index.
using Bildmaler = std::function<void(QPainter& maler, const QRectF& ort, std::size_t bild)>;
/// Paints the firm's mark into its place.
using Zeichenmaler = std::function<void(QPainter& maler, const QRectF& ort)>;

/// Paints a page. The painter's unit is the twip, its origin the page's upper left corner.
void male(QPainter& maler, const seitenplan::Seite& seite, const Bildmaler& bild, const Zeichenmaler& zeichen);

/// Pixels that a place of that size in twips has at that density.
QSize pixel(QSizeF ort, double dpi);

}  // namespace seitenmaler
