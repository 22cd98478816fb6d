#include "imaging/Ersatzbild.h"

#include <QImageReader>
#include <QPainter>

#include "platform/gdiplus/bild/Bildlader.h"

using namespace Qt::Literals::StringLiterals;

std::shared_ptr<const Bild> gezeichnetes_Blatt(const QString& svg, QSize groesse, const QColor& grund) {
  QImage blatt(groesse, QImage::Format_RGB32);
  blatt.fill(grund);
  QImageReader leser(svg);
  leser.setScaledSize(groesse);
  QPainter maler(&blatt);
  if (const QImage zeichnung = leser.read(); !zeichnung.isNull()) maler.drawImage(0, 0, zeichnung);
  maler.end();
  return bildlader::aus_Pixeln(blatt);
}

const std::shared_ptr<const Bild>& ersatzbild() {
  static const auto Ersatz = gezeichnetes_Blatt(u":/kvo/icons/bild_unlesbar.svg"_s, {96, 96}, Qt::white);
  return Ersatz;
}
