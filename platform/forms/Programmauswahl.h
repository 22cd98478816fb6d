#pragma once

#include <QDialog>

#include "platform/shell/Programme.h"

class QListWidget;

/// The window of Open With: the programs for a file, and any other.
class Programmauswahl final : public QDialog {
 public:
  Programmauswahl(const QString& datei, const QList<shell::Programm>& programme, QWidget* ueber);

  /// Command line for what was chosen; empty for none.
  QStringList befehlszeile() const;
  QString verzeichnis() const;

 private:
  void waehle_anderes();

  const QString datei_;
  QList<shell::Programm> programme_;
  QListWidget* liste_;
};

/// The service that shows this window.
class Programmwahl_mit_Fenster final : public shell::Programmwahl {
 public:
  QStringList waehle(const QString& datei, const QList<shell::Programm>& programme, QString& verzeichnis) override;
};
