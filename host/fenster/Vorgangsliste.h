#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <functional>

#include "host/betrieb/vorgang/Vorgang.h"
#include "host/fenster/Vorgangsmodell.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTimer;
class QTreeView;

/// The left side of the window: an answer of the database, its records by kind, with what was asked above them and how
/// much of it is shown below. Asks nothing itself.
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
  QPushButton* cmd_Papierkorb;
  /// Only where records are made here.
  QPushButton* cmd_NeuerVorgang;
  QPushButton* cmd_ListeEinlesen;
  /// What the right mouse button offers.
  void Kontextmenue(const QList<QAction*>& aktionen);
  /// An action whose key counts in the list of records alone.
  void Listentaste(QAction* aktion);

  /// Something else is wanted: other words, more records, or those of this desk. `zeige_Frage` is called by whoever
  /// asks.
  std::function<void()> bei_Frage;
  /// What is wanted: the words of the filter, at most so many records, or only those that were worked on last.
  QString filter() const;
  void filter(const QString& worte);
  int gewuenschte() const noexcept { return gewuenschte_; }
  bool nur_zuletzt() const;

  /// The database is being asked. What is shown stays; words say so where the answer takes its time.
  void zeige_Frage();
  /// Replaces all records by those of an answer. The chosen one stays chosen where it is still there. True when the
  /// choice is another one; `bei_Wahl` is not called.
  bool setze(const QList<Vorgang>& vorgaenge, bool vielleicht_mehr = false);
  /// How many records fit what was asked; `hoechstens` is the last number that was counted.
  void zeige_Zahl(std::int64_t zahl, std::int64_t hoechstens);
  /// There is no answer, for that reason. What is shown stays.
  void zeige_Ausfall(const QString& grund);
  /// Words below the list that stay, or none.
  void zeige_Hinweis(const QString& text);

  /// The chosen record, or none. Valid until the next `setze`.
  const Vorgang* gewaehlt() const;
  /// Chooses the record with that number; false when it is not shown.
  bool waehle(const QString& nummer);
  bool leer() const { return modell_->leer(); }
  /// Number of records that are shown.
  int anzahl() const { return modell_->anzahl(); }

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
  void frage_neu();
  void frage_mehr();
  void zeige_Leere();
  void waehle_ersten_Treffer();
  void waehle_still(const QModelIndex& index);

  QLineEdit* txt_Filter;
  QTreeView* tree_Vorgaenge;
  QStackedWidget* seiten_;
  QLabel* lbl_Leer;
  QPushButton* cmd_FilterLeeren;
  QLabel* lbl_Umfang;
  QPushButton* cmd_Zuletzt;
  QPushButton* cmd_Mehr;
  QLabel* lbl_Hinweis;
  Vorgangsmodell* modell_;
  QTimer* geduld_;
  int gewuenschte_;
  /// The first hit is wanted as soon as the answer is there.
  bool ersten_waehlen_ = false;
  bool gefragt_ = false;
};
