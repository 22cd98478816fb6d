#include "platform/forms/steuerelemente/Ziehvorgang.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>
#include <utility>

#include "platform/forms/steuerelemente/Steuerelement.h"

void Ziehbuehne::beginne(Steuerelement& quelle) {
  if (auto* buehne = dynamic_cast<Ziehbuehne*>(quelle.widget().window())) buehne->beginne_Ziehen(quelle);
}

void Ziehvorgang::beginne(Steuerelement& quelle) {
  if (std::exchange(laeuft_, true)) return;
  qApp->installEventFilter(this);
  fenster_.setCursor(Qt::ClosedHandCursor);
  if (quelle.DragOver) bewacht(quelle.DragOver);
}

void Ziehvorgang::brich_ab() {
  if (!std::exchange(laeuft_, false)) return;
  qApp->removeEventFilter(this);
  fenster_.unsetCursor();
  if (Ende) bewacht(Ende);
}

bool Ziehvorgang::eventFilter(QObject* empfaenger, QEvent* ereignis) {
  if (!laeuft_) return false;
  // The mouse is watched where it reaches the window. Once the widget that had the press is gone, the window hands
  // neither moves nor the release on to any other.
  if (ereignis->type() == QEvent::MouseMove || ereignis->type() == QEvent::MouseButtonRelease) {
    const auto* fenster = qobject_cast<QWindow*>(empfaenger);
    auto* maus = dynamic_cast<QMouseEvent*>(ereignis);
    return fenster && maus && sieh_Maus(*fenster, *maus);
  }
  const auto* taste = ereignis->type() == QEvent::KeyPress ? dynamic_cast<QKeyEvent*>(ereignis) : nullptr;
  if (!empfaenger->isWidgetType() || !taste || taste->key() != Qt::Key_Escape) return false;
  brich_ab();
  return true;
}

bool Ziehvorgang::sieh_Maus(const QWindow& empfaenger, QMouseEvent& maus) {
  const bool losgelassen = maus.type() == QEvent::MouseButtonRelease && maus.button() == Qt::LeftButton;
  // A box that came up in between took the release: the drag ends at the first sign of the mouse.
  const bool verloren = !losgelassen && !maus.buttons().testFlag(Qt::LeftButton);
  if (&empfaenger != fenster_.windowHandle() || verloren) {
    if (losgelassen || verloren) brich_ab();
    return false;
  }
  Steuerelement* const unten = ziel(maus.globalPosition().toPoint());
  if (losgelassen) {
    if (unten && unten->DragDrop) bewacht(unten->DragDrop);
    // The drop's handler may have ended it, by a failure that hid the window.
    brich_ab();
    // The release goes on to the widget that had the press: it keeps the toolkit's own account in order.
    return false;
  }
  if (maus.type() == QEvent::MouseMove && unten && unten->DragOver) bewacht(unten->DragOver);
  maus.accept();
  return true;
}

Steuerelement* Ziehvorgang::ziel(QPoint global) const {
  QWidget* widget = fenster_.childAt(fenster_.mapFromGlobal(global));
  for (; widget && widget != &fenster_; widget = widget->parentWidget())
    if (auto* element = dynamic_cast<Steuerelement*>(widget); element && (element->DragOver || element->DragDrop))
      return element;
  return nullptr;
}
