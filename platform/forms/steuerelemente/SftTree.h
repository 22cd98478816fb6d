#pragma once

#include <QTreeWidget>
#include <cstdint>

#include "platform/forms/steuerelemente/Steuerelement.h"

/// A list with columns under titles, whose items have a level. Items and cells count from 0; a number outside of them
/// raises 9.
///
/// What a cell holds is kept character for character. It shows on one line: control characters as blanks, and of a text
/// longer than anybody reads in a list only its beginning, which is also the cell's tool tip.
class SftTree : public QTreeWidget, public Steuerelement {
 public:
  explicit SftTree(QWidget* behaelter, const QString& name);

  /// 0 without a border, anything else with one.
  void BorderStyle(int wert);
  /// False: nothing is drawn until it is True again.
  void Redraw(bool wert) { setUpdatesEnabled(wert); }

  std::int32_t Columns() const { return columnCount(); }
  void Columns(std::int32_t anzahl);
  QString ColumnTitle(std::int32_t spalte) const;
  void ColumnTitle(std::int32_t spalte, const QString& wert);
  /// Twips. A negative width raises 380.
  double ColumnWidth(std::int32_t spalte) const;
  void ColumnWidth(std::int32_t spalte, double wert);
  /// Colour of the column's title.
  Farbe ColumnForeColor(std::int32_t spalte) const;
  void ColumnForeColor(std::int32_t spalte, Farbe wert);
  /// Colours of the selected item.
  Farbe SelectBackColor() const;
  void SelectBackColor(Farbe wert);
  Farbe SelectForeColor() const;
  void SelectForeColor(Farbe wert);

  /// Removes all items.
  void Clear() { clear(); }
  std::int32_t ItemCount() const { return topLevelItemCount(); }
  /// Puts an item at the end, on level 0, with that text in its first cell. Gives its number.
  std::int32_t AddItem(const QString& text);
  /// The level is kept; items of all levels stand one below the other.
  std::int32_t ItemLevel(std::int32_t eintrag) const;
  void ItemLevel(std::int32_t eintrag, std::int32_t wert);
  QString CellText(std::int32_t eintrag, std::int32_t zelle) const;
  void CellText(std::int32_t eintrag, std::int32_t zelle, const QString& wert);
  Farbe CellBackColor(std::int32_t eintrag, std::int32_t zelle) const;
  void CellBackColor(std::int32_t eintrag, std::int32_t zelle, Farbe wert);
  /// Size of the cell's letters in points. Less than 1 raises 380.
  double CellFontSize(std::int32_t eintrag, std::int32_t zelle) const;
  void CellFontSize(std::int32_t eintrag, std::int32_t zelle, double wert);

 protected:
  /// A text too long for its column goes on over the empty cells beside it.
  void drawRow(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& zeile) const override;
  QPalette::ColorRole hintergrund() const override { return QPalette::Base; }
  QPalette::ColorRole vordergrund() const override { return QPalette::Text; }
  bool viewportEvent(QEvent* ereignis) override;

 private:
  QTreeWidgetItem& eintrag_von(std::int32_t eintrag) const;
  QTreeWidgetItem& zelle_von(std::int32_t eintrag, std::int32_t zelle) const;
  /// The cell's place together with that of the empty cells behind it.
  QRect platz_mit_Leeren(const QModelIndex& zelle) const;
  void pruefe_Spalte(std::int32_t spalte) const;
  void setze_Auswahlfarbe(QPalette::ColorRole rolle, Farbe wert);
};
