#include "host/fenster/Vorgangsliste.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Widget>
Widget* benannt(Widget* widget, const QString& name) {
  widget->setObjectName(name);
  return widget;
}

/// Rows that a hand hits.
class Zeilenmaler final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& stil, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(stil, index) + QSize(6, 6);
  }
};

}  // namespace

Vorgangsliste::Vorgangsliste(QWidget* oberhalb)
    : QWidget(oberhalb),
      cmd_Einlesen(benannt(new QPushButton(u"Neu &einlesen"_s, this), u"cmd_Einlesen"_s)),
      cmd_Suchen(benannt(new QPushButton(u"Bilder &suchen …"_s, this), u"cmd_Suchen"_s)),
      cmd_Aufraeumen(benannt(new QPushButton(u"Bilderbaum auf&räumen …"_s, this), u"cmd_Aufraeumen"_s)),
      txt_Filter(benannt(new QLineEdit(this), u"txt_Filter"_s)),
      tree_Vorgaenge(benannt(new QTreeView(this), u"tree_Vorgaenge"_s)),
      seiten_(new QStackedWidget(this)),
      lbl_Leer(benannt(new QLabel(this), u"lbl_Leer"_s)),
      cmd_FilterLeeren(benannt(new QPushButton(u"Filter &leeren"_s, this), u"cmd_FilterLeeren"_s)),
      modell_(new Vorgangsmodell(this)),
      filter_(new Vorgangsfilter(this)) {
  filter_->setSourceModel(modell_);
  tree_Vorgaenge->setModel(filter_);
  baue_auf();
  verbinde();
  richte_Baum_ein();
}

void Vorgangsliste::baue_auf() {
  auto* lbl_Filter = benannt(new QLabel(u"&Filter:"_s, this), u"lbl_Filter"_s);
  lbl_Filter->setBuddy(txt_Filter);
  txt_Filter->setPlaceholderText(u"Nummer, Kunde oder Betreff"_s);
  txt_Filter->setToolTip(u"Zeigt nur Vorgänge, die alle Wörter enthalten"_s);
  txt_Filter->setAccessibleName(u"Filter der Vorgänge"_s);
  tree_Vorgaenge->setAccessibleName(u"Vorgänge"_s);
  tree_Vorgaenge->setItemDelegate(new Zeilenmaler(tree_Vorgaenge));
  tree_Vorgaenge->setUniformRowHeights(true);
  tree_Vorgaenge->setAllColumnsShowFocus(true);
  tree_Vorgaenge->setExpandsOnDoubleClick(true);
  QHeaderView& kopf = *tree_Vorgaenge->header();
  kopf.setStretchLastSection(false);
  kopf.setSectionsMovable(false);
  kopf.setSectionResizeMode(QHeaderView::ResizeToContents);
  kopf.setSectionResizeMode(Vorgangsmodell::Betreff, QHeaderView::Stretch);
  cmd_Einlesen->setToolTip(u"Liest die Vorgänge noch einmal aus der Datenbank (F5)"_s);
  cmd_Suchen->setToolTip(u"Sucht Bilder auf allen Laufwerken (Strg+F)"_s);
  cmd_Aufraeumen->setToolTip(u"Zeigt, welche Dateien der Bildablage niemand benutzt, und löscht sie auf Wunsch"_s);
  lbl_Leer->setWordWrap(true);
  lbl_Leer->setAlignment(Qt::AlignCenter);
  lbl_Leer->setTextFormat(Qt::PlainText);
  cmd_FilterLeeren->setToolTip(u"Zeigt wieder alle Vorgänge"_s);
  for (QPushButton* knopf : {cmd_Einlesen, cmd_FilterLeeren, cmd_Suchen, cmd_Aufraeumen})
    knopf->setMinimumWidth(knopf->sizeHint().width() + 16);
  ordne_an(*lbl_Filter);
}

void Vorgangsliste::ordne_an(QLabel& lbl_Filter) {
  auto* leere = new QWidget(this);
  auto* leerlage = new QVBoxLayout(leere);
  leerlage->addStretch(1);
  leerlage->addWidget(lbl_Leer);
  leerlage->addWidget(cmd_FilterLeeren, 0, Qt::AlignHCenter);
  leerlage->addStretch(2);
  seiten_->addWidget(tree_Vorgaenge);
  seiten_->addWidget(leere);

  setTabOrder(txt_Filter, cmd_Einlesen);
  setTabOrder(cmd_Einlesen, tree_Vorgaenge);
  auto* zeile = new QHBoxLayout;
  zeile->addWidget(&lbl_Filter);
  zeile->addWidget(txt_Filter, 1);
  zeile->addWidget(cmd_Einlesen);
  auto* lage = new QVBoxLayout(this);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addLayout(zeile);
  lage->addWidget(seiten_, 1);
  auto* fuss = new QHBoxLayout;
  fuss->addWidget(cmd_Suchen);
  fuss->addWidget(cmd_Aufraeumen);
  fuss->addStretch(1);
  lage->addLayout(fuss);
}

