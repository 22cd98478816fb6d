#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <memory>

#include "platform/gdiplus/gdiplus.h"
#include "tests/support/Umgebung.h"

/// Pictures made by code, and what tests ask of pictures.
namespace vorlagen {

/// A photo-like picture: soft shades, an edge and some grain; the same for the same size.
QImage foto(QSize groesse);
/// Coded by Qt's writer of that format ("png", "bmp", "tiff", "ico", "jpg").
QByteArray kodiert(const QImage& bild, const char* format);

struct Jpegart {
  bool progressiv = false;
  bool arithmetisch = false;
  int waagrecht = 2;  ///< sampling factors of the first component
  int senkrecht = 2;
  int qualitaet = 92;
};
QByteArray jpeg(const QImage& bild, const Jpegart& art = {});
/// One colour all over, without ever holding the picture.
QByteArray jpeg_einfarbig(QSize groesse, QRgb farbe, bool progressiv);
/// Four inks, each sample stored as given; with the Adobe marker (colour transform 0) or without.
QByteArray jpeg_Cmyk(QSize groesse, QRgb tinten, bool adobe);
/// One frame of a single grey (0 to 127), with 128 greys as palette, and a transparent one where asked for.
QByteArray gif(QSize groesse, int grau, bool durchsichtig = false);

/// libjpeg's own decode at num/8, all scans, as RGB32. For pictures that are whole.
QImage libjpeg_Massstab(const QByteArray& bytes, int num);

/// Peak signal to noise ratio over the three colours in decibels; 99 for equal pictures, 0 for other sizes.
double psnr(const QImage& a, const QImage& b);

}  // namespace vorlagen

/// A running session and a folder; the cache is empty before and after, and takes files for old.
class Bilder : public ::testing::Test {
 protected:
  Bilder();
  ~Bilder() override;

  /// The picture of that content, with status 0, or null and a failed test.
  gdiplus::Bitmap lade(const QString& name, const QByteArray& inhalt) const;
  static gdiplus::Bitmap oeffne(const QString& pfad);
  /// Status of that content.
  std::int32_t status(const QByteArray& inhalt) const;
  static std::int32_t status_von(const QString& pfad);

  Testordner ordner;

 private:
  std::int32_t marke_ = 0;
};
