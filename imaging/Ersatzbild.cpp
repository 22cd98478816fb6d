#include "imaging/Ersatzbild.h"

#include <QImageReader>
#include <QPainter>

#include "platform/gdiplus/bild/Bildlader.h"

using namespace Qt::Literals::StringLiterals;

const std::shared_ptr<const Bild>& ersatzbild() {
  static const std::shared_ptr<const Bild> bild = [] {
    QImage blatt(96, 96, QImage::Format_RGB32);
    blatt.fill(Qt::white);
    QImageReader leser(u":/kvo/icons/bild_unlesbar.svg"_s);
    leser.setScaledSize(blatt.size());
    QPainter maler(&blatt);
    // Without the SVG plugin the sheet stays white.
    if (const QImage zeichnung = leser.read(); !zeichnung.isNull()) maler.drawImage(0, 0, zeichnung);
    maler.end();
    return bildlader::aus_Pixeln(blatt);
  }();
  return bild;
}
