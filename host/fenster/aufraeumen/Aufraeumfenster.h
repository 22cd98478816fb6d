#pragma once

#include <QDialog>
#include <QHash>
#include <QSet>
#include <QString>
#include <cstdint>

#include "host/betrieb/aufraeumen/Aufraeumen.h"
#include "host/betrieb/vorgang/Vorschaulader.h"

class QLabel;
class QPushButton;
class QTimer;
class QTreeWidget;
class QTreeWidgetItem;

/// Shows what a clearing of the picture tree would take, as pictures with size and age, and asks; accepted where the
/// user agrees. Single files can be taken off the list. Below it stands what stays, with the reason.
class Aufraeumfenster final : public QDialog {
 public:
  enum Spalte : int { Datei, Grund, Groesse, Geaendert };

  /// Both live longer than the window.
  Aufraeumfenster(const Aufraeumen& aufraeumen, const Aufraeumplan& plan, QWidget* ueber);

  /// Paths of the plan's list that the user has taken off it.
  QSet<QString> ausgenommen() const;
  /// What the question said.
  bool ist_endgueltig() const noexcept { return endgueltig_; }

 protected:
  void resizeEvent(QResizeEvent* ereignis) override;

 private:
  void baue_auf();
  void fuelle();
  void fuege_an(const Aufraeumposten& posten);
  void fuege_an(const Bleibendes& bleibendes);
  void rechne();
  void zeige_ein_Bild();

  const Aufraeumen& aufraeumen_;
  const Aufraeumplan& plan_;
  bool endgueltig_;
  Vorschaulader lader_;
  QTreeWidget* lst_Aufraeumen;
  QLabel* lbl_Platz;
  QPushButton* cmd_Loeschen;
  QTimer* takt_;
  /// The rows of the list, as in the plan.
  QList<QTreeWidgetItem*> zeilen_;
  QHash<QString, std::int64_t> groessen_;
};
