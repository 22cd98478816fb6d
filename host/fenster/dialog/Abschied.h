#pragma once

#include <QObject>
#include <memory>

class QSocketNotifier;

/// Ends a program with a dialog in order when it is told to from outside (Ctrl+C, SIGTERM, the end of its terminal),
/// for as long as it lives: what is being written is written to its end, then each window that waits for its user
/// closes as if left without saving, and a question counts as answered with No. A second such signal ends the process
/// at once.
class Abschied final : public QObject {
 public:
  Abschied();
  ~Abschied() override;

  /// The program was told to end.
  bool verlangt() const noexcept { return verlangt_; }

 private:
  void schliesse() const;

  std::unique_ptr<QSocketNotifier> glocke_;
  bool verlangt_ = false;
};
