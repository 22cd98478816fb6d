#pragma once

#include <QKeySequence>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWindow>

class QMimeData;
class QWidget;

/// A user's hand on mouse and keyboard. Its events go to the window, from where they take the toolkit's own way to the
/// control; so it reaches what a user would reach and nothing else. Places are logical pixels of the widget.
class Hand {
 public:
  /// Clicks with the left button; without a place in the widget's middle. A widget that can't be seen or used there
  /// ends with std::runtime_error, before anything is sent.
  void klicke(QWidget& widget);
  void klicke(QWidget& widget, QPoint stelle, Qt::KeyboardModifiers dazu = Qt::NoModifier);
  /// A click and the double click that follows it.
  void doppelklicke(QWidget& widget, QPoint stelle);

  /// Presses the button and keeps it. The pointer then moves by a way, in several small moves, until it is let go. The
  /// widget may be gone by then.
  void druecke(QWidget& widget, QPoint stelle);
  void ziehe(QPoint weg);
  void lasse_los();

  /// Another program's files come in with the mouse, to that place; they are let go there. True where they are taken.
  /// The files stay the caller's.
  bool ziehe_herein(QWidget& widget, QPoint stelle, const QMimeData& dateien);
  bool wirf_ab(const QMimeData& dateien);

  /// Presses a key and lets it go, in the window that a user would have in front.
  void taste(Qt::Key taste, Qt::KeyboardModifiers dazu = Qt::NoModifier);
  /// Types a text letter by letter.
  void tippe(const QString& text);

  /// The window in front: the modal one, or the active one, or the first that is visible.
  static QWidget* fenster_vorn();

 private:
  void zeige_auf(QWidget& widget, QPoint stelle);
  void sende(QEvent::Type art, Qt::MouseButton knopf, Qt::MouseButtons gedrueckte);
  static void sende_Taste(int taste, Qt::KeyboardModifiers dazu, const QString& text);

  QPointer<QWindow> fenster_;
  QPointF ort_;
  Qt::KeyboardModifiers dazu_;
};
