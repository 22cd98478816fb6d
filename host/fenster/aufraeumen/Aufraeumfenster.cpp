#include "host/fenster/aufraeumen/Aufraeumfenster.h"

#include <QApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "host/betrieb/Ausgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize Bildmass{64, 48};
/// The path of a row whose picture is not shown yet.
constexpr int Offen = Qt::UserRole;

QString groesse(std::int64_t bytes) {
  return QLocale(QLocale::German).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QString zeitpunkt(std::int64_t nanosekunden) {
  constexpr std::int64_t Je_Millisekunde = 1'000'000;
  return QDateTime::fromMSecsSinceEpoch(nanosekunden / Je_Millisekunde).toString(u"dd.MM.yyyy HH:mm"_s);
}

/// All rows are as high as one with a picture, and their texts begin below each other.
QIcon platzhalter(const QImage& bild = {}) {
  QPixmap feld(Bildmass * qApp->devicePixelRatio());
  feld.fill(Qt::transparent);
  if (!bild.isNull())
    QPainter(&feld).drawImage((feld.width() - bild.width()) / 2, (feld.height() - bild.height()) / 2, bild);
  feld.setDevicePixelRatio(qApp->devicePixelRatio());
  return {feld};
}

}  // namespace

Aufraeumfenster::Aufraeumfenster(const Aufraeumen& aufraeumen, const Aufraeumplan& plan, QWidget* ueber)
    : QDialog(ueber),
      aufraeumen_(aufraeumen),
      plan_(plan),
      endgueltig_(aufraeumen.ist_endgueltig()),
      lst_Aufraeumen(new QTreeWidget),
      lbl_Platz(new QLabel),
      cmd_Loeschen(new QPushButton),
      takt_(new QTimer(this)) {
  setObjectName(u"Aufraeumfenster"_s);
  setWindowTitle(u"Bilderbaum aufräumen"_s);
  baue_auf();
  fuelle();
  rechne();
  connect(lst_Aufraeumen, &QTreeWidget::itemChanged, this, &Aufraeumfenster::rechne);
  connect(lst_Aufraeumen->verticalScrollBar(), &QScrollBar::valueChanged, takt_, qOverload<>(&QTimer::start));
  connect(takt_, &QTimer::timeout, this, &Aufraeumfenster::zeige_ein_Bild);
  takt_->start(0);
  resize(820, 520);
}

