#include "platform/forms/steuerelemente/ListView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include "platform/forms/steuerelemente/Ereigniswache.h"

namespace {

/// An item fills its cell of the grid: a name has the cell's width, not the picture's alone.
class Kachel final : public QStyledItemDelegate {
 public:
  explicit Kachel(const QListView& liste, QObject* besitzer) : QStyledItemDelegate(besitzer), liste_(liste) {}
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QSize zelle = liste_.gridSize();
    return zelle.isValid() ? zelle - QSize(4, 2) : QStyledItemDelegate::sizeHint(option, index);
  }

 private:
  const QListView& liste_;
};

}  // namespace

ListView::ListView(QWidget* behaelter, const QString& name)
    : QListView(behaelter), Steuerelement(*this, name, Farbrollen::Feld), modell_(new Listenmodell(this)) {
  setModel(modell_);
  setViewMode(QListView::IconMode);
  setMovement(QListView::Static);
  setResizeMode(QListView::Adjust);
  setUniformItemSizes(true);
  setItemDelegate(new Kachel(*this, this));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTextElideMode(Qt::ElideMiddle);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setSelectionRectVisible(true);
  setDragEnabled(false);
}

void ListView::setze_Bildseite(int pixel) {
  setIconSize(QSize(pixel, pixel));
  setGridSize(QSize(pixel + 28, pixel + 2 * fontMetrics().height() + 8));
}

void ListView::Clear() {
  const QScopedValueRollback still(durch_Code_, true);
  modell_->leere();
}

int ListView::Add(const QString& text, const QString& tag) {
  modell_->eintraege.push_back({text, tag});
  if (isVisible()) modell_->zeige_alle();
  return modell_->anzahl();
}

void ListView::Text(int index, const QString& wert) {
  modell_->eintrag(index).text = wert;
  modell_->geaendert(index);
}

void ListView::Icon(int index, int bild) {
  modell_->eintrag(index).bild = bild;
  modell_->geaendert(index);
}

bool ListView::Selected(int index) const {
  modell_->eintrag(index);
  return selectionModel()->isSelected(modell_->index(index - 1));
}

void ListView::Selected(int index, bool wert) {
  modell_->eintrag(index);
  modell_->zeige_alle();
  const QScopedValueRollback still(durch_Code_, true);
  const QModelIndex stelle = modell_->index(index - 1);
  selectionModel()->select(stelle, wert ? QItemSelectionModel::Select : QItemSelectionModel::Deselect);
  if (wert) selectionModel()->setCurrentIndex(stelle, QItemSelectionModel::NoUpdate);
}

int ListView::SelectedItem() const {
  const QModelIndex aktueller = currentIndex();
  if (aktueller.isValid() && selectionModel()->isSelected(aktueller)) return aktueller.row() + 1;
  const QModelIndexList alle = selectionModel()->selectedIndexes();
  return alle.isEmpty() ? 0 : alle.first().row() + 1;
}

void ListView::showEvent(QShowEvent* ereignis) {
  modell_->zeige_alle();
  QListView::showEvent(ereignis);
}

// Keys move the current item; a press of the mouse is told even where the item was the current one before.
void ListView::currentChanged(const QModelIndex& jetzt, const QModelIndex& vorher) {
  QListView::currentChanged(jetzt, vorher);
  if (!durch_Code_ && jetzt.isValid()) melde_Auswahl(jetzt.row() + 1);
}

// The focus alone puts the current item on the first one: nobody chose that.
void ListView::focusInEvent(QFocusEvent* ereignis) {
  const QScopedValueRollback still(durch_Code_, true);
  QListView::focusInEvent(ereignis);
}

// The blank chooses the current item without moving to another.
void ListView::keyPressEvent(QKeyEvent* ereignis) {
  const QModelIndex vorher = currentIndex();
  const bool war_gewaehlt = selectionModel()->isSelected(vorher);
  QListView::keyPressEvent(ereignis);
  if (vorher.isValid() && !war_gewaehlt && currentIndex() == vorher && selectionModel()->isSelected(vorher))
    melde_Auswahl(vorher.row() + 1);
}

void ListView::mousePressEvent(QMouseEvent* ereignis) {
  const QModelIndex vorher = currentIndex();
  QListView::mousePressEvent(ereignis);
  const QModelIndex getroffen = indexAt(ereignis->position().toPoint());
  if (getroffen.isValid() && getroffen == vorher) melde_Auswahl(getroffen.row() + 1);
}

void ListView::mouseDoubleClickEvent(QMouseEvent* ereignis) {
  QListView::mouseDoubleClickEvent(ereignis);
  if (ereignis->button() == Qt::LeftButton && indexAt(ereignis->position().toPoint()).isValid())
    Ereigniswache::melde(*this, DblClick);
}

void ListView::melde_Auswahl(int index) {
  if (ItemClick) Ereigniswache::melde(*this, [this, index] { ItemClick(index); });
}
