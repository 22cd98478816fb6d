#pragma once

#include <QTreeWidget>
#include <cstdint>

#include "platform/basic/Twips.h"
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
  void BorderStyle(int wert) { setFrameShape(wert == 0 ? NoFrame : StyledPanel); }
  /// False: nothing is drawn until it is True again.
  void Redraw(bool wert) { setUpdatesEnabled(wert); }

  std::int32_t Columns() const { return columnCount(); }
  void Columns(std::int32_t anzahl);
  QString ColumnTitle(std::int32_t spalte) const { return headerItem()->text(geprueft(spalte)); }
  void ColumnTitle(std::int32_t spalte, const QString& wert) { headerItem()->setText(geprueft(spalte), wert); }
  /// Twips. A negative width raises 380.
  double ColumnWidth(std::int32_t spalte) const { return twips::aus_Pixel(columnWidth(geprueft(spalte))); }
  void ColumnWidth(std::int32_t spalte, double wert);
  /// Colour of the column's title.
  Farbe ColumnForeColor(std::int32_t spalte) const;
  void ColumnForeColor(std::int32_t spalte, Farbe wert);
  /// Colours of the selected item.
  Farbe SelectBackColor() const { return farbe(QPalette::Highlight); }
  void SelectBackColor(Farbe wert) { setze_Farbe(QPalette::Highlight, wert); }
  Farbe SelectForeColor() const { return farbe(QPalette::HighlightedText); }
  void SelectForeColor(Farbe wert) { setze_Farbe(QPalette::HighlightedText, wert); }

  void Clear() { clear(); }
  std::int32_t ItemCount() const { return topLevelItemCount(); }
  /// Puts an item at the end, on level 0, with that text in its first cell. Gives its number.
  std::int32_t AddItem(const QString& text);
  /// The level is kept; items of all levels stand one below the other.
  std::int32_t ItemLevel(std::int32_t eintrag) const { return eintrag_von(eintrag).data(0, Rolle_Ebene).toInt(); }
  void ItemLevel(std::int32_t eintrag, std::int32_t wert);
  QString CellText(std::int32_t eintrag, std::int32_t zelle) const { return zelle_von(eintrag, zelle).text(zelle); }
  void CellText(std::int32_t eintrag, std::int32_t zelle, const QString& wert) {
    zelle_von(eintrag, zelle).setText(zelle, wert);
  }
  Farbe CellBackColor(std::int32_t eintrag, std::int32_t zelle) const;
  void CellBackColor(std::int32_t eintrag, std::int32_t zelle, Farbe wert);
  /// Size of the cell's letters in points. Less than 1 raises 380.
  double CellFontSize(std::int32_t eintrag, std::int32_t zelle) const;
  void CellFontSize(std::int32_t eintrag, std::int32_t zelle, double wert);

 protected:
  /// A text too long for its column goes on over the empty cells beside it.
  void drawRow(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& zeile) const override;
  bool viewportEvent(QEvent* ereignis) override;

 private:
  static constexpr int Rolle_Ebene = Qt::UserRole;
  QTreeWidgetItem& eintrag_von(std::int32_t eintrag) const;
  QTreeWidgetItem& zelle_von(std::int32_t eintrag, std::int32_t zelle) const;
  /// The cell's place together with that of the empty cells behind it.
  QRect platz_mit_Leeren(const QModelIndex& zelle) const;
  /// The number of a column that there is; any other raises 9.
  std::int32_t geprueft(std::int32_t spalte) const;
};
