#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <optional>

#include "host/betrieb/aufraeumen/Aufraeumen.h"

class QLabel;
class QProgressBar;
class QPushButton;

/// Shows how far a clearing of the picture tree is and lets the user stop it. It appears when there is something to
/// wait for: at once where there are many files, otherwise after a moment. Modal; events run only while it is asked,
/// and only once it is up.
class Aufraeumfortschritt final : public QDialog {
 public:
  /// From so many files on it is up from the start.
  static constexpr std::size_t Viele = 500;
  /// Milliseconds after which it comes up for fewer.
  static constexpr int Geduld = 300;

  explicit Aufraeumfortschritt(QWidget* ueber);

  /// As Aufraeumen::Fortgang: false once the user has stopped it, by the button, Escape or the frame.
  bool zeige(Aufraeumen::Schritt schritt, std::size_t getan, std::size_t von);
  /// Stays up until the work has come to its border.
  void reject() override;

 private:
  void setze(Aufraeumen::Schritt schritt, std::size_t getan, std::size_t von);

  QLabel* lbl_Fortschritt;
  QProgressBar* bar_Fortschritt;
  QPushButton* cmd_Abbrechen;
  QElapsedTimer uhr_;
  QElapsedTimer zuletzt_;
  std::optional<Aufraeumen::Schritt> schritt_;
  bool angehalten_ = false;
};
