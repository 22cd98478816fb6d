#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>
#include <functional>

#include "host/betrieb/vorgang/Vorgang.h"
#include "host/fenster/Vorgangsmodell.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTreeView;

/// The left side of the window: the business records by kind, with a filter above them.
class Vorgangsliste final : public QWidget {
 public:
  explicit Vorgangsliste(QWidget* oberhalb = nullptr);

  /// Another record is chosen, or none any more.
  std::function<void()> bei_Wahl;
  /// The chosen record is to be opened: double click or Enter.
  std::function<void()> bei_Oeffnen;

  QPushButton* cmd_Einlesen;
  QPushButton* cmd_Suchen;
  QPushButton* cmd_Aufraeumen;
  /// What the right mouse button offers.
  void Kontextmenue(const QList<QAction*>& aktionen);

  /// Replaces all records. The chosen one stays chosen where it is still there; `bei_Wahl` is not called.
  void setze(const QList<Vorgang>& vorgaenge);
  /// The chosen record, or none. Valid until the next `setze`.
  const Vorgang* gewaehlt() const;
  /// Chooses the record with that number; false when there is none.
  bool waehle(const QString& nummer);
  bool leer() const { return modell_->leer(); }

  /// Where the records are shown; the record at a place of it, or none, and its row there, or an empty one.
  QWidget* flaeche() const;
  const Vorgang* vorgang_bei(QPoint ort) const;
  QRect zeile_bei(QPoint ort) const;

 protected:
  bool eventFilter(QObject* ziel, QEvent* ereignis) override;

 private:
  void baue_auf();
  void ordne_an(QLabel& lbl_Filter);
  void verbinde();
  void filtere(const QString& text);
  void richte_Baum_ein();
  void zeige_Leere();
  void waehle_ersten_Treffer();
  void waehle_still(const QModelIndex& im_Modell);

  QLineEdit* txt_Filter;
  QTreeView* tree_Vorgaenge;
  QStackedWidget* seiten_;
  QLabel* lbl_Leer;
  QPushButton* cmd_FilterLeeren;
  Vorgangsmodell* modell_;
  Vorgangsfilter* filter_;
};
