#include "platform/forms/steuerelemente/Flaechen.h"

#include <QChildEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <array>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/Farbwert.h"

// Captions are plain text: a customer's name may hold "<" and "&".
Textflaeche::Textflaeche(QWidget* behaelter, const QString& name) : QLabel(behaelter), Steuerelement(*this, name) {
  setTextFormat(Qt::PlainText);
}

QRect Textflaeche::Textplatz() const {
  QRect platz = contentsRect();
  // A framed label indents its text by that much.
  if (frameWidth() > 0) platz.setLeft(platz.left() + fontMetrics().horizontalAdvance(u'x') / 2);
  const QRect zeilen = style()->itemTextRect(fontMetrics(), platz, static_cast<int>(alignment()), true, text());
  for (const QObject* kind : children()) {
    const auto* const darauf = qobject_cast<const QWidget*>(kind);
    if (!darauf || darauf->isWindow() || darauf->isHidden()) continue;
    const QRect g = darauf->geometry();
    if (g.top() > zeilen.bottom() || g.bottom() < zeilen.top() || g.left() < platz.left()) continue;
    platz.setRight(std::min(platz.right(), g.left() - 1 - fontMetrics().horizontalAdvance(u'x') / 2));
  }
  return platz;
}

QString Textflaeche::gezeigter_Text() const {
  const int breite = std::max(0, Textplatz().width());
  QStringList zeilen = text().split(u'\n');
  for (QString& zeile : zeilen) zeile = fontMetrics().elidedText(zeile, Qt::ElideRight, breite);
  return zeilen.join(u'\n');
}

bool Textflaeche::event(QEvent* ereignis) {
  if (ereignis->type() != QEvent::ToolTip || !toolTip().isEmpty() || gezeigter_Text() == text())
    return QLabel::event(ereignis);
  // Converted to rich text, or a tool tip would take letters that look like markup for it.
  QToolTip::showText(dynamic_cast<const QHelpEvent&>(*ereignis).globalPos(),
      Qt::convertFromPlainText(text().trimmed(), Qt::WhiteSpaceNormal), this);
  return true;
}

// The room for the caption changes with what lies on the surface, so children are watched.
void Textflaeche::childEvent(QChildEvent* ereignis) {
  if (ereignis->type() == QEvent::ChildAdded) ereignis->child()->installEventFilter(this);
  QLabel::childEvent(ereignis);
}

bool Textflaeche::eventFilter(QObject* empfaenger, QEvent* ereignis) {
  constexpr std::array Umgestaltungen{QEvent::Move, QEvent::Resize, QEvent::ShowToParent, QEvent::HideToParent};
  if (std::ranges::count(Umgestaltungen, ereignis->type()) > 0 && !text().isEmpty()) update();
  return QLabel::eventFilter(empfaenger, ereignis);
}

void Textflaeche::paintEvent(QPaintEvent* ereignis) {
  const QString gezeigt = gezeigter_Text();
  if (gezeigt == text()) return QLabel::paintEvent(ereignis);
  QPainter maler(this);
  drawFrame(&maler);
  const QRect platz = Textplatz();
  maler.setClipRect(platz);
  style()->drawItemText(
      &maler, platz, static_cast<int>(alignment()), palette(), isEnabled(), gezeigt, foregroundRole());
}

SSPanel::SSPanel(QWidget* behaelter, const QString& name) : Textflaeche(behaelter, name) {
  setFrameShape(QFrame::StyledPanel);
  // A panel is as large as its form says, whatever its caption needs.
  setMinimumSize(0, 0);
}

void SSPanel::FloodPercent(double wert) {
  if (!(wert >= 0 && wert <= 100)) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  flut_ = wert;
  update();
}

void SSPanel::paintEvent(QPaintEvent* ereignis) {
  if (flut_ > 0) {
    const QRect innen = contentsRect();
    const int breite = static_cast<int>(innen.width() * flut_ / 100);
    QPainter(this).fillRect(
        QRect(innen.topLeft(), QSize(breite, innen.height())), palette().color(QPalette::Highlight));
  }
  Textflaeche::paintEvent(ereignis);
}

Shape::Shape(QWidget* behaelter, const QString& name) : QWidget(behaelter), Steuerelement(*this, name) {
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
  const QRect innen = rect().adjusted(randbreite_, randbreite_, -randbreite_, -randbreite_);
  for (const QRect& teil : QRegion(rect()).subtracted(innen)) maler.fillRect(teil, farbe);
}