void Vorgangsliste::verbinde() {
  connect(txt_Filter, &QLineEdit::textChanged, this, &Vorgangsliste::filtere);
  connect(txt_Filter, &QLineEdit::returnPressed, this, &Vorgangsliste::waehle_ersten_Treffer);
  connect(cmd_FilterLeeren, &QPushButton::clicked, this, [this] {
    txt_Filter->clear();
    txt_Filter->setFocus();
  });
  connect(tree_Vorgaenge->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
    if (bei_Wahl) bei_Wahl();
  });
  connect(tree_Vorgaenge, &QTreeView::doubleClicked, this, [this] {
    if (gewaehlt() && bei_Oeffnen) bei_Oeffnen();
  });
  txt_Filter->installEventFilter(this);
  tree_Vorgaenge->installEventFilter(this);
}

bool Vorgangsliste::eventFilter(QObject* ziel, QEvent* ereignis) {
  const auto* tastendruck = ereignis->type() == QEvent::KeyPress ? dynamic_cast<QKeyEvent*>(ereignis) : nullptr;
  if (!tastendruck) return QWidget::eventFilter(ziel, ereignis);
  const int taste = tastendruck->key();
  if (ziel == txt_Filter && taste == Qt::Key_Down)
    waehle_ersten_Treffer();
  else if (ziel == txt_Filter && taste == Qt::Key_Escape)
    txt_Filter->clear();
  else if (ziel == tree_Vorgaenge && (taste == Qt::Key_Return || taste == Qt::Key_Enter) && gewaehlt() && bei_Oeffnen)
    bei_Oeffnen();
  else
    return QWidget::eventFilter(ziel, ereignis);
  return true;
}

void Vorgangsliste::Kontextmenue(const QList<QAction*>& aktionen) {
  tree_Vorgaenge->addActions(aktionen);
  tree_Vorgaenge->setContextMenuPolicy(Qt::ActionsContextMenu);
}

const Vorgang* Vorgangsliste::gewaehlt() const {
  return modell_->vorgang(filter_->mapToSource(tree_Vorgaenge->currentIndex()));
}

QWidget* Vorgangsliste::flaeche() const {
  return tree_Vorgaenge->viewport();
}

const Vorgang* Vorgangsliste::vorgang_bei(QPoint ort) const {
  return modell_->vorgang(filter_->mapToSource(tree_Vorgaenge->indexAt(ort)));
}

QRect Vorgangsliste::zeile_bei(QPoint ort) const {
  if (!vorgang_bei(ort)) return {};
  QRect zeile = tree_Vorgaenge->visualRect(tree_Vorgaenge->indexAt(ort));
  zeile.setLeft(0);
  zeile.setWidth(flaeche()->width());
  return zeile;
}

void Vorgangsliste::waehle_still(const QModelIndex& im_Modell) {
  const QSignalBlocker ruhe(tree_Vorgaenge->selectionModel());
  const QModelIndex index = filter_->mapFromSource(im_Modell);
  tree_Vorgaenge->setCurrentIndex(index);
  if (index.isValid())
    tree_Vorgaenge->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  tree_Vorgaenge->viewport()->update();
}

void Vorgangsliste::setze(const QList<Vorgang>& vorgaenge) {
  const Vorgang* vorher = gewaehlt();
  const std::optional<Vorgang> gemerkt = vorher ? std::optional(*vorher) : std::nullopt;
  {
    const QSignalBlocker ruhe(tree_Vorgaenge->selectionModel());
    modell_->setze(vorgaenge);
  }
  richte_Baum_ein();
  if (gemerkt) waehle_still(modell_->index_von(*gemerkt));
  zeige_Leere();
}

bool Vorgangsliste::waehle(const QString& nummer) {
  const QModelIndex index = filter_->mapFromSource(modell_->index_von(nummer));
  if (index.isValid()) tree_Vorgaenge->setCurrentIndex(index);
  return index.isValid();
}

void Vorgangsliste::filtere(const QString& text) {
  // Only now: the button's icon makes Qt load every image format, which would slow the start of the program.
  txt_Filter->setClearButtonEnabled(true);
  const QPersistentModelIndex vorher = filter_->mapToSource(tree_Vorgaenge->currentIndex());
  {
    // Rows that go would hand the choice to their neighbours, one after the other.
    const QSignalBlocker ruhe(tree_Vorgaenge->selectionModel());
    filter_->setze_Filter(text);
  }
  richte_Baum_ein();
  waehle_still(vorher);
  zeige_Leere();
  if (bei_Wahl) bei_Wahl();
}

void Vorgangsliste::richte_Baum_ein() {
  for (int zeile = 0; zeile < filter_->rowCount(); ++zeile) tree_Vorgaenge->setFirstColumnSpanned(zeile, {}, true);
  tree_Vorgaenge->expandAll();
}

void Vorgangsliste::zeige_Leere() {
  const bool kein_Treffer = filter_->rowCount() == 0;
  seiten_->setCurrentIndex(kein_Treffer ? 1 : 0);
  lbl_Leer->setText(u"Kein Vorgang enthält „%1“."_s.arg(txt_Filter->text().simplified()));
}

void Vorgangsliste::waehle_ersten_Treffer() {
  for (int art = 0; art < filter_->rowCount(); ++art) {
    const QModelIndex kopf = filter_->index(art, 0);
    if (filter_->rowCount(kopf) == 0) continue;
    tree_Vorgaenge->setCurrentIndex(filter_->index(0, 0, kopf));
    tree_Vorgaenge->setFocus();
    return;
  }
}
