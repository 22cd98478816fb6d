#include "platform/forms/steuerelemente/Bildfeld.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"
#include "platform/forms/steuerelemente/Farbwert.h"
#include "platform/forms/steuerelemente/Ziehvorgang.h"

void Bildfeld::Picture(std::shared_ptr<const Bild> wert) {
  bild_ = std::move(wert);
  if (!bild_ || !AutoSize) return;
  const QSize groesse = bild_->groesse();
  Width(twips::aus_Pixel(groesse.width()));
  Height(twips::aus_Pixel(groesse.height()));
}

void Bildfeld::Cls() {
  offen_.clear();
  pixel_ = QImage();
  update();
}

void Bildfeld::PaintPicture(const std::shared_ptr<const Bild>& bild, const QRectF& ziel) {
  // What is covered whole needs no pixels any more.
  if (ziel.contains(QRectF(rect()))) {
    offen_.clear();
    pixel_ = QImage();
  }
  const auto male = [this, bild, ziel](QPainter& maler) {
    fehler::still_enden([&] {
      if (const QSize groesse = punkte(ziel); !groesse.isEmpty()) maler.drawImage(ziel, bild->bild(groesse));
    });
  };
  zeichne({male, bild, ziel});
}

QSize Bildfeld::punkte(const QRectF& ziel) const {
  return (ziel.size() * devicePixelRatioF()).toSize();
}

QList<bildvorlauf::Vorlauf::Wunsch> Bildfeld::offene_Bilder() const {
  QList<bildvorlauf::Vorlauf::Wunsch> bilder;
  for (const Zeichnung& zeichnung : offen_)
    if (zeichnung.bild) bilder.append({zeichnung.bild, punkte(zeichnung.ziel)});
  return bilder;
}

void Bildfeld::Linie(QPointF von, QPointF bis, Farbe farbe) {
  const auto male = [=](QPainter& maler) {
    maler.setPen(QPen(farben::qt(farbe), 1));
    maler.drawLine(von, bis);
  };
  zeichne({male, nullptr, {}});
}

void Bildfeld::Kasten(QPointF von, QPointF bis, Farbe farbe) {
  const auto male = [=](QPainter& maler) { maler.fillRect(QRectF(von, bis).adjusted(0, 0, 1, 1), farben::qt(farbe)); };
  zeichne({male, nullptr, {}});
}

void Bildfeld::zeichne(Zeichnung zeichnung) {
  offen_.push_back(std::move(zeichnung));
  update();
}

const QImage& Bildfeld::Image() const {
  const qreal dichte = devicePixelRatioF();
  const QSize soll = (QSizeF(size()) * dichte).toSize();
  if (offen_.empty() && pixel_.size() == soll) return pixel_;
  QImage neu(soll, QImage::Format_RGB32);
  neu.setDevicePixelRatio(dichte);
  neu.fill(palette().color(backgroundRole()));
  if (!neu.isNull()) {
    QPainter maler(&neu);
    if (!pixel_.isNull()) maler.drawImage(QPointF(0, 0), pixel_);
    // Taken out first: what cannot be drawn is not tried again.
    for (const Zeichnung& zeichnung : std::exchange(offen_, {})) zeichnung.male(maler);
  }
  pixel_ = std::move(neu);
  return pixel_;
}

void Bildfeld::DragMode(int wert) {
  if (wert != 0 && wert != 1) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  ziehart_ = wert;
}

void Bildfeld::uebernimm(const Bildfeld& vorlage) {
  Move(vorlage.Left(), vorlage.Top(), vorlage.Width(), vorlage.Height());
  ziehart_ = vorlage.ziehart_;
  setToolTip(vorlage.toolTip());
  setPalette(vorlage.palette());
  Visible(false);
}

void Bildfeld::paintEvent(QPaintEvent* /*ereignis*/) {
  QPainter(this).drawImage(QPointF(0, 0), Image());
}

void Bildfeld::mousePressEvent(QMouseEvent* ereignis) {
  if (ereignis->button() != Qt::LeftButton) return;
  if (ziehart_ == 1)
    Ziehbuehne::beginne(*this);
  else
    gedrueckt_ = true;
}

void Bildfeld::mouseReleaseEvent(QMouseEvent* ereignis) {
  if (ereignis->button() != Qt::LeftButton || !std::exchange(gedrueckt_, false)) return;
  if (rect().contains(ereignis->position().toPoint())) Ereigniswache::melde(*this, Click);
}

// The second press of a double click; the first has been a click.
void Bildfeld::mouseDoubleClickEvent(QMouseEvent* ereignis) {
  if (ereignis->button() != Qt::LeftButton) return;
  if (ziehart_ == 1)
    Ziehbuehne::beginne(*this);
  else
    Ereigniswache::melde(*this, DblClick);
}
