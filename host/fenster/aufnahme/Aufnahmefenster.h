#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QPushButton;

/// Shows how far the taking in of pictures is and lets the user stop it. It appears when there is something to wait
/// for: at once for many pictures, otherwise after a moment. Modal; events run only while it is asked, and only once it
/// is up.
class Aufnahmefenster final : public QDialog {
 public:
  /// From so many pictures on it is up from the start.
  static constexpr int Viele = 20;
  /// Milliseconds after which it comes up for fewer.
  static constexpr int Geduld = 300;

  explicit Aufnahmefenster(QWidget* ueber);

  /// Shows that so many are done. False once the user has stopped it, by the button, Escape or the frame.
  bool zeige(int fertige, int alle);
  void reject() override;

 private:
  QLabel* lbl_Fortschritt;
  QProgressBar* bar_Fortschritt;
  QPushButton* cmd_Anhalten;
  QElapsedTimer uhr_;
  bool angehalten_ = false;
};
