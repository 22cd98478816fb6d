#include "host/fenster/Vorgangsliste.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>
#include <limits>
#include <optional>
#include <utility>

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

/// So many records at a time.
constexpr int Portion = 200;

/// Milliseconds without an answer before words say that it is waited for.
constexpr int Geduld = 300;

QString in_Worten(std::int64_t zahl) {
  return QLocale(QLocale::German).toString(static_cast<qlonglong>(zahl));
}

QString umfang(int gezeigte, std::int64_t zahl, std::int64_t hoechstens) {
  if (zahl > hoechstens) return u"%1 von über %2 Vorgängen"_s.arg(in_Worten(gezeigte), in_Worten(hoechstens));
  if (zahl > gezeigte) return u"%1 von %2 Vorgängen"_s.arg(in_Worten(gezeigte), in_Worten(zahl));
  return gezeigte == 1 ? u"1 Vorgang"_s : u"%1 Vorgänge"_s.arg(in_Worten(gezeigte));
}

}  // namespace

Vorgangsliste::Vorgangsliste(QWidget* oberhalb)
    : QWidget(oberhalb),
      cmd_Einlesen(benannt(new QPushButton(u"Neu &einlesen"_s, this), u"cmd_Einlesen"_s)),
      cmd_Suchen(benannt(new QPushButton(u"Bilder &suchen …"_s, this), u"cmd_Suchen"_s)),
      cmd_Aufraeumen(benannt(new QPushButton(u"Bilderbaum auf&räumen …"_s, this), u"cmd_Aufraeumen"_s)),
      cmd_Papierkorb(benannt(new QPushButton(u"&Papierkorb …"_s, this), u"cmd_Papierkorb"_s)),
      cmd_NeuerVorgang(benannt(new QPushButton(u"&Neuer Vorgang …"_s, this), u"cmd_NeuerVorgang"_s)),
      cmd_ListeEinlesen(benannt(new QPushButton(u"&Vorgänge einlesen …"_s, this), u"cmd_ListeEinlesen"_s)),
      txt_Filter(benannt(new QLineEdit(this), u"txt_Filter"_s)),
      tree_Vorgaenge(benannt(new QTreeView(this), u"tree_Vorgaenge"_s)),
      seiten_(new QStackedWidget(this)),
      lbl_Leer(benannt(new QLabel(this), u"lbl_Leer"_s)),
      cmd_FilterLeeren(benannt(new QPushButton(u"Filter &leeren"_s, this), u"cmd_FilterLeeren"_s)),
      lbl_Umfang(benannt(new QLabel(this), u"lbl_Umfang"_s)),
      cmd_Zuletzt(benannt(new QPushButton(u"Zuletzt &bearbeitet"_s, this), u"cmd_Zuletzt"_s)),
      cmd_Mehr(benannt(new QPushButton(u"&Mehr anzeigen"_s, this), u"cmd_Mehr"_s)),
      lbl_Hinweis(benannt(new QLabel(this), u"lbl_Listenhinweis"_s)),
      modell_(new Vorgangsmodell(this)),
      geduld_(new QTimer(this)),
      gewuenschte_(Portion) {
  tree_Vorgaenge->setModel(modell_);
  baue_auf();
  verbinde();
}

