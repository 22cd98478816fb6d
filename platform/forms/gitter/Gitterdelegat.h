#pragma once

#include <QStyledItemDelegate>

class TDBGrid;

/// Paints the cells of a TDBGrid and makes its editor. Used by the grid alone.
class Gitterdelegat final : public QStyledItemDelegate {
 public:
  explicit Gitterdelegat(TDBGrid& gitter);
  QString displayText(const QVariant& wert, const QLocale& gebiet) const override;
  void paint(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(
      QWidget* behaelter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* modell, const QModelIndex& index) const override;
  void updateEditorGeometry(
      QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool eventFilter(QObject* editor, QEvent* ereignis) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void male_Kaestchen(QPainter& maler, const QStyleOptionViewItem& option, const QModelIndex& index) const;
  void male_Knopf(QPainter& maler, const QStyleOptionViewItem& option, const QModelIndex& index) const;

  TDBGrid& gitter_;
};
