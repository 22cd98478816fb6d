#include "host/fenster/vorgaenge/Anfangsfenster.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Breite = 440;

}  // namespace

Anfangsfenster::Anfangsfenster(QWidget* ueber)
    : QDialog(ueber),
      opt_Beispiele(new QRadioButton(u"Mit &Beispielen, zum Ausprobieren"_s, this)),
      opt_Leer(new QRadioButton(u"&Leer, für die Vorgänge des eigenen Betriebs"_s, this)) {
  setObjectName(u"Anfangsfenster"_s);
  setWindowTitle(u"Bildzuordnung"_s);
  auto* lage = new QVBoxLayout(this);
  auto* frage =
      new QLabel(u"Das Programm legt jetzt seine Datenbank und die Bildablage an. Wie sollen sie beginnen?"_s);
  frage->setObjectName(u"lbl_Frage"_s);
  frage->setWordWrap(true);
  lage->addWidget(frage);
  opt_Beispiele->setObjectName(u"opt_Beispiele"_s);
  opt_Beispiele->setChecked(true);
  lage->addWidget(opt_Beispiele);
  opt_Leer->setObjectName(u"opt_Leer"_s);
  lage->addWidget(opt_Leer);
  lage->addStretch(1);
  auto* anlegen = new QPushButton(u"&Anlegen"_s, this);
  anlegen->setObjectName(u"cmd_Anlegen"_s);
  anlegen->setDefault(true);
  auto* abbrechen = new QPushButton(u"Abb&rechen"_s, this);
  abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  abbrechen->setAutoDefault(false);
  auto* fuss = new QHBoxLayout;
  fuss->addStretch(1);
  fuss->addWidget(anlegen);
  fuss->addWidget(abbrechen);
  lage->addLayout(fuss);
  setMinimumWidth(Breite);
  opt_Beispiele->setFocus();
  connect(anlegen, &QPushButton::clicked, this, &QDialog::accept);
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
}

bool Anfangsfenster::leer() const {
  return opt_Leer->isChecked();
}
