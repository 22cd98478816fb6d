#pragma once

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <cmath>
#include <filesystem>
#include <limits>
#include <random>

#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/miniatur/Miniaturablage.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"

/// What windows show of pictures that other threads make ahead or that an earlier program left.

/// Grain on soft shades, so that two ways of making a picture smaller can be told from each other.
inline QByteArray koerniges_Foto(QSize groesse, int saat) {
  std::minstd_rand zufall(static_cast<unsigned>(saat));
  QImage bild(groesse, QImage::Format_RGB32);
  for (int y = 0; y < groesse.height(); ++y)
    for (int x = 0; x < groesse.width(); ++x) {
      const auto korn = [&](int mitte) { return mitte + static_cast<int>(zufall() % 60); };
      bild.setPixel(x, y, qRgb(korn(x * 180 / groesse.width()), korn(90), korn(y * 180 / groesse.height())));
    }
  QByteArray bytes;
  QBuffer puffer(&bytes);
  EXPECT_TRUE(bild.save(&puffer, "JPEG", 90));
  return bytes;
}

/// Peak signal to noise ratio in decibels; 99 for equal pictures, 0 for other sizes.
inline double psnr(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return 0;
  double summe = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y);
      const QRgb q = b.pixel(x, y);
      for (const int abstand : {qRed(p) - qRed(q), qGreen(p) - qGreen(q), qBlue(p) - qBlue(q)})
        summe += abstand * abstand;
    }
  return summe == 0 ? 99 : 10 * std::log10(255.0 * 255 * 3 * a.width() * a.height() / summe);
}

/// The file keeps its name, length and time stamp, and nothing else.
inline void leere_aus(const QString& pfad) {
  const std::filesystem::path ort(pfad.toStdU16String());
  const auto zeit = std::filesystem::last_write_time(ort);
  QFile datei(pfad);
  ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
  ASSERT_EQ(datei.write(QByteArray(datei.size(), '\0')), datei.size());
  datei.close();
  std::filesystem::last_write_time(ort, zeit);
}

/// Files count as old, so that their pixels are kept; nothing is kept from before, and the desktop's cache is left out.
class Alte_Dateien {
 public:
  Alte_Dateien() {
    Bildspeicher::aktuell().leere();
    Bildspeicher::aktuell().uhr([] { return std::numeric_limits<std::int64_t>::max(); });
    Miniaturablage::aktuell().an(false);
  }
  ~Alte_Dateien() {
    bildvorlauf::an(true);
    Miniaturablage::aktuell().an(true);
    Bildspeicher::aktuell().uhr(nullptr);
    Bildspeicher::aktuell().leere();
  }
  Q_DISABLE_COPY_MOVE(Alte_Dateien)
};

/// The desktop's cache is a folder of the test's own, and files count as old.
class Eigene_Ablage {
 public:
  explicit Eigene_Ablage(const QString& ordner) {
    EXPECT_TRUE(QDir().mkpath(ordner));
    Miniaturablage::aktuell().cacheheim(QFile::encodeName(ordner));
    Miniaturablage::aktuell().uhr([] { return std::numeric_limits<std::int64_t>::max(); });
  }
  ~Eigene_Ablage() {
    Rechenwerk::aktuell().warte();
    Miniaturablage::aktuell().uhr(nullptr);
    Miniaturablage::aktuell().cacheheim({});
    Miniaturablage::aktuell().an(true);
  }
  Q_DISABLE_COPY_MOVE(Eigene_Ablage)
};
