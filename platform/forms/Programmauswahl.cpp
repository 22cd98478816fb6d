#include "platform/forms/Programmauswahl.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

Programmauswahl::Programmauswahl(const QString& datei, const QList<shell::Programm>& programme, QWidget* ueber)
    : QDialog(ueber), programme_(programme), liste_(new QListWidget(this)) {
  setObjectName(u"Programmauswahl"_s);
  setWindowTitle(u"Öffnen mit"_s);
  auto* frage = new QLabel(this);
  frage->setTextFormat(Qt::PlainText);
  frage->setWordWrap(true);
  frage->setText(u"Womit soll „%1“ geöffnet werden?"_s.arg(QFileInfo(datei).fileName()));
  frage->setBuddy(liste_);
  liste_->setObjectName(u"lst_Programme"_s);
  liste_->setAccessibleName(u"Programme"_s);
  liste_->setIconSize(QSize(24, 24));
  for (const shell::Programm& programm : programme_)
    new QListWidgetItem(QIcon::fromTheme(programm.symbol), programm.name, liste_);
  liste_->setCurrentRow(programme_.isEmpty() ? -1 : 0);
  auto* knoepfe = new QDialogButtonBox(this);
  QPushButton* oeffnen = knoepfe->addButton(u"Öffnen"_s, QDialogButtonBox::AcceptRole);
  QPushButton* anderes = knoepfe->addButton(u"Anderes Programm …"_s, QDialogButtonBox::ActionRole);
  knoepfe->addButton(u"Abbrechen"_s, QDialogButtonBox::RejectRole);
  oeffnen->setObjectName(u"cmd_Oeffnen"_s);
  oeffnen->setDefault(true);
  oeffnen->setEnabled(!programme_.isEmpty());
  anderes->setObjectName(u"cmd_Anderes"_s);
  auto* anordnung = new QVBoxLayout(this);
  anordnung->addWidget(frage);
  anordnung->addWidget(liste_);
  if (programme_.isEmpty()) {
    anordnung->insertWidget(1, new QLabel(u"Für diesen Dateityp ist kein Programm eingerichtet."_s, this));
    liste_->hide();
  }
  anordnung->addWidget(knoepfe);
  resize(440, programme_.isEmpty() ? 120 : 340);
  connect(knoepfe, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(knoepfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(liste_, &QListWidget::itemActivated, this, &QDialog::accept);
  connect(liste_, &QListWidget::currentRowChanged, this, [oeffnen](int zeile) { oeffnen->setEnabled(zeile >= 0); });
  connect(anderes, &QPushButton::clicked, this, [this] { waehle_anderes(); });
}

void Programmauswahl::waehle_anderes() {
  QFileDialog wahl(this, u"Programm auswählen"_s, u"/usr/bin"_s);
  wahl.setOption(QFileDialog::DontUseNativeDialog);
  wahl.setFileMode(QFileDialog::ExistingFile);
  wahl.setLabelText(QFileDialog::Accept, u"Auswählen"_s);
  wahl.setLabelText(QFileDialog::Reject, u"Abbrechen"_s);
  wahl.setLabelText(QFileDialog::LookIn, u"Suchen in:"_s);
  wahl.setLabelText(QFileDialog::FileName, u"Programm:"_s);
  wahl.setLabelText(QFileDialog::FileType, u"Dateityp:"_s);
  if (wahl.exec() != QDialog::Accepted || wahl.selectedFiles().isEmpty()) return;
  const QString pfad = wahl.selectedFiles().constFirst();
  programme_.append({QFileInfo(pfad).fileName(), shell::als_Argument(pfad) + u" %f"_s, {}, {}, {}});
  new QListWidgetItem(programme_.constLast().name, liste_);
  liste_->setCurrentRow(liste_->count() - 1);
  accept();
}

shell::Programm Programmauswahl::gewaehltes() const {
  return programme_.value(liste_->currentRow());
}

QStringList Programmwahl_mit_Fenster::waehle(
    const QString& datei, const QList<shell::Programm>& programme, QString& verzeichnis) {
  Programmauswahl fenster(datei, programme, QApplication::activeWindow());
  if (fenster.exec() != QDialog::Accepted) return {};
  const shell::Programm programm = fenster.gewaehltes();
  verzeichnis = programm.verzeichnis;
  return shell::Befehlszeile(programm, datei);
}