void Vorgangsliste::baue_auf() {
  auto* lbl_Filter = benannt(new QLabel(u"&Filter:"_s, this), u"lbl_Filter"_s);
  lbl_Filter->setBuddy(txt_Filter);
  txt_Filter->setPlaceholderText(u"Nummer, Kunde oder Betreff"_s);
  txt_Filter->setToolTip(u"Zeigt nur Vorgänge, die alle Wörter enthalten"_s);
  txt_Filter->setMaxLength(200);
  txt_Filter->setAccessibleName(u"Filter der Vorgänge"_s);
  tree_Vorgaenge->setAccessibleName(u"Vorgänge"_s);
  tree_Vorgaenge->setItemDelegate(new Zeilenmaler(tree_Vorgaenge));
  tree_Vorgaenge->setUniformRowHeights(true);
  tree_Vorgaenge->setAllColumnsShowFocus(true);
  tree_Vorgaenge->setExpandsOnDoubleClick(true);
  QHeaderView& kopf = *tree_Vorgaenge->header();
  kopf.setStretchLastSection(false);
  kopf.setSectionsMovable(false);
  // The rows in sight say enough of the columns' widths.
  kopf.setResizeContentsPrecision(0);
  kopf.setSectionResizeMode(QHeaderView::ResizeToContents);
  kopf.setSectionResizeMode(Vorgangsmodell::Betreff, QHeaderView::Stretch);
  cmd_Einlesen->setToolTip(u"Liest die Vorgänge noch einmal aus der Datenbank (F5)"_s);
  cmd_Suchen->setToolTip(u"Sucht Bilder auf allen Laufwerken (Strg+F)"_s);
  cmd_Aufraeumen->setToolTip(u"Zeigt, welche Dateien der Bildablage niemand benutzt, und räumt sie auf Wunsch weg"_s);
  cmd_Papierkorb->setToolTip(u"Holt Aufgeräumtes zurück oder löscht es endgültig"_s);
  cmd_NeuerVorgang->setToolTip(u"Legt einen Vorgang an (Strg+N)"_s);
  cmd_ListeEinlesen->setToolTip(u"Nimmt Vorgänge aus einer CSV- oder JSON-Datei auf"_s);
  for (QPushButton* knopf : {cmd_NeuerVorgang, cmd_ListeEinlesen}) knopf->hide();
  lbl_Leer->setWordWrap(true);
  lbl_Leer->setAlignment(Qt::AlignCenter);
  lbl_Leer->setTextFormat(Qt::PlainText);
  cmd_FilterLeeren->setToolTip(u"Zeigt wieder alle Vorgänge"_s);
  cmd_Zuletzt->setCheckable(true);
  cmd_Zuletzt->setToolTip(u"Zeigt die Vorgänge, deren Bilder an diesem Platz zuletzt bearbeitet wurden"_s);
  cmd_Mehr->setToolTip(u"Zeigt die nächsten %1 Vorgänge"_s.arg(Portion));
  cmd_Mehr->setEnabled(false);
  // Long words must not widen the window.
  lbl_Umfang->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  for (QLabel* label : {lbl_Umfang, lbl_Hinweis}) label->setTextFormat(Qt::PlainText);
  lbl_Hinweis->setWordWrap(true);
  lbl_Hinweis->hide();
  geduld_->setSingleShot(true);
  geduld_->setInterval(Geduld);
  for (QPushButton* knopf : {cmd_Einlesen, cmd_FilterLeeren, cmd_Suchen, cmd_Aufraeumen, cmd_Papierkorb, cmd_Zuletzt,
           cmd_Mehr, cmd_NeuerVorgang, cmd_ListeEinlesen})
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
  setTabOrder(tree_Vorgaenge, cmd_Zuletzt);
  setTabOrder(cmd_Zuletzt, cmd_Mehr);
  auto* zeile = new QHBoxLayout;
  zeile->addWidget(&lbl_Filter);
  zeile->addWidget(txt_Filter, 1);
  zeile->addWidget(cmd_Einlesen);
  auto* lage = new QVBoxLayout(this);
  lage->setContentsMargins(0, 0, 0, 0);
  lage->addLayout(zeile);
  lage->addWidget(seiten_, 1);
  auto* unter = new QHBoxLayout;
  unter->addWidget(lbl_Umfang, 1);
  unter->addWidget(cmd_Zuletzt);
  unter->addWidget(cmd_Mehr);
  lage->addLayout(unter);
  lage->addWidget(lbl_Hinweis);
  auto* eigene = new QHBoxLayout;
  eigene->addWidget(cmd_NeuerVorgang);
  eigene->addWidget(cmd_ListeEinlesen);
  eigene->addStretch(1);
  lage->addLayout(eigene);
  auto* fuss = new QHBoxLayout;
  fuss->addWidget(cmd_Suchen);
  fuss->addWidget(cmd_Aufraeumen);
  fuss->addWidget(cmd_Papierkorb);
  fuss->addStretch(1);
  lage->addLayout(fuss);
}

void Vorgangsliste::Listentaste(QAction* aktion) {
  aktion->setShortcutContext(Qt::WidgetShortcut);
  tree_Vorgaenge->addAction(aktion);
}

