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

constexpr int Rolle_Ebene = Qt::UserRole;

class Zellenmaler final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QString displayText(const QVariant& wert, const QLocale&) const override {
    return zelltext::angezeigt(wert.toString());
  }
};

Farbe als_Farbe(const QColor& c) {
  return static_cast<Farbe>(c.red() | c.green() << 8 | c.blue() << 16);
}

}  // namespace

SftTree::SftTree(QWidget* behaelter, const QString& name)
    : QTreeWidget(behaelter), Steuerelement(static_cast<QWidget&>(*this)) {
  setObjectName(name);
  setItemDelegate(new Zellenmaler(this));
  setRootIsDecorated(false);
  setIndentation(0);
  setAllColumnsShowFocus(true);
  setTextElideMode(Qt::ElideRight);
  setHorizontalScrollMode(ScrollPerPixel);
  header()->setStretchLastSection(false);
  header()->setSectionsMovable(false);
}

void SftTree::BorderStyle(int wert) {
  setFrameShape(wert == 0 ? QFrame::NoFrame : QFrame::StyledPanel);
}

void SftTree::Columns(std::int32_t anzahl) {
  if (anzahl < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  setColumnCount(anzahl);
}

void SftTree::pruefe_Spalte(std::int32_t spalte) const {
  if (spalte < 0 || spalte >= columnCount()) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
}

QString SftTree::ColumnTitle(std::int32_t spalte) const {
  pruefe_Spalte(spalte);
  return headerItem()->text(spalte);
}
void SftTree::ColumnTitle(std::int32_t spalte, const QString& wert) {
  pruefe_Spalte(spalte);
  headerItem()->setText(spalte, wert);
}

double SftTree::ColumnWidth(std::int32_t spalte) const {
  pruefe_Spalte(spalte);
  return twips::aus_Pixel(columnWidth(spalte));
}
void SftTree::ColumnWidth(std::int32_t spalte, double wert) {
  pruefe_Spalte(spalte);
  if (wert < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  setColumnWidth(spalte, twips::pixel(wert));
}

Farbe SftTree::ColumnForeColor(std::int32_t spalte) const {
  pruefe_Spalte(spalte);
  return als_Farbe(headerItem()->foreground(spalte).color());
}
void SftTree::ColumnForeColor(std::int32_t spalte, Farbe wert) {
  pruefe_Spalte(spalte);
  headerItem()->setForeground(spalte, farben::qt(wert));
}

Farbe SftTree::SelectBackColor() const {
  return als_Farbe(palette().color(QPalette::Active, QPalette::Highlight));
}
void SftTree::SelectBackColor(Farbe wert) {
  setze_Auswahlfarbe(QPalette::Highlight, wert);
}
Farbe SftTree::SelectForeColor() const {
  return als_Farbe(palette().color(QPalette::Active, QPalette::HighlightedText));
}
void SftTree::SelectForeColor(Farbe wert) {
  setze_Auswahlfarbe(QPalette::HighlightedText, wert);
}
void SftTree::setze_Auswahlfarbe(QPalette::ColorRole rolle, Farbe wert) {
  QPalette neu = palette();
  neu.setColor(rolle, farben::qt(wert));
  setPalette(neu);
}

std::int32_t SftTree::AddItem(const QString& text) {
  auto* neu = new QTreeWidgetItem(this);
  neu->setText(0, text);
  return topLevelItemCount() - 1;
}

QTreeWidgetItem& SftTree::eintrag_von(std::int32_t eintrag) const {
  QTreeWidgetItem* gefunden = topLevelItem(eintrag);
  if (!gefunden) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return *gefunden;
}

QTreeWidgetItem& SftTree::zelle_von(std::int32_t eintrag, std::int32_t zelle) const {
  pruefe_Spalte(zelle);
  return eintrag_von(eintrag);
}

std::int32_t SftTree::ItemLevel(std::int32_t eintrag) const {
  return eintrag_von(eintrag).data(0, Rolle_Ebene).toInt();
}
void SftTree::ItemLevel(std::int32_t eintrag, std::int32_t wert) {
  if (wert < 0) throw Laufzeitfehler(fehlernummer::UngueltigerEigenschaftswert);
  eintrag_von(eintrag).setData(0, Rolle_Ebene, wert);
}

QString SftTree::CellText(std::int32_t eintrag, std::int32_t zelle) const {
  return zelle_von(eintrag, zelle).text(zelle);
}
void SftTree::CellText(std::int32_t eintrag, std::int32_t zelle, const QString& wert) {
  zelle_von(eintrag, zelle).setText(zelle, wert);
}

Farbe SftTree::CellBackColor(std::int32_t eintrag, std::int32_t zelle) const {
  const QBrush pinsel = zelle_von(eintrag, zelle).background(zelle);
  return pinsel.style() == Qt::NoBrush ? BackColor() : als_Farbe(pinsel.color());
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

// A cell that is cut shows its text under the mouse.
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
