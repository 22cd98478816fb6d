#include "platform/forms/Form.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QScopeGuard>

#include "platform/basic/Nachschlagen.h"
#include "platform/forms/steuerelemente/Steuerelement.h"

using namespace Qt::Literals::StringLiterals;

namespace tasten {

std::int16_t code(int qt_Taste) noexcept {
  constexpr std::pair<int, std::int16_t> Tasten[] = {{Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9}, {Qt::Key_Return, 13},
      {Qt::Key_Enter, 13}, {Qt::Key_Shift, 16}, {Qt::Key_Control, 17}, {Qt::Key_Alt, 18}, {Qt::Key_Escape, 27},
      {Qt::Key_PageUp, 33}, {Qt::Key_PageDown, 34}, {Qt::Key_End, 35}, {Qt::Key_Home, 36}, {Qt::Key_Left, 37},
      {Qt::Key_Up, 38}, {Qt::Key_Right, 39}, {Qt::Key_Down, 40}, {Qt::Key_Insert, 45}, {Qt::Key_Delete, 46}};
  if (qt_Taste >= Qt::Key_F1 && qt_Taste <= Qt::Key_F24) return static_cast<std::int16_t>(112 + qt_Taste - Qt::Key_F1);
  if (qt_Taste == Qt::Key_Space || (qt_Taste >= Qt::Key_0 && qt_Taste <= Qt::Key_9) ||
      (qt_Taste >= Qt::Key_A && qt_Taste <= Qt::Key_Z))
    return static_cast<std::int16_t>(qt_Taste);
  return nachgeschlagen(Tasten, qt_Taste, std::int16_t{0});
}

std::int16_t shift(Qt::KeyboardModifiers zustand) noexcept {
  return static_cast<std::int16_t>((zustand.testFlag(Qt::ShiftModifier) ? Umschalt : 0) |
      (zustand.testFlag(Qt::ControlModifier) ? Strg : 0) | (zustand.testFlag(Qt::AltModifier) ? Alt : 0));
}

}  // namespace tasten

Form::Form(const QString& name) : name_(name) {
  setObjectName(name);
  setWindowIcon(QIcon(u":/kvo/icons/programm.svg"_s));
  // The measures of all controls were drawn for letters of this size.
  QFont schrift = font();
  schrift.setPixelSize(12);
  setFont(schrift);
  setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint |
      Qt::WindowCloseButtonHint);
  qApp->installEventFilter(this);
  ziehen_.bewacht = [this](const std::function<void()>& handler) { bewacht(handler); };
  ziehen_.Ende = [this] { Form_DragEnde(); };
}

void Form::Show() {
  Load();
  fehler_ = nullptr;
  // Shown before the loop is entered: a form that a failure or its own first events hid must not enter it.
  setWindowModality(Qt::ApplicationModal);
  show();
  if (!std::exchange(gezeigt_, true)) zeige_zum_ersten_Mal();
  if (isVisible() && !fehler_) exec();
  if (fehler_) std::rethrow_exception(std::exchange(fehler_, nullptr));
}

void Form::zeige_zum_ersten_Mal() {
  vorweg_aktiviert_ = !isActiveWindow();
  abgeschirmt([this] { Form_Resize(); });
  abgeschirmt([this] {
    // The event of one control may unload others.
    const QList<QWidget*> alle = findChildren<QWidget*>();
    const QList<QPointer<QWidget>> kinder(alle.begin(), alle.end());
    for (const QPointer<QWidget>& kind : kinder)
      if (auto* element = dynamic_cast<Steuerelement*>(kind.data())) element->zum_ersten_Mal_gezeigt();
  });
  if (!fehler_) abgeschirmt([this] { Form_Activate(); });
}

void Form::Unload() {
  if (!geladen_ || std::exchange(entladen_, true)) return;
  Form_Unload();
  hide();
}

Fensterlage Form::Lage() const {
  const bool maximiert = isMaximized();
  return {maximiert ? normalGeometry() : geometry(), maximiert};
}

void Form::Lage(const Fensterlage& wert) {
  setGeometry(wert.Rechteck);
  if (wert.Maximiert) setWindowState(windowState() | Qt::WindowMaximized);
  // A window that does not show yet gets its resize when it does: too late for whoever asked.
  if (!isVisible()) Form_Resize();
}

void Form::bewacht(const std::function<void()>& handler) {
  if (tiefe_ > 0) return handler();
  abgeschirmt(handler);
}

void Form::abgeschirmt(const std::function<void()>& handler) noexcept {
  ++tiefe_;
  const auto zurueck = qScopeGuard([this] { --tiefe_; });
  try {
    handler();
  } catch (...) {
    // The first failure is the cause; what follows from it tells nobody more.
    if (!fehler_) fehler_ = std::current_exception();
    hide();
  }
}

void Form::resizeEvent(QResizeEvent* ereignis) {
  QDialog::resizeEvent(ereignis);
  if (gezeigt_) abgeschirmt([this] { Form_Resize(); });
}

void Form::hideEvent(QHideEvent* ereignis) {
  QDialog::hideEvent(ereignis);
  ziehen_.brich_ab();
}

// The base is not called: it would ask reject() again, which clicks the cancel button and does not return here.
void Form::closeEvent(QCloseEvent* ereignis) {
  bool abgelehnt = false;
  abgeschirmt([&] { Form_QueryUnload(abgelehnt); });
  ereignis->setAccepted(!abgelehnt);
}

bool Form::event(QEvent* ereignis) {
  const bool ergebnis = QDialog::event(ereignis);
  if (ereignis->type() == QEvent::WindowActivate && gezeigt_ && !std::exchange(vorweg_aktiviert_, false))
    abgeschirmt([this] { Form_Activate(); });
  return ergebnis;
}

bool Form::eventFilter(QObject* empfaenger, QEvent* ereignis) {
  auto* const taste = dynamic_cast<QKeyEvent*>(ereignis);
  const bool bewegt = ereignis->type() == QEvent::KeyPress || ereignis->type() == QEvent::KeyRelease;
  const auto* ziel = taste && bewegt ? qobject_cast<QWidget*>(empfaenger) : nullptr;
  // A key that a control ignores comes again at its containers: only the first stop counts.
  if (ziel && ziel->window() == this && (ziel == focusWidget() || (!focusWidget() && ziel == this))) sieh_Taste(*taste);
  return QDialog::eventFilter(empfaenger, ereignis);
}

void Form::sieh_Taste(QKeyEvent& taste) {
  const std::int16_t zustand = tasten::shift(taste.modifiers());
  const std::int16_t code = tasten::code(taste.key());
  const QString text = taste.text();
  const bool gedrueckt = taste.type() == QEvent::KeyPress;
  bewacht([&] {
    if (!gedrueckt && !taste.isAutoRepeat()) Form_KeyUp(code, zustand);
    if (gedrueckt) Form_KeyDown(code, zustand);
    if (gedrueckt && !text.isEmpty()) Form_KeyPress(static_cast<std::int16_t>(text[0].unicode()));
  });
}

void Form::reject() {
  if (abbruchknopf_ && abbruchknopf_->isEnabled() && !abbruchknopf_->isHidden()) abbruchknopf_->click();
}
