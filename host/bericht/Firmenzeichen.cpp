#include "host/bericht/Firmenzeichen.h"

#include <QImageReader>
#include <QPainter>

namespace firmenzeichen {

QSizeF groesse(const QString& pfad) {
  if (pfad.isEmpty()) return {};
  QImageReader leser(pfad);
  leser.setDecideFormatFromContent(true);
  const QSize aus_Kopf = leser.size();
  return aus_Kopf.isValid() ? aus_Kopf : leser.read().size();
}

QImage pixel(const QString& pfad, QSize hoechstens) {
  QImageReader leser(pfad);
  leser.setDecideFormatFromContent(true);
  // A drawing has no pixels of its own; a picture is only ever made smaller.
  if (leser.format().startsWith("svg"))
    leser.setScaledSize(leser.size().scaled(hoechstens, Qt::KeepAspectRatio).expandedTo({1, 1}));
  const QImage bild = leser.read();
  if (bild.isNull()) return {};
  const QSize ziel = bild.size().scaled(hoechstens.boundedTo(bild.size()), Qt::KeepAspectRatio).expandedTo({1, 1});
  QImage flaeche(ziel, QImage::Format_RGB32);
  flaeche.fill(Qt::white);
  QPainter maler(&flaeche);
  maler.drawImage(QPoint(), bild.scaled(ziel, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  return flaeche;
}

}  // namespace firmenzeichen
