#pragma once

#include <QImage>
#include <QSize>
#include <QSizeF>
#include <QString>

/// The firm's mark of a report's head: any picture file that Qt reads, drawings included.
namespace firmenzeichen {

/// Its size; empty where there is none or it can't be read.
QSizeF groesse(const QString& pfad);
/// Its pixels on white, in proportion and at most that large; null where it can't be read.
QImage pixel(const QString& pfad, QSize hoechstens);

}  // namespace firmenzeichen
