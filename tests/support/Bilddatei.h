#pragma once

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColor>
#include <QImage>

/// Content of a picture file of one colour.
inline QByteArray bilddatei(QSize groesse, const QColor& farbe = Qt::blue, const char* format = "JPEG") {
  QImage bild(groesse, QImage::Format_RGB32);
  bild.fill(farbe);
  QByteArray bytes;
  QBuffer puffer(&bytes);
  EXPECT_TRUE(bild.save(&puffer, format));
  return bytes;
}
