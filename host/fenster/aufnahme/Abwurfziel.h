#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>
#include <functional>

#include "host/fenster/aufnahme/Abwurf.h"

class QDropEvent;
class QWidget;

/// Lets pictures be dropped on a widget, and marks where they would go while they are dragged over it. The other
/// program keeps its files: they are copied, never moved.
class Abwurfziel final : public QObject {
 public:
  /// The part of the widget that takes a drop at that place, or an empty one where nothing does.
  using Stelle = std::function<QRect(QPoint)>;
  /// Called while the other program still waits for its answer; must not show anything.
  using Annahme = std::function<void(QPoint, const Abwurf&)>;

  /// Belongs to the widget.
  Abwurfziel(QWidget& ziel, Stelle stelle, Annahme annahme);

 protected:
  bool eventFilter(QObject* ziel, QEvent* ereignis) override;

 private:
  void pruefe(QDropEvent& ereignis, bool beim_Eintritt);
  void nimm_an(QDropEvent& ereignis);
  void rolle(QPoint ort);

  QWidget& ziel_;
  Stelle stelle_;
  Annahme annahme_;
  QWidget* marke_ = nullptr;
};
