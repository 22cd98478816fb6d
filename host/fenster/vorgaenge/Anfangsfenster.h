#pragma once

#include <QDialog>

class QRadioButton;

/// Asks at the first start what the data folder is to hold.
class Anfangsfenster final : public QDialog {
 public:
  explicit Anfangsfenster(QWidget* ueber);

  /// The firm's own records are to come; otherwise there are samples.
  bool leer() const;

 private:
  QRadioButton* opt_Beispiele;
  QRadioButton* opt_Leer;
};
