#pragma once

#include <QWidget>
#include <functional>

/// Who stands between the event loop and the handlers of a window: it decides what becomes of a handler's failure.
class Ereigniswache {
 public:
  virtual ~Ereigniswache() = default;
  /// Runs a handler; a failure of the outermost one is kept, that of an inner one flies on.
  virtual void bewacht(const std::function<void()>& handler) = 0;
  /// Runs a handler where no exception may pass, in the middle of Qt's own work: a failure is kept in any case.
  virtual void abgeschirmt(const std::function<void()>& handler) noexcept = 0;

  /// Runs a control's handler under the guard of the window it stands in; without a guard it runs plainly. An empty
  /// handler is passed over.
  static void melde(const QWidget& steuerelement, const std::function<void()>& handler) {
    rufe(steuerelement, &Ereigniswache::bewacht, handler);
  }
  /// The same for a handler that runs inside one of Qt's signals, even where another handler caused it.
  static void melde_im_Signal(const QWidget& steuerelement, const std::function<void()>& handler) {
    rufe(steuerelement, &Ereigniswache::abgeschirmt, handler);
  }

 private:
  using Weg = void (Ereigniswache::*)(const std::function<void()>& handler);
  static void rufe(const QWidget& steuerelement, Weg weg, const std::function<void()>& handler) {
    if (!handler) return;
    auto* const wache = dynamic_cast<Ereigniswache*>(steuerelement.window());
    wache ? (wache->*weg)(handler) : handler();
  }
};
