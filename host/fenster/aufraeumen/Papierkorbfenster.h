#pragma once

#include <QDialog>

#include "host/betrieb/aufraeumen/Papierkorb.h"

class QLabel;
class QPushButton;
class QSpinBox;
class QTreeWidget;

/// Shows the clearings whose files lie in the Papierkorb, brings one back or empties what is old enough, each after a
/// question.
class Papierkorbfenster final : public QDialog {
 public:
  Papierkorbfenster(const Papierkorb& korb, QWidget* ueber);

 private:
  void baue_auf();
  void fuelle();
  void hole_zurueck();
  void leere();

  const Papierkorb& korb_;
  QTreeWidget* lst_Laeufe;
  QLabel* lbl_Leer;
  QSpinBox* spn_Tage;
  QPushButton* cmd_Zurueckholen;
  QPushButton* cmd_Endgueltig;
};