void Aufraeumfenster::baue_auf() {
  auto* lage = new QVBoxLayout(this);
  auto* frage = new QLabel(endgueltig_ ? u"Sollen diese Dateien und Ordner endgültig gelöscht werden?"_s
                                       : u"Sollen diese Dateien und Ordner in den Papierkorb verschoben werden?"_s);
  frage->setObjectName(u"lbl_Frage"_s);
  lage->addWidget(frage);
  lst_Aufraeumen->setObjectName(u"lst_Aufraeumen"_s);
  lst_Aufraeumen->setAccessibleName(endgueltig_ ? u"Was gelöscht wird"_s : u"Was in den Papierkorb kommt"_s);
  lst_Aufraeumen->setHeaderLabels({u"Datei"_s, u"Grund"_s, u"Größe"_s, u"Geändert"_s});
  lst_Aufraeumen->setRootIsDecorated(false);
  lst_Aufraeumen->setUniformRowHeights(true);
  lst_Aufraeumen->setIconSize(Bildmass);
  lst_Aufraeumen->header()->setStretchLastSection(false);
  lst_Aufraeumen->header()->setSectionResizeMode(Datei, QHeaderView::Stretch);
  lage->addWidget(lst_Aufraeumen, 1);
  lbl_Platz->setObjectName(u"lbl_Platz"_s);
  lage->addWidget(lbl_Platz);
  if (const QStringList saetze = aufraeumen_.warnungen(plan_); !saetze.isEmpty()) {
    auto* warnung = new QLabel(saetze.join(u'\n'));
    warnung->setObjectName(u"lbl_Warnung"_s);
    warnung->setTextFormat(Qt::PlainText);
    warnung->setWordWrap(true);
    lage->addWidget(warnung);
  }
  auto* knoepfe = new QDialogButtonBox;
  knoepfe->addButton(cmd_Loeschen, QDialogButtonBox::AcceptRole);
  auto* abbrechen = knoepfe->addButton(u"Abbrechen"_s, QDialogButtonBox::RejectRole);
  cmd_Loeschen->setObjectName(u"cmd_Loeschen"_s);
  abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  // Enter must not delete.
  cmd_Loeschen->setAutoDefault(false);
  abbrechen->setDefault(true);
  lage->addWidget(knoepfe);
  // Only now does the button belong to this window.
  abbrechen->setFocus();
  connect(knoepfe, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(knoepfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void Aufraeumfenster::fuelle() {
  zeilen_.reserve(std::ssize(plan_.Posten));
  for (const Aufraeumposten& p : plan_.Posten) fuege_an(p);
  for (const Bleibendes& b : plan_.Bleibend) fuege_an(b);
  for (const int spalte : {Grund, Groesse, Geaendert}) lst_Aufraeumen->resizeColumnToContents(spalte);
}

// A folder goes with what is in it, so it has no mark of its own.
void Aufraeumfenster::fuege_an(const Aufraeumposten& posten) {
  auto* zeile = new QTreeWidgetItem(lst_Aufraeumen);
  zeile->setText(Datei, aufraeumen_.angezeigt(posten));
  zeile->setText(Grund, Aufraeumen::worte(posten.Warum));
  zeile->setIcon(Datei, platzhalter());
  zeile->setTextAlignment(Groesse, Qt::AlignRight | Qt::AlignVCenter);
  zeilen_.append(zeile);
  if (posten.ist_Ordner()) return zeile->setFlags(zeile->flags() & ~Qt::ItemIsUserCheckable);
  zeile->setCheckState(Datei, Qt::Checked);
  if (posten.Warum == Aufraeumposten::Grund::OhneZuordnung) zeile->setData(Datei, Offen, posten.Pfad);
  static_cast<void>(gelingt([&] {
    const dateien::Kennung kennung = dateien::kennung(posten.Pfad);
    groessen_.insert(posten.Pfad, kennung.laenge);
    zeile->setText(Groesse, groesse(kennung.laenge));
    zeile->setText(Geaendert, zeitpunkt(kennung.geaendert_ns));
  }));
}

void Aufraeumfenster::fuege_an(const Bleibendes& bleibendes) {
  auto* zeile = new QTreeWidgetItem(lst_Aufraeumen);
  zeile->setText(Datei, aufraeumen_.angezeigt(bleibendes));
  zeile->setText(Grund, u"bleibt: "_s + Aufraeumen::worte(bleibendes.Warum));
  zeile->setIcon(Datei, platzhalter());
  zeile->setFlags(Qt::ItemIsSelectable);
}

QSet<QString> Aufraeumfenster::ausgenommen() const {
  QSet<QString> pfade;
  for (qsizetype i = 0; i < zeilen_.size(); ++i) {
    const Aufraeumposten& p = plan_.Posten[static_cast<std::size_t>(i)];
    if (!p.ist_Ordner() && zeilen_[i]->checkState(Datei) != Qt::Checked) pfade.insert(p.Pfad);
  }
  return pfade;
}

/// What stays because of the user's choice, such as the folder of a picture, turns grey.
void Aufraeumfenster::rechne() {
  const Aufraeumplan rest = Aufraeumen::ohne(plan_, ausgenommen());
  QSet<QString> geht;
  std::int64_t bytes = 0;
  for (const Aufraeumposten& p : rest.Posten) {
    geht.insert(p.Pfad);
    bytes += groessen_.value(p.Pfad);
  }
  const QSignalBlocker still(lst_Aufraeumen);
  for (qsizetype i = 0; i < zeilen_.size(); ++i) {
    const bool bleibt = !geht.contains(plan_.Posten[static_cast<std::size_t>(i)].Pfad);
    const auto gruppe = bleibt ? QPalette::Disabled : QPalette::Active;
    for (const int spalte : {Datei, Grund, Groesse, Geaendert})
      zeilen_[i]->setForeground(spalte, palette().brush(gruppe, QPalette::Text));
  }
  cmd_Loeschen->setText(
      (endgueltig_ ? u"%1 &löschen"_s : u"%1 in den &Papierkorb verschieben"_s).arg(rest.Posten.size()));
  cmd_Loeschen->setEnabled(!rest.Posten.empty());
  const QString platz = groesse(bytes);
  lbl_Platz->setText(endgueltig_ ? u"Frei werden %1."_s.arg(platz)
                                 : u"Zusammen %1; frei werden sie, wenn der Papierkorb geleert wird."_s.arg(platz));
}

void Aufraeumfenster::resizeEvent(QResizeEvent* ereignis) {
  QDialog::resizeEvent(ereignis);
  takt_->start(0);
}

/// One at a time and only what is in sight, so that a long list is there at once.
void Aufraeumfenster::zeige_ein_Bild() {
  const QRect sicht = lst_Aufraeumen->viewport()->rect();
  for (QTreeWidgetItem* zeile = lst_Aufraeumen->itemAt(sicht.topLeft()); zeile;
       zeile = lst_Aufraeumen->itemBelow(zeile)) {
    if (lst_Aufraeumen->visualItemRect(zeile).top() > sicht.bottom()) break;
    const QString pfad = zeile->data(Datei, Offen).toString();
    if (pfad.isEmpty()) continue;
    const QSignalBlocker still(lst_Aufraeumen);
    zeile->setData(Datei, Offen, {});
    const qsizetype trenner = pfad.lastIndexOf(u'\\');
    const QImage bild = lader_.lade(pfad.left(trenner), pfad.mid(trenner + 1), Bildmass * devicePixelRatio());
    if (!bild.isNull()) zeile->setIcon(Datei, platzhalter(bild));
    lst_Aufraeumen->viewport()->update();
    return;
  }
  takt_->stop();
}
