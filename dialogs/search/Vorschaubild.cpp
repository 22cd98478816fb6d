#include "dialogs/search/Vorschaubild.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace vorschaubild {
namespace {

constexpr double TwipsJePixel = 15;
constexpr double Rand = 8;
constexpr double Zugabe = 10;

}  // namespace

bool ist_Bildtyp(const QString& endung) {
  static const std::array<QString, 4> typen{u"bmp"_s, u"jpg"_s, u"gif"_s, u"tif"_s};
  return std::find(typen.begin(), typen.end(), text::LCase(endung)) != typen.end();
}

QImage zeichne(const std::shared_ptr<const Bild>& bild, double breite, double hoehe, bool nur_mittig, double dichte) {
  const auto punkte = [&](double twips) { return static_cast<int>(std::nearbyint(twips / TwipsJePixel * dichte)); };
  QImage blatt(std::max(1, punkte(breite + Zugabe)), std::max(1, punkte(hoehe + Zugabe)), QImage::Format_RGB32);
  blatt.setDevicePixelRatio(dichte);
  blatt.fill(Qt::white);
  if (!bild) return blatt;
  const QSizeF groesse = QSizeF(bild->groesse()) * TwipsJePixel;
  const bool gestreckt = !nur_mittig && (groesse.width() > breite || groesse.height() > hoehe);
  const QSize ziel = gestreckt ? QSize(punkte(breite - Rand), punkte(hoehe - Rand))
                               : QSize(punkte(groesse.width()), punkte(groesse.height()));
  const QPoint ort = gestreckt ? QPoint(punkte(Rand), punkte(Rand))
                               : QPoint((blatt.width() - ziel.width()) / 2, (blatt.height() - ziel.height()) / 2);
  if (ziel.isEmpty()) return blatt;
  fehler::still_enden([&] {
    QImage pixel = bild->bild(ziel);
    pixel.setDevicePixelRatio(dichte);
    QPainter(&blatt).drawImage(QPointF(ort) / dichte, pixel);
  });
  return blatt;
}

}  // namespace vorschaubild
