#include "platform/forms/gitter/Gitterdelegat.h"

#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>

#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Zelltext.h"

namespace {

const QStyle& stil(const QStyleOptionViewItem& option) {
  return option.widget ? *option.widget->style() : *QApplication::style();
}

}  // namespace

Gitterdelegat::Gitterdelegat(TDBGrid& gitter) : QStyledItemDelegate(&gitter), gitter_(gitter) {}

QString Gitterdelegat::displayText(const QVariant& wert, const QLocale& /*gebiet*/) const {
  return zelltext::angezeigt(wert.toString());
}

void Gitterdelegat::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (gitter_.ist_gewaehlt(index.row())) option->state |= QStyle::State_Selected;
}

void Gitterdelegat::paint(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const Gitterspalte& spalte = gitter_.Column(index.column());
  QStyleOptionViewItem zelle = option;
  if (spalte.Button) zelle.rect = gitter_.ohne_Knopf(option.rect, index.column());
  if (spalte.CheckBox)
    male_Kaestchen(*maler, zelle, index);
  else
    QStyledItemDelegate::paint(maler, zelle, index);
  if (spalte.Button) male_Knopf(*maler, option, index);
}

void Gitterdelegat::male_Kaestchen(
    QPainter& maler, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem kasten = option;
  initStyleOption(&kasten, index);
  const QStyle& s = stil(option);
  s.drawPrimitive(QStyle::PE_PanelItemViewItem, &kasten, &maler, option.widget);
  const QSize groesse(s.pixelMetric(QStyle::PM_IndicatorWidth, &kasten, option.widget),
      s.pixelMetric(QStyle::PM_IndicatorHeight, &kasten, option.widget));
  kasten.rect = QStyle::alignedRect(option.direction, kasten.displayAlignment, groesse, option.rect);
  kasten.state &= ~QStyle::State_HasFocus;
  kasten.state |= kasten.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
  s.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &kasten, &maler, option.widget);
  if (!option.state.testFlag(QStyle::State_HasFocus)) return;
  QStyleOptionFocusRect rahmen;
  rahmen.QStyleOption::operator=(option);
  s.drawPrimitive(QStyle::PE_FrameFocusRect, &rahmen, &maler, option.widget);
}

void Gitterdelegat::male_Knopf(QPainter& maler, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionButton knopf;
  knopf.QStyleOption::operator=(option);
  knopf.rect = gitter_.Knopf_in(option.rect, index.column());
  knopf.state = QStyle::State_Enabled | QStyle::State_Raised;
  const QPixmap& bild = gitter_.Column(index.column()).ButtonPicture;
  if (bild.isNull()) {
    knopf.text = QString(u'…');
  } else {
    knopf.icon = QIcon(bild);
    knopf.iconSize = bild.deviceIndependentSize().toSize().boundedTo(knopf.rect.size() - QSize(4, 4));
  }
  stil(option).drawControl(QStyle::CE_PushButton, &knopf, &maler, option.widget);
}

QWidget* Gitterdelegat::createEditor(
    QWidget* behaelter, const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
  auto* zeile = new QLineEdit(behaelter);
  zeile->setFrame(false);
  zeile->setAutoFillBackground(true);
  gitter_.merke_Editor(*zeile);
  return zeile;
}

void Gitterdelegat::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* zeile = qobject_cast<QLineEdit*>(editor);
  // What the user has typed so far survives a refresh of the cells.
  if (!zeile || zeile->isModified()) return;
  zeile->setText(index.data(Qt::EditRole).toString());
  zeile->selectAll();
}

void Gitterdelegat::setModelData(QWidget* editor, QAbstractItemModel* /*modell*/, const QModelIndex& /*index*/) const {
  if (qobject_cast<QLineEdit*>(editor)) gitter_.nimm_Editor();
}

void Gitterdelegat::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  editor->setGeometry(gitter_.ohne_Knopf(option.rect, index.column()));
}

// The keys that end an edit do so at once: the base leaves that to a later event.
bool Gitterdelegat::eventFilter(QObject* editor, QEvent* ereignis) {
  const auto* taste = ereignis->type() == QEvent::KeyPress ? dynamic_cast<QKeyEvent*>(ereignis) : nullptr;
  if (taste && gitter_.Taste_im_Editor(*taste)) return true;
  return QStyledItemDelegate::eventFilter(editor, ereignis);
}
