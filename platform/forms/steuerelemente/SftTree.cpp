#include "platform/forms/steuerelemente/SftTree.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Twips.h"
#include "platform/forms/steuerelemente/Farbwert.h"
#include "platform/forms/steuerelemente/Zelltext.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Zellenmaler final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QString displayText(const QVariant& wert, const QLocale&) const override {
    return zelltext::angezeigt(wert.toString());
  }
};

}  // namespace

SftTree::SftTree(QWidget* behaelter, const QString& name)
    : QTreeWidget(behaelter), Steuerelement(*this, name, Farbrollen::Feld) {
  setItemDelegate(new Zellenmaler(this));
  setRootIsDecorated(false);
  setIndentation(0);
  setAllColumnsShowFocus(true);
  setTextElideMode(Qt::ElideRight);
  setHorizontalScrollMode(ScrollPerPixel);
  header()->setStretchLastSection(false);
  header()->setSectionsMovable(false);
}

void SftTree::Columns(std::int32_t anzahl) {
  if (anzahl < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  setColumnCount(anzahl);
}

std::int32_t SftTree::geprueft(std::int32_t spalte) const {
  if (spalte < 0 || spalte >= columnCount()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return spalte;
}

void SftTree::ColumnWidth(std::int32_t spalte, double wert) {
  geprueft(spalte);
  if (wert < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  setColumnWidth(spalte, twips::pixel(wert));
}

Farbe SftTree::ColumnForeColor(std::int32_t spalte) const {
  return farben::von_Qt(headerItem()->foreground(geprueft(spalte)).color());
}

void SftTree::ColumnForeColor(std::int32_t spalte, Farbe wert) {
  headerItem()->setForeground(geprueft(spalte), farben::qt(wert));
}

std::int32_t SftTree::AddItem(const QString& text) {
  new QTreeWidgetItem(this, {text});
  return topLevelItemCount() - 1;
}

QTreeWidgetItem& SftTree::eintrag_von(std::int32_t eintrag) const {
  QTreeWidgetItem* gefunden = topLevelItem(eintrag);
  if (!gefunden) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return *gefunden;
}

QTreeWidgetItem& SftTree::zelle_von(std::int32_t eintrag, std::int32_t zelle) const {
  geprueft(zelle);
  return eintrag_von(eintrag);
}

void SftTree::ItemLevel(std::int32_t eintrag, std::int32_t wert) {
  if (wert < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  eintrag_von(eintrag).setData(0, Rolle_Ebene, wert);
}

Farbe SftTree::CellBackColor(std::int32_t eintrag, std::int32_t zelle) const {
  const QBrush pinsel = zelle_von(eintrag, zelle).background(zelle);
  return pinsel.style() == Qt::NoBrush ? BackColor() : farben::von_Qt(pinsel.color());
}

void SftTree::CellBackColor(std::int32_t eintrag, std::int32_t zelle, Farbe wert) {
  zelle_von(eintrag, zelle).setBackground(zelle, farben::qt(wert));
}

double SftTree::CellFontSize(std::int32_t eintrag, std::int32_t zelle) const {
  const QVariant schrift = zelle_von(eintrag, zelle).data(zelle, Qt::FontRole);
  return (schrift.isValid() ? schrift.value<QFont>() : font()).pointSizeF();
}

void SftTree::CellFontSize(std::int32_t eintrag, std::int32_t zelle, double wert) {
  if (wert < 1) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  QFont schrift = font();
  schrift.setPointSizeF(wert);
  zelle_von(eintrag, zelle).setFont(zelle, schrift);
}

QRect SftTree::platz_mit_Leeren(const QModelIndex& zelle) const {
  QRect platz = visualRect(zelle);
  for (int spalte = zelle.column() + 1; spalte < columnCount(); ++spalte) {
    const QModelIndex naechste = zelle.siblingAtColumn(spalte);
    if (!naechste.data().toString().isEmpty() || naechste.data(Qt::BackgroundRole).isValid()) break;
    platz |= visualRect(naechste);
  }
  return platz;
}

void SftTree::drawRow(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& zeile) const {
  QTreeWidget::drawRow(maler, option, zeile);
  for (int spalte = 0; spalte < columnCount(); ++spalte) {
    const QModelIndex zelle = zeile.siblingAtColumn(spalte);
    const QRect platz = platz_mit_Leeren(zelle);
    if (platz == visualRect(zelle) || itemDelegate()->sizeHint(option, zelle).width() <= visualRect(zelle).width())
      continue;
    QStyleOptionViewItem ganze(option);
    ganze.rect = platz;
    ganze.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(zelle));
    maler->fillRect(platz, palette().brush(QPalette::Base));
    itemDelegate()->paint(maler, ganze, zelle);
  }
}

// A cell that is cut shows its text under the mouse.
bool SftTree::viewportEvent(QEvent* ereignis) {
  const auto* hilfe = ereignis->type() == QEvent::ToolTip ? dynamic_cast<QHelpEvent*>(ereignis) : nullptr;
  if (!hilfe) return QTreeWidget::viewportEvent(ereignis);
  const QModelIndex zelle = indexAt(hilfe->pos());
  const QString text = zelltext::angezeigt(zelle.data().toString()).trimmed();
  if (text.isEmpty()) return QTreeWidget::viewportEvent(ereignis);
  // Escaped: the text comes from a file and is no markup.
  QToolTip::showText(hilfe->globalPos(), u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s, viewport(), visualRect(zelle));
  return true;
}
