#pragma once

#include <QPointer>
#include <QTableView>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/gitter/Gittermodell.h"
#include "platform/forms/gitter/Zeilenauswahl.h"
#include "platform/forms/steuerelemente/Steuerelement.h"

class QLineEdit;

/// A data grid over an XArrayDBObject: one line for each row of the array, column i of the grid over its i-th column.
/// Rows are told by their index in the array, columns by their number from 0; a number outside raises 9.
///
/// The grid shows a snapshot of the array, taken by ReBind and Refresh. What happens to the array in between does
/// not show. Empty and Null show as nothing, Booleans too unless the column has check boxes.
///
/// Rows are selected by the row selector at the left and, in a grid in which nothing can be edited, by their cells and
/// by the keys. In a grid that can be edited a click into a cell makes it the current one and ends the selection.
///
/// Edits: what the user enters is committed as soon as the cell is left, a check box at once; what code enters by Text
/// waits for Update or for the user to leave the cell. The steps of a commit: from the line for a new row, the array
/// gets that row; AfterColEdit; the value goes into the array; AfterUpdate. A failure in a handler ends the commit
/// there; a row that the array got stays.
///
/// Events that the user causes run under the guard of the window, and so do those that a statement elsewhere causes,
/// for example by taking the focus away from an open edit. Events that a statement of the grid causes are raised by
/// that statement, which passes on a handler's failure.
class TDBGrid : public QTableView, public Steuerelement {
 public:
  explicit TDBGrid(QWidget* behaelter, const QString& name);
  ~TDBGrid() override;

  // Columns. Adding and removing leave the rows and the selection alone.

  std::int32_t ColumnCount() const noexcept { return modell_.columnCount(); }
  /// Appends a column; its number.
  std::int32_t AddColumn(const Gitterspalte& spalte);
  void RemoveColumns();
  const Gitterspalte& Column(std::int32_t spalte) const {
    return modell_.spalten()[static_cast<std::size_t>(geprueft(spalte))];
  }
  void Column(std::int32_t spalte, const Gitterspalte& wert);

  // Data.

  /// The data source; shared with whoever else fills it. It counts from the next ReBind on.
  const std::shared_ptr<XArrayDBObject>& Array() const noexcept { return array_; }
  void Array(std::shared_ptr<XArrayDBObject> wert) { array_ = std::move(wert); }
  /// Shows the array as it is now, drops an edit that is open, ends the selection without an event, makes the first row
  /// current and raises RowColChange, also when the first row was the current one before.
  void ReBind();
  /// Shows the array as it is now; selection, current cell and open edit stay as far as their rows do.
  void Refresh();
  /// The user can edit the columns that are not locked; True at the start.
  bool AllowUpdate() const noexcept { return modell_.AllowUpdate; }
  void AllowUpdate(bool wert) { modell_.AllowUpdate = wert; }
  /// A line for a new row, marked "*", follows the last row. It is no row of the array until an edit in it is
  /// committed. False at the start.
  bool AllowAddNew() const noexcept { return neue_Zeile_; }
  void AllowAddNew(bool wert);

  // Selection.

  Zeilenauswahl& SelBookmarks() noexcept { return auswahl_; }
  const Zeilenauswahl& SelBookmarks() const noexcept { return auswahl_; }

  // Current cell.

  /// Index of the current row in the array, -1 without one. On the line for a new row the index that this will get.
  std::int32_t Row() const noexcept { return arrayzeile(zeile_); }
  /// Commits an open edit, moves there and raises RowColChange if that is another row.
  void Row(std::int32_t wert);
  /// Number of the current column, -1 without one.
  std::int32_t Col() const noexcept { return spalte_; }
  /// Commits an open edit, moves there and raises RowColChange if that is another column. Nothing without a row.
  void Col(std::int32_t wert) { versetze({zeile_, geprueft(wert)}); }
  /// The text of the current cell, of an open edit what has been entered so far; "True" or "False" for a check box.
  QString Text() const;
  /// Enters a text into the current cell, locked or not; of a check box "True" or "False", anything else raises 13. It
  /// shows at once and is committed by Update. Inside AfterColEdit it replaces what was entered. Without a current cell
  /// raises 5.
  void Text(const QString& wert);
  /// Commits an open edit; without one does nothing. Inside AfterColEdit it goes on with the commit at once.
  void Update();

  // Events. A row is -1 where there was none.

