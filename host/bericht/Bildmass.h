#pragma once

#include <QRectF>
#include <QSizeF>

namespace seitenplan {

/// Small pictures are not blown up beyond this.
inline constexpr double Kleinste_Dichte = 150;

/// Where a picture of that size in pixels stands in its place: as large as fits, in its own proportions, at the place's
/// upper left corner.
QRectF bildort(const QRectF& platz, QSizeF pixel);
/// The size that fits into `platz`, of any picture or drawing, however small it is by itself.
QSizeF eingepasst(QSizeF platz, QSizeF groesse);

}  // namespace seitenplan
