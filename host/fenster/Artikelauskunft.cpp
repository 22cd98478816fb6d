#include "host/fenster/Artikelauskunft.h"

#include <QCoreApplication>
#include <QDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <memory>

#include "platform/basic/Laufzeitfehler.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList Titel{u"Artikel-Nr"_s, u"Kurztext 1"_s, u"Kurztext 2"_s, u"Lieferant"_s};

/// The articles as rows of texts.
std::unique_ptr<QStandardItemModel> lies_Artikel(adodb::Connection& verbindung) {
  auto modell = std::make_unique<QStandardItemModel>(0, static_cast<int>(Titel.size()));
  modell->setHorizontalHeaderLabels(Titel);
  const auto satz = verbindung.Execute(
      u"Select Artikelnummer, Bezeichnung, Bezeichnung3, Hauptlieferant from Artikelstamm order by Artikelnummer"_s);
  for (; !satz->Eof(); satz->MoveNext()) {
    QList<QStandardItem*> zellen;
    for (std::int32_t i = 0; i < Titel.size(); ++i) {
      zellen.append(new QStandardItem(satz->Text(i)));
      zellen.last()->setEditable(false);
    }
    modell->appendRow(zellen);
  }
  return modell;
}

/// The look-up's window: the articles, of which only those stay that contain what is typed.
class Artikelfenster final : public QDialog {
 public:
  /// A row is an article's number, its two short texts and its supplier. The articles outlive the window.
  explicit Artikelfenster(QAbstractItemModel& artikel);
  /// The row that the user picked, or none.
  const QStringList& gewaehlt() const noexcept { return gewaehlt_; }

 protected:
  bool eventFilter(QObject* objekt, QEvent* ereignis) override;

 private:
  void baue_auf();
  void filtere(const QString& text);
  void nimm();

  QSortFilterProxyModel* modell_;
  QLineEdit* txt_Filter;
  QTreeView* tree_Artikel;
  QLabel* lbl_Leer;
  QPushButton* cmd_Nehmen;
  QStringList gewaehlt_;
};

}  // namespace

Artikelfenster::Artikelfenster(QAbstractItemModel& artikel)
    : modell_(new QSortFilterProxyModel(this)),
      txt_Filter(new QLineEdit(this)),
      tree_Artikel(new QTreeView(this)),
      lbl_Leer(new QLabel(this)),
      cmd_Nehmen(new QPushButton(u"&Übernehmen"_s, this)) {
  setObjectName(u"Artikelauskunft"_s);
  setWindowTitle(u"Artikel auswählen"_s);
  modell_->setSourceModel(&artikel);
  modell_->setFilterKeyColumn(-1);
  modell_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  baue_auf();
  filtere({});
  resize(720, 460);
}

void Artikelfenster::baue_auf() {
  txt_Filter->setObjectName(u"txt_Artikelfilter"_s);
  txt_Filter->setPlaceholderText(u"Nummer, Text oder Lieferant"_s);
  txt_Filter->setClearButtonEnabled(true);
  txt_Filter->installEventFilter(this);
  tree_Artikel->setObjectName(u"tree_Artikel"_s);
  tree_Artikel->setAccessibleName(u"Artikel"_s);
  tree_Artikel->setModel(modell_);
  tree_Artikel->setRootIsDecorated(false);
  tree_Artikel->setUniformRowHeights(true);
  tree_Artikel->setAlternatingRowColors(true);
  for (int spalte = 0; const int breite : {130, 240, 180}) tree_Artikel->header()->resizeSection(spalte++, breite);
  lbl_Leer->setObjectName(u"lbl_Leer"_s);
  cmd_Nehmen->setObjectName(u"cmd_Uebernehmen"_s);
  cmd_Nehmen->setDefault(true);
  auto* zurueck = new QPushButton(u"&Zurück"_s, this);
  zurueck->setObjectName(u"cmd_Abbrechen"_s);
  zurueck->setAutoDefault(false);

  auto* beschriftung = new QLabel(u"&Suchen:"_s, this);
  beschriftung->setBuddy(txt_Filter);
  auto* kopf = new QHBoxLayout;
  kopf->addWidget(beschriftung);
  kopf->addWidget(txt_Filter, 1);
  auto* fuss = new QHBoxLayout;
  fuss->addWidget(lbl_Leer, 1);
  fuss->addWidget(cmd_Nehmen);
  fuss->addWidget(zurueck);
  auto* lage = new QVBoxLayout(this);
  lage->addLayout(kopf);
  lage->addWidget(tree_Artikel, 1);
  lage->addLayout(fuss);
  connect(txt_Filter, &QLineEdit::textChanged, this, &Artikelfenster::filtere);
  connect(tree_Artikel, &QTreeView::doubleClicked, this, &Artikelfenster::nimm);
  connect(cmd_Nehmen, &QPushButton::clicked, this, &Artikelfenster::nimm);
  connect(zurueck, &QPushButton::clicked, this, &QDialog::reject);
  txt_Filter->setFocus();
}

void Artikelfenster::filtere(const QString& text) {
  modell_->setFilterFixedString(text.trimmed());
  const int anzahl = modell_->rowCount();
  if (anzahl > 0 && !tree_Artikel->currentIndex().isValid()) tree_Artikel->setCurrentIndex(modell_->index(0, 0));
  cmd_Nehmen->setEnabled(anzahl > 0);
  lbl_Leer->setText(anzahl > 0 ? u"%1 Artikel"_s.arg(anzahl) : u"Kein Artikel enthält das."_s);
}

void Artikelfenster::nimm() {
  const QModelIndex zeile = tree_Artikel->currentIndex();
  if (!zeile.isValid()) return;
  for (int i = 0; i < modell_->columnCount(); ++i) gewaehlt_.append(zeile.siblingAtColumn(i).data().toString());
  accept();
}

/// The arrows walk the list while one types.
bool Artikelfenster::eventFilter(QObject* objekt, QEvent* ereignis) {
  if (const auto* taste = objekt == txt_Filter ? dynamic_cast<QKeyEvent*>(ereignis) : nullptr;
      taste && taste->type() == QEvent::KeyPress) {
    for (const int gemeint : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown})
      if (taste->key() == gemeint) return QCoreApplication::sendEvent(tree_Artikel, ereignis);
  }
  return QDialog::eventFilter(objekt, ereignis);
}

std::int32_t Artikelauskunft::Anzeige_Auskunft(const QString& pName, const QString& /*pZusatz*/,
    const QString& /*pAppName*/, const QString& /*pUser*/, const QString& /*pExeDir*/,
    const QString& /*pConnectString*/, const std::shared_ptr<adodb::Connection>& pConnection,
    Auskunftsempfaenger& pEmpfaenger, const QString& /*pReportDBTemplateDir*/, const QString& /*pDBName*/) {
  if (pName != "Artikel"_L1) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  if (!pConnection) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  const auto artikel = lies_Artikel(*pConnection);
  Artikelfenster fenster(*artikel);
  if (fenster.exec() != QDialog::Accepted) return 0;
  pEmpfaenger.LA_Doppelclick(fenster.gewaehlt().join(u'|'));
  return 1;
}
