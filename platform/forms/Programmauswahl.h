#pragma once

#include <QDialog>

#include "platform/shell/Programme.h"

class QListWidget;

/// The window of Open With: the programs for a file, and any other.
class Programmauswahl final : public QDialog {
 public:
  Programmauswahl(const QString& datei, const QList<shell::Programm>& programme, QWidget* ueber);

  /// What was chosen; an empty one for none.
  shell::Programm gewaehltes() const;

 private:
  void waehle_anderes();

  QList<shell::Programm> programme_;
  QListWidget* liste_;
};

/// The service that shows this window.
class Programmwahl_mit_Fenster final : public shell::Programmwahl {
 public:
  QStringList waehle(const QString& datei, const QList<shell::Programm>& programme, QString& verzeichnis) override;
};
