#include "platform/forms/Flaechen.h"

#include <QPainter>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/Farbwert.h"

// Captions are plain text: a customer's name may hold "<" and "&".
SSPanel::SSPanel(QWidget* behaelter, const QString& name)
    : QLabel(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
  setFrameShape(QFrame::StyledPanel);
  // A panel is as large as its form says, whatever its caption needs.
  setMinimumSize(0, 0);
}

Label::Label(QWidget* behaelter, const QString& name) : QLabel(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
}

Shape::Shape(QWidget* behaelter, const QString& name)
    : QWidget(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Shape::BorderColor(Farbe wert) {
  randfarbe_ = wert;
  update();
}

void Shape::BorderWidth(int wert) {
  if (wert < 1) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  randbreite_ = wert;
  update();
}

void Shape::paintEvent(QPaintEvent* /*ereignis*/) {
  QPainter maler(this);
  const QColor farbe = farben::qt(randfarbe_);
  const QRect r = rect();
  maler.fillRect(r.x(), r.y(), r.width(), randbreite_, farbe);
  maler.fillRect(r.x(), r.bottom() + 1 - randbreite_, r.width(), randbreite_, farbe);
  maler.fillRect(r.x(), r.y(), randbreite_, r.height(), farbe);
  maler.fillRect(r.right() + 1 - randbreite_, r.y(), randbreite_, r.height(), farbe);
}
