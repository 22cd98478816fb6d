#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <utility>

#include "platform/gdiplus/miniatur/Miniaturablage.h"
#include "tests/platform/gdiplus/Vorlagen.h"
#include "tests/support/Umgebung.h"

/// The chunks of a PNG, kind and content, to be changed and put together again with right check sums.
using Stuecke = QList<std::pair<QByteArray, QByteArray>>;
Stuecke zerlegt(const QByteArray& png);
QByteArray zusammen(const Stuecke& stuecke);

/// While it lives, root is nobody in particular, and owns what is in the folder: rights then count. Others stay who
/// they are.
class Ohne_Vorrechte {
 public:
  explicit Ohne_Vorrechte(const QString& ordner);
  ~Ohne_Vorrechte();
  Q_DISABLE_COPY_MOVE(Ohne_Vorrechte)

 private:
  const bool war_root_;
};

/// A store in a cache folder of its own, and a picture file that rested for an hour.
class Ablage : public ::testing::Test {
 protected:
  Ablage();
  ~Ablage() override;

  static constexpr std::int64_t Sekunde = 1'000'000'000;
  static constexpr std::int64_t Geaendert = 1'700'000'000 * Sekunde + 123'456'789;
  static constexpr QSize Original{4000, 3000};
  static constexpr QSize Liste{92, 92};

  QString cacheheim() const { return ordner.pfad(QStringLiteral("cache")); }
  /// The picture file of that name; what it holds is never looked at.
  Miniaturablage::Datei datei(const QString& name = QStringLiteral("bild.jpg")) const;
  static Bildkopf kopf(QSize groesse = Original, Bildformat format = Bildformat::Jpeg);
  /// A photo of an original, reduced to an edge.
  static QImage pixel(int kante = 512, QSize groesse = Original);
  bool merke(int kante = 256, bool gedreht = false);
  /// Path of the entry of a file in a folder of the cache ("thumbnails/large").
  QString eintrag(const QString& unter, const QString& name = QStringLiteral("bild.jpg")) const;
  QByteArray lies(const QString& pfad) const;
  static void schreibe(const QString& pfad, const QByteArray& bytes);

  Testordner ordner;
  Miniaturablage ablage;
};
