#pragma once

#include <QObject>
#include <functional>

class QMouseEvent;
class QWidget;
class QWindow;
class Steuerelement;

/// A window whose controls can be dragged.
class Ziehbuehne {
 public:
  virtual ~Ziehbuehne() = default;
  /// The user pressed the mouse button on a control that is dragged.
  virtual void beginne_Ziehen(Steuerelement& quelle) = 0;

  /// Tells the window in which the control stands; without such a window nothing happens.
  static void beginne(Steuerelement& quelle);
};

/// A drag of controls inside one window. It follows the mouse by geometry, so that the source may be unloaded while it
/// is dragged. The source hears the first DragOver at the press; then the control under the pointer at every move, or
/// the next container of it that listens. Letting the button go drops on the control there; Escape drops nowhere.
class Ziehvorgang : public QObject {
 public:
  explicit Ziehvorgang(QWidget& fenster) : fenster_(fenster) {}

  /// Begins, unless one is running.
  void beginne(Steuerelement& quelle);
  /// Ends without a drop; harmless when none is running.
  void brich_ab();

  /// Runs a handler of a control; set by the window.
  std::function<void(const std::function<void()>&)> bewacht;
  /// Runs at the end of each drag, however it ended, after the drop.
  std::function<void()> Ende;

 protected:
  bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;

 private:
  bool sieh_Maus(const QWindow& empfaenger, QMouseEvent& maus);
  Steuerelement* ziel(QPoint global) const;

  QWidget& fenster_;
  bool laeuft_ = false;
};
