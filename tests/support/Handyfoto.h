#pragma once

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

#include "host/betrieb/beispiel/ExifSchreiber.h"

/// Pictures as phones write them, and how they are to look. Pixels as the sensor gave them; a mark tells how they are
/// to be turned.
namespace handyfoto {

/// Unlike itself however it is turned or mirrored. Without edges, whose colours a turned grid of samples would mix
/// anew.
inline QImage motiv(QSize groesse) {
  QImage bild(groesse, QImage::Format_RGB32);
  for (int y = 0; y < groesse.height(); ++y)
    for (int x = 0; x < groesse.width(); ++x)
      bild.setPixel(x, y, qRgb(40 + 180 * x / groesse.width(), 40 + 180 * y / groesse.height(), 90));
  return bild;
}

inline QByteArray jpeg(const QImage& bild, int guete = 95) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  EXPECT_TRUE(bild.save(&puffer, "jpg", guete));
  return bytes;
}

inline exifschreiber::Aufnahme aufnahme(QSize groesse, int marke) {
  exifschreiber::Aufnahme a;
  a.hersteller = QStringLiteral("Fernsprech");
  a.modell = QStringLiteral("F 1");
  a.ausrichtung = static_cast<std::uint16_t>(marke);
  a.zeit = QDateTime(QDate(2024, 5, 17), QTime(9, 30));
  a.belichtung = {1, 50};
  a.blende = {18, 10};
  a.brennweite = {42, 10};
  a.groesse = groesse;
  return a;
}

/// With that mark, 1 to 8.
inline QByteArray foto(QSize groesse, int marke, exifschreiber::Bytefolge folge = exifschreiber::Bytefolge::Klein) {
  return exifschreiber::mit_Exif(jpeg(motiv(groesse)), aufnahme(groesse, marke), folge);
}

/// The pixels as a viewer shows them that follows the mark, or as they are stored.
inline QImage gelesen(QByteArray bytes, bool nach_Marke) {
  QBuffer puffer(&bytes);
  QImageReader leser(&puffer, "jpg");
  leser.setAutoTransform(nach_Marke);
  const QImage bild = leser.read().convertToFormat(QImage::Format_RGB32);
  EXPECT_FALSE(bild.isNull()) << leser.errorString().toStdString();
  return bild;
}

/// Largest difference of a channel of any pixel; 255 for pictures of different sizes.
inline int abstand(const QImage& eines, const QImage& anderes) {
  if (eines.size() != anderes.size() || eines.isNull()) return 255;
  int groesster = 0;
  for (int y = 0; y < eines.height(); ++y)
    for (int x = 0; x < eines.width(); ++x) {
      const QRgb a = eines.pixel(x, y);
      const QRgb b = anderes.pixel(x, y);
      groesster = std::max(
          {groesster, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
    }
  return groesster;
}

/// Stands upright for those who follow the mark and for those who do not, with the pixels of `vorbild` as its mark
/// shows them.
inline ::testing::AssertionResult steht_aufrecht(const QByteArray& kopie, const QByteArray& vorbild, int erlaubt = 16) {
  const QImage soll = gelesen(vorbild, true);
  for (const bool nach_Marke : {false, true}) {
    const int ist = abstand(gelesen(kopie, nach_Marke), soll);
    if (ist > erlaubt)
      return ::testing::AssertionFailure() << (nach_Marke ? "by its mark" : "as stored") << " it differs by " << ist;
  }
  return ::testing::AssertionSuccess();
}

}  // namespace handyfoto
