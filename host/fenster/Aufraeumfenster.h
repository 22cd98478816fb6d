#pragma once

#include <QDialog>

#include "host/betrieb/Aufraeumen.h"

/// Shows what a clearing of the picture tree would delete, and asks.
class Aufraeumfenster final : public QDialog {
 public:
  Aufraeumfenster(const Aufraeumen& aufraeumen, const Aufraeumliste& liste, QWidget* ueber);
};
