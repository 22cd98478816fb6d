#pragma once

#include "tests/dialogs/assignment/Dialogtest.h"

inline constexpr QRgb Stapelgruen = qRgb(0xC0, 0xFF, 0xC0);
inline constexpr QRgb Stapelrot = qRgb(0xFF, 0xC0, 0xC0);
inline constexpr QRgb Kreuzrot = qRgb(255, 0, 0);

/// JPEG is lossy: a colour is told by its channels being near.
inline bool aehnlich(QRgb a, QColor b) {
  return qAbs(qRed(a) - b.red()) < 12 && qAbs(qGreen(a) - b.green()) < 12 && qAbs(qBlue(a) - b.blue()) < 12;
}

/// The strip of thumbnails, read by its controls and their pixels.
class Streifen : public Dialogtest {
 protected:
  /// A row whose picture has that size and colour.
  void fuege_ein(
      const QString& name, QSize groesse, const QColor& farbe = Qt::blue, const QString& ext = QStringLiteral("jpg")) {
    fuege_Bild_ein(name, ext, false);
    lege_Bild(name + u'.' + ext, groesse, farbe);
  }
  QString tag(int index) { return form().Pic_Thumb(index).Tag; }
  QRgb mitte(int index) {
    const QImage& bild = form().Pic_Thumb(index).Image();
    return bild.pixel(bild.width() / 2, bild.height() / 3);
  }
  /// Whether both diagonals of the thumbnail are drawn.
  bool durchgestrichen(int index) {
    const QImage& bild = form().Pic_Thumb(index).Image();
    const auto auf = [&](double x, double y) {
      return bild.pixel(qRound(x * (bild.width() - 1)), qRound(y * (bild.height() - 1)));
    };
    int rot = 0;
    for (const double t : {0.0, 0.1, 0.25, 0.5, 0.75, 0.9, 1.0})
      for (const QRgb punkt : {auf(t, t), auf(t, 1 - t)})
        if (punkt == Kreuzrot) ++rot;
    return rot >= 8;
  }
  QRgb stapel(int index) {
    const QImage& bild = form().Pic_Thumb(index).Image();
    return bild.pixel(1, bild.height() - 2);
  }
  void baue(std::int32_t ab) {
    form().ErsteZeile = ab;
    form().Create_ThumbNails(form().ErsteZeile);
  }
};
