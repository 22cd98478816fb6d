#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

class QWindow;

/// Gives the windows of a dialog without a main window their place on the screen, for as long as it lives: the first is
/// a window of its own, in the task bar under its title, or stands above the window of the calling program; each
/// further one stands above the one before.
class Dialograhmen final : public QObject {
 public:
  /// `titel` comes in front of the first form's own. A window `ueber` that can't be had is told on standard error.
  Dialograhmen(QString titel, std::optional<std::uint32_t> ueber);
  ~Dialograhmen() override;

  bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;

 private:
  QWidget* darunter(const QWidget& fenster) const;
  void rahme(QWidget& fenster);

  QString titel_;
  /// Stands for the caller's window.
  std::unique_ptr<QWindow> fremdes_;
  QList<QPointer<QWidget>> gezeigte_;
};