void Vorgangsliste::verbinde() {
  connect(txt_Filter, &QLineEdit::textChanged, this, &Vorgangsliste::frage_neu);
  connect(cmd_Zuletzt, &QPushButton::toggled, this, &Vorgangsliste::frage_neu);
  connect(cmd_Mehr, &QPushButton::clicked, this, &Vorgangsliste::frage_mehr);
  connect(geduld_, &QTimer::timeout, this, [this] { lbl_Umfang->setText(u"Die Datenbank wird gefragt …"_s); });
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

QString Vorgangsliste::filter() const {
  return txt_Filter->text();
}

void Vorgangsliste::filter(const QString& worte) {
  txt_Filter->setText(worte);
}

bool Vorgangsliste::nur_zuletzt() const {
  return cmd_Zuletzt->isChecked();
}

void Vorgangsliste::frage_neu() {
  // Only now: the button's icon makes Qt load every image format, which would slow the start of the program.
  if (!txt_Filter->text().isEmpty()) txt_Filter->setClearButtonEnabled(true);
  gewuenschte_ = Portion;
  if (bei_Frage) bei_Frage();
}

void Vorgangsliste::frage_mehr() {
  gewuenschte_ += Portion;
  if (bei_Frage) bei_Frage();
}

void Vorgangsliste::zeige_Frage() {
  gefragt_ = true;
  geduld_->start();
}

const Vorgang* Vorgangsliste::gewaehlt() const {
  return modell_->vorgang(tree_Vorgaenge->currentIndex());
}

QWidget* Vorgangsliste::flaeche() const {
  return tree_Vorgaenge->viewport();
}

const Vorgang* Vorgangsliste::vorgang_bei(QPoint ort) const {
  return modell_->vorgang(tree_Vorgaenge->indexAt(ort));
}

QRect Vorgangsliste::zeile_bei(QPoint ort) const {
  if (!vorgang_bei(ort)) return {};
  QRect zeile = tree_Vorgaenge->visualRect(tree_Vorgaenge->indexAt(ort));
  zeile.setLeft(0);
  zeile.setWidth(flaeche()->width());
  return zeile;
}

void Vorgangsliste::waehle_still(const QModelIndex& index) {
  const QSignalBlocker ruhe(tree_Vorgaenge->selectionModel());
  tree_Vorgaenge->setCurrentIndex(index);
  if (index.isValid())
    tree_Vorgaenge->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  tree_Vorgaenge->viewport()->update();
}

bool Vorgangsliste::setze(const QList<Vorgang>& vorgaenge, bool vielleicht_mehr) {
  gefragt_ = false;
  geduld_->stop();
  const Vorgang* vorher = gewaehlt();
  const std::optional<Vorgang> gemerkt = vorher ? std::optional(*vorher) : std::nullopt;
  const int oben = tree_Vorgaenge->verticalScrollBar()->value();
  const bool fortsetzung = gewuenschte_ > Portion;
  {
    const QSignalBlocker ruhe(tree_Vorgaenge->selectionModel());
    modell_->setze(vorgaenge);
  }
  for (int zeile = 0; zeile < modell_->rowCount(); ++zeile) tree_Vorgaenge->setFirstColumnSpanned(zeile, {}, true);
  tree_Vorgaenge->expandAll();
  if (gemerkt) waehle_still(modell_->index_von(*gemerkt));
  // What was read is still in sight when more has come.
  if (fortsetzung) tree_Vorgaenge->verticalScrollBar()->setValue(oben);
  cmd_Mehr->setEnabled(vielleicht_mehr);
  lbl_Umfang->setText(umfang(modell_->anzahl(), 0, std::numeric_limits<std::int64_t>::max()));
  lbl_Umfang->setToolTip({});
  zeige_Leere();
  if (std::exchange(ersten_waehlen_, false)) waehle_ersten_Treffer();
  return gemerkt.has_value() && !gewaehlt();
}

void Vorgangsliste::zeige_Zahl(std::int64_t zahl, std::int64_t hoechstens) {
  lbl_Umfang->setText(umfang(modell_->anzahl(), zahl, hoechstens));
  cmd_Mehr->setEnabled(zahl > modell_->anzahl());
}

void Vorgangsliste::zeige_Ausfall(const QString& grund) {
  gefragt_ = false;
  geduld_->stop();
  lbl_Umfang->setText(u"Keine Antwort der Datenbank"_s);
  lbl_Umfang->setToolTip(grund);
}

void Vorgangsliste::zeige_Hinweis(const QString& text) {
  lbl_Hinweis->setText(text);
  lbl_Hinweis->setVisible(!text.isEmpty());
}

bool Vorgangsliste::waehle(const QString& nummer) {
  const QModelIndex index = modell_->index_von(nummer);
  if (index.isValid()) tree_Vorgaenge->setCurrentIndex(index);
  return index.isValid();
}

void Vorgangsliste::zeige_Leere() {
  const QString worte = txt_Filter->text().simplified();
  seiten_->setCurrentIndex(modell_->leer() ? 1 : 0);
  cmd_FilterLeeren->setVisible(!worte.isEmpty());
  if (nur_zuletzt())
    lbl_Leer->setText(u"An diesem Platz ist noch kein Vorgang bearbeitet worden."_s);
  else if (worte.isEmpty())
    lbl_Leer->setText(u"Hier stehen noch keine Vorgänge."_s);
  else
    lbl_Leer->setText(u"Kein Vorgang enthält „%1“."_s.arg(worte));
}

void Vorgangsliste::waehle_ersten_Treffer() {
  // What is shown still belongs to other words.
  if (gefragt_) {
    ersten_waehlen_ = true;
    return;
  }
  if (modell_->leer()) return;
  tree_Vorgaenge->setCurrentIndex(modell_->index(0, 0, modell_->index(0, 0)));
  tree_Vorgaenge->setFocus();
}
