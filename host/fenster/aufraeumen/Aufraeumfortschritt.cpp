#include "host/fenster/aufraeumen/Aufraeumfortschritt.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

using namespace Qt::Literals::StringLiterals;

Aufraeumfortschritt::Aufraeumfortschritt(QWidget* ueber)
    : QDialog(ueber),
      lbl_Fortschritt(new QLabel),
      bar_Fortschritt(new QProgressBar),
      cmd_Abbrechen(new QPushButton(u"Abbrechen"_s)) {
  setObjectName(u"Aufraeumfortschritt"_s);
  setWindowTitle(u"Bilderbaum aufräumen"_s);
  setWindowModality(Qt::ApplicationModal);
  lbl_Fortschritt->setObjectName(u"lbl_Fortschritt"_s);
  bar_Fortschritt->setObjectName(u"bar_Fortschritt"_s);
  bar_Fortschritt->setAccessibleName(u"Fortschritt"_s);
  bar_Fortschritt->setTextVisible(false);
  cmd_Abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  cmd_Abbrechen->setToolTip(u"Hört nach der Datei auf, die gerade an der Reihe ist"_s);
  cmd_Abbrechen->setDefault(true);
  auto* lage = new QVBoxLayout(this);
  lage->addWidget(lbl_Fortschritt);
  lage->addWidget(bar_Fortschritt);
  lage->addWidget(cmd_Abbrechen, 0, Qt::AlignRight);
  connect(cmd_Abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  resize(420, sizeHint().height());
  uhr_.start();
}

// Painting takes longer than a file does, so the user gets to see only some of them.
bool Aufraeumfortschritt::zeige(Aufraeumen::Schritt schritt, std::size_t getan, std::size_t von) {
  constexpr qint64 Takt = 40;
  constexpr std::size_t Hundert = 100;
  if (!isVisible() && !angehalten_ && (von >= Viele || uhr_.elapsed() > Geduld)) show();
  if (!isVisible()) return !angehalten_;
  const bool neuer_Schritt = std::exchange(schritt_, schritt) != schritt;
  if (!neuer_Schritt && getan % Hundert != 0 && zuletzt_.elapsed() < Takt) return !angehalten_;
  if (!angehalten_) setze(schritt, getan, von);
  QCoreApplication::processEvents();
  zuletzt_.start();
  return !angehalten_;
}

void Aufraeumfortschritt::setze(Aufraeumen::Schritt schritt, std::size_t getan, std::size_t von) {
  const QLocale deutsch(QLocale::German);
  const auto zahl = [&](std::size_t n) { return deutsch.toString(static_cast<qulonglong>(n)); };
  QString worte = u"%1 Dateien sind gefunden."_s.arg(zahl(getan));
  if (schritt == Aufraeumen::Schritt::Pruefen) worte = u"%1 von %2 Dateien sind geprüft."_s.arg(zahl(getan), zahl(von));
  if (schritt == Aufraeumen::Schritt::Loeschen) worte = u"%1 von %2 sind aufgeräumt."_s.arg(zahl(getan), zahl(von));
  lbl_Fortschritt->setText(worte);
  bar_Fortschritt->setRange(0, static_cast<int>(von));
  bar_Fortschritt->setValue(static_cast<int>(getan));
}

void Aufraeumfortschritt::reject() {
  angehalten_ = true;
  cmd_Abbrechen->setEnabled(false);
  lbl_Fortschritt->setText(u"Wird abgebrochen …"_s);
}
