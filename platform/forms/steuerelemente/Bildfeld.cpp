#include "platform/forms/steuerelemente/Bildfeld.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"
#include "platform/forms/steuerelemente/Farbwert.h"
#include "platform/forms/steuerelemente/Ziehvorgang.h"

Bildfeld::Bildfeld(QWidget* behaelter, const QString& name)
    : QWidget(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
}

Bildfeld::~Bildfeld() = default;

void Bildfeld::Picture(std::shared_ptr<const Bild> wert) {
  bild_ = std::move(wert);
  if (!bild_ || !AutoSize) return;
  const QSize groesse = bild_->groesse();
  Width(twips::aus_Pixel(groesse.width()));
  Height(twips::aus_Pixel(groesse.height()));
}

double Bildfeld::ScaleWidth() const noexcept {
  return Width() / twips::JePixel;
}

double Bildfeld::ScaleHeight() const noexcept {
  return Height() / twips::JePixel;
}

void Bildfeld::Cls() {
  offen_.clear();
  pixel_ = QImage();
  update();
}

void Bildfeld::PaintPicture(std::shared_ptr<const Bild> bild, const QRectF& ziel) {
  // What is covered whole needs no pixels any more.
  if (ziel.contains(QRectF(rect()))) {
    offen_.clear();
    pixel_ = QImage();
  }
  zeichne({Zeichnung::Art::Bild, ziel, std::move(bild), 0});
}

void Bildfeld::Linie(QPointF von, QPointF bis, Farbe farbe) {
  zeichne({Zeichnung::Art::Linie, QRectF(von, bis), nullptr, farbe});
}

void Bildfeld::Kasten(QPointF von, QPointF bis, Farbe farbe) {
  zeichne({Zeichnung::Art::Kasten, QRectF(von, bis).adjusted(0, 0, 1, 1), nullptr, farbe});
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
    for (const Zeichnung& zeichnung : std::exchange(offen_, {})) male(maler, zeichnung);
  }
  pixel_ = std::move(neu);
  return pixel_;
}

void Bildfeld::male(QPainter& maler, const Zeichnung& zeichnung) const {
  switch (zeichnung.art) {
    case Zeichnung::Art::Bild:
      fehler::still_enden([&] {
        const QSize punkte = (zeichnung.wo.size() * devicePixelRatioF()).toSize();
        if (!punkte.isEmpty()) maler.drawImage(zeichnung.wo, zeichnung.bild->bild(punkte));
      });
      break;
    case Zeichnung::Art::Linie:
      maler.setPen(QPen(farben::qt(zeichnung.farbe), 1));
      maler.drawLine(zeichnung.wo.topLeft(), zeichnung.wo.bottomRight());
      break;
    case Zeichnung::Art::Kasten:
      maler.fillRect(zeichnung.wo, farben::qt(zeichnung.farbe));
      break;
  }
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
