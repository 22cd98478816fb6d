#include "host/fenster/aufnahme/Aufnahmefenster.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

Aufnahmefenster::Aufnahmefenster(QWidget* ueber)
    : QDialog(ueber),
      lbl_Fortschritt(new QLabel),
      bar_Fortschritt(new QProgressBar),
      cmd_Anhalten(new QPushButton(u"Anhalten"_s)) {
  setObjectName(u"Aufnahmefenster"_s);
  setWindowTitle(u"Bilder zuordnen"_s);
  setWindowModality(Qt::ApplicationModal);
  lbl_Fortschritt->setObjectName(u"lbl_Fortschritt"_s);
  bar_Fortschritt->setObjectName(u"bar_Fortschritt"_s);
  bar_Fortschritt->setAccessibleName(u"Fortschritt"_s);
  cmd_Anhalten->setObjectName(u"cmd_Anhalten"_s);
  cmd_Anhalten->setToolTip(u"Was schon kopiert ist, bleibt zugeordnet; der Rest wird nicht angefasst"_s);
  cmd_Anhalten->setDefault(true);
  auto* lage = new QVBoxLayout(this);
  lage->addWidget(lbl_Fortschritt);
  lage->addWidget(bar_Fortschritt);
  lage->addWidget(cmd_Anhalten, 0, Qt::AlignRight);
  connect(cmd_Anhalten, &QPushButton::clicked, this, &QDialog::reject);
  resize(420, sizeHint().height());
  uhr_.start();
}

bool Aufnahmefenster::zeige(int fertige, int alle) {
  if (!isVisible() && !angehalten_ && (alle >= Viele || uhr_.elapsed() > Geduld)) show();
  if (!isVisible()) return !angehalten_;
  const QLocale deutsch(QLocale::German);
  lbl_Fortschritt->setText(u"%1 von %2 Bildern sind kopiert."_s.arg(deutsch.toString(fertige), deutsch.toString(alle)));
  bar_Fortschritt->setRange(0, alle);
  bar_Fortschritt->setValue(fertige);
  QCoreApplication::processEvents();
  return !angehalten_;
}

/// Stays up until what is copied has its rows.
void Aufnahmefenster::reject() {
  angehalten_ = true;
  cmd_Anhalten->setEnabled(false);
  lbl_Fortschritt->setText(u"Wird angehalten …"_s);
}