  /// The current cell is another one.
  std::function<void(std::int32_t letzte_Zeile, std::int32_t letzte_Spalte)> RowColChange;
  /// The user has changed the selection; SelBookmarks holds the new one.
  std::function<void()> SelChange;
  /// The user has clicked into a row or its selector; a change of the selection was told before.
  std::function<void()> Click;
  /// A cell of the current row was edited and is about to be committed; Text holds the new value.
  std::function<void(std::int32_t spalte)> AfterColEdit;
  /// An edit has reached the array.
  std::function<void()> AfterUpdate;
  /// The button of the current cell was clicked; F4 and Alt+Down do so as well.
  std::function<void(std::int32_t spalte)> ButtonClick;

  void selectAll() override;

 protected:
  void currentChanged(const QModelIndex& jetzt, const QModelIndex& vorher) override;
  QModelIndex moveCursor(CursorAction wohin, Qt::KeyboardModifiers dazu) override;
  void keyPressEvent(QKeyEvent* ereignis) override;
  void mousePressEvent(QMouseEvent* ereignis) override;
  void mouseMoveEvent(QMouseEvent* ereignis) override;
  void mouseReleaseEvent(QMouseEvent* ereignis) override;
  /// The second click of a double one counts as a click of its own.
  void mouseDoubleClickEvent(QMouseEvent* ereignis) override { mousePressEvent(ereignis); }
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint wink) override;

 private:
  friend class Gitterdelegat;
  struct Zelle {
    int zeile = -1;
    int spalte = -1;
    friend bool operator==(const Zelle&, const Zelle&) = default;
  };

  void richte_Koepfe_ein();
  void wende_an(std::int32_t spalte);
  /// The number of a column that there is; any other raises 9.
  std::int32_t geprueft(std::int32_t spalte) const;

  // The current cell.
  std::int32_t arrayzeile(int zeile) const noexcept { return zeile < 0 ? -1 : modell_.arrayzeile(zeile); }
  Zelle aktuelle() const { return {currentIndex().row(), currentIndex().column()}; }
  void gehe_zu(int zeile, int spalte) {
    selectionModel()->setCurrentIndex(modell_.index(zeile, spalte), QItemSelectionModel::NoUpdate);
  }
  void versetze(const Zelle& ziel);
  int erste_sichtbare_Spalte() const;
  void nimm_Standort();
  void melde_Standort(const Zelle& vorher) const {
    if (RowColChange) RowColChange(arrayzeile(vorher.zeile), vorher.spalte);
  }

  // Selection, by the user.
  bool waehlt_in_Zellen() const;
  bool ist_gewaehlt(int zeile) const {
    return !modell_.ist_neue_Zeile(zeile) && auswahl_.Contains(modell_.arrayzeile(zeile));
  }
  void druecke_Zeile(int zeile, Qt::KeyboardModifiers dazu, int vorherige);
  void waehle_bis(int zeile);
  void hebe_auf();
  void uebernimm_Auswahl(Zeilenauswahl&& neu);
  void waehle_mit_Taste(const QKeyEvent& taste, int vorherige);

  // Check boxes and buttons.
  bool schaltbar(const Zelle& zelle) const;
  void schalte_um(const Zelle& zelle);
  bool auf_Knopf(const Zelle& zelle, QPoint wo) const {
    return Knopf_in(visualRect(modell_.index(zelle.zeile, zelle.spalte)), zelle.spalte).contains(wo);
  }
  QRect Knopf_in(const QRect& zelle, int spalte) const;
  QRect ohne_Knopf(const QRect& zelle, int spalte) const {
    return zelle.adjusted(0, 0, -Knopf_in(zelle, spalte).width(), 0);
  }
  void klicke_Knopf();

  // Edits.
  bool bearbeitbar(const Zelle& zelle) const {
    return modell_.flags(modell_.index(zelle.zeile, zelle.spalte)).testFlag(Qt::ItemIsEditable);
  }
  void merke_Editor(QLineEdit& editor);
  void nimm_Editor();
  void entwerte_Editor();
  bool lies_Editor();
  void beende_Editor();
  bool Taste_im_Editor(const QKeyEvent& taste);
  void vollziehe();
  void lege_Zeile_an();
  void schreibe();

  Gittermodell modell_;
  std::shared_ptr<XArrayDBObject> array_;
  Zeilenauswahl auswahl_;
  /// The current cell as it was told last.
  int zeile_ = -1;
  int spalte_ = -1;
  /// Where a selection of several rows begins, and the earlier one that it is added to or taken out of.
  int anker_ = -1;
  std::deque<std::int32_t> grundlage_;
  bool waehlt_ab_ = false;
  /// The cell that the mouse went down in, and whether that was the current one already.
  Zelle gedrueckt_;
  bool war_aktuell_ = false;
  bool knopf_gedrueckt_ = false;
  bool neue_Zeile_ = false;
  bool durch_Code_ = false;
  bool meldet_Eingabe_ = false;
  QPointer<QLineEdit> editor_;
  Zelle editorzelle_;
};
