#include "host/rundgang/Hand.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QWidget>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

[[noreturn]] void unerreichbar(const QWidget& widget, const char* grund) {
  throw std::runtime_error(widget.objectName().toStdString() + grund);
}

}  // namespace

QWidget* Hand::fenster_vorn() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* aktiv = QApplication::activeWindow()) return aktiv;
  for (QWidget* fenster : QApplication::topLevelWidgets())
    if (fenster->isVisible()) return fenster;
  return nullptr;
}

void Hand::zeige_auf(QWidget& widget, QPoint stelle) {
  QWidget* const oben = widget.window();
  if (!widget.isVisible()) unerreichbar(widget, " ist nicht zu sehen");
  if (!widget.isEnabled()) unerreichbar(widget, " ist gesperrt");
  const QPoint im_Fenster = widget.mapTo(oben, stelle);
  const QWidget* dort = oben->childAt(im_Fenster);
  if (dort != &widget && !widget.isAncestorOf(dort)) unerreichbar(widget, " ist an dieser Stelle verdeckt");
  fenster_ = oben->windowHandle();
  ort_ = im_Fenster;
  sende(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
}

void Hand::sende(QEvent::Type art, Qt::MouseButton knopf, Qt::MouseButtons gedrueckte) {
  if (!fenster_) return;
  QMouseEvent ereignis(art, ort_, ort_, ort_ + fenster_->position(), knopf, gedrueckte, dazu_);
  QCoreApplication::sendEvent(fenster_, &ereignis);
}

void Hand::klicke(QWidget& widget) {
  klicke(widget, widget.rect().center());
}

void Hand::klicke(QWidget& widget, QPoint stelle, Qt::KeyboardModifiers dazu) {
  dazu_ = dazu;
  const auto danach = qScopeGuard([this] { dazu_ = Qt::NoModifier; });
  druecke(widget, stelle);
  lasse_los();
}

void Hand::doppelklicke(QWidget& widget, QPoint stelle) {
  klicke(widget, stelle);
  sende(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
  lasse_los();
}

void Hand::druecke(QWidget& widget, QPoint stelle) {
  zeige_auf(widget, stelle);
  sende(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
}

void Hand::ziehe(QPoint weg) {
  constexpr int Stuecke = 8;
  const QPointF anfang = ort_;
  for (int i = 1; i <= Stuecke; ++i) {
    ort_ = anfang + QPointF(weg) * i / Stuecke;
    sende(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
  }
}

void Hand::lasse_los() {
  sende(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
}

bool Hand::ziehe_herein(QWidget& widget, QPoint stelle, const QMimeData& dateien) {
  zeige_auf(widget, stelle);
  if (!fenster_) return false;
  QDragEnterEvent hinein(ort_.toPoint(), Qt::CopyAction, &dateien, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(fenster_, &hinein);
  QDragMoveEvent weiter(ort_.toPoint(), Qt::CopyAction, &dateien, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(fenster_, &weiter);
  return weiter.isAccepted();
}

bool Hand::wirf_ab(const QMimeData& dateien) {
  if (!fenster_) return false;
  QDropEvent ab(ort_, Qt::CopyAction, &dateien, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(fenster_, &ab);
  return ab.isAccepted();
}

void Hand::sende_Taste(int taste, Qt::KeyboardModifiers dazu, const QString& text) {
  const QWidget* vorn = fenster_vorn();
  const QPointer<QWindow> fenster = vorn ? vorn->windowHandle() : nullptr;
  for (const auto art : {QEvent::KeyPress, QEvent::KeyRelease}) {
    if (!fenster) return;
    QKeyEvent ereignis(art, taste, dazu, text);
    QCoreApplication::sendEvent(fenster, &ereignis);
  }
}

void Hand::taste(Qt::Key taste, Qt::KeyboardModifiers dazu) {
  // The letters that a keyboard sends with these keys.
  QString text;
  if (taste == Qt::Key_Return) text = u"\r"_s;
  if (taste == Qt::Key_Escape) text = u"\x1b"_s;
  if (taste == Qt::Key_Space && !dazu.testFlag(Qt::AltModifier)) text = u" "_s;
  sende_Taste(taste, dazu, text);
}

void Hand::tippe(const QString& text) {
  for (const QChar zeichen : text)
    sende_Taste(zeichen.toUpper().unicode(), zeichen.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, zeichen);
}
