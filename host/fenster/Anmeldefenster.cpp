#include "host/fenster/Anmeldefenster.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

#include "host/betrieb/Ausgang.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Breite = 420;

QLabel* zeile(QFormLayout& felder, const QString& name, const QString& titel, const QString& wert) {
  if (wert.isEmpty()) return nullptr;
  auto* feld = new QLabel(wert);
  feld->setObjectName(name);
  feld->setTextFormat(Qt::PlainText);
  feld->setTextInteractionFlags(Qt::TextSelectableByMouse);
  felder.addRow(titel, feld);
  return feld;
}

}  // namespace

Anmeldefenster::Anmeldefenster(const anmeldung::Worte& worte, const QString& hinweis, QWidget* ueber)
    : QDialog(ueber), txt_Kennwort(new QLineEdit(this)), cmd_Anmelden(new QPushButton(u"An&melden"_s, this)) {
  setObjectName(u"Anmeldefenster"_s);
  setWindowTitle(u"Anmeldung"_s);
  txt_Kennwort->setObjectName(u"txt_Kennwort"_s);
  txt_Kennwort->setEchoMode(QLineEdit::Password);
  txt_Kennwort->setContextMenuPolicy(Qt::NoContextMenu);
  cmd_Anmelden->setObjectName(u"cmd_Anmelden"_s);
  cmd_Anmelden->setDefault(true);
  auto* abbrechen = new QPushButton(u"&Abbrechen"_s, this);
  abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  abbrechen->setAutoDefault(false);

  auto* lage = new QVBoxLayout(this);
  auto* lbl_Hinweis = new QLabel(hinweis.isEmpty() ? u"Die Datenbank verlangt ein Kennwort."_s : hinweis);
  lbl_Hinweis->setObjectName(u"lbl_Hinweis"_s);
  lbl_Hinweis->setTextFormat(Qt::PlainText);
  lbl_Hinweis->setWordWrap(true);
  lage->addWidget(lbl_Hinweis);
  auto* felder = new QFormLayout;
  zeile(*felder, u"lbl_Server"_s, u"Server:"_s, worte.server);
  zeile(*felder, u"lbl_Datenbank"_s, u"Datenbank:"_s, worte.datenbank);
  zeile(*felder, u"lbl_Benutzer"_s, u"Benutzer:"_s, worte.benutzer);
  felder->addRow(u"&Kennwort:"_s, txt_Kennwort);
  lage->addLayout(felder);
  lage->addStretch(1);
  auto* fuss = new QHBoxLayout;
  fuss->addStretch(1);
  fuss->addWidget(cmd_Anmelden);
  fuss->addWidget(abbrechen);
  lage->addLayout(fuss);
  setMinimumWidth(Breite);

  connect(cmd_Anmelden, &QPushButton::clicked, this, &QDialog::accept);
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  txt_Kennwort->setFocus();
}

void frage_Kennwort(Arbeitsplatz& platz, const QString& grund, QWidget* ueber) {
  if (!platz.braucht_Kennwort()) return;
  const bool abgelehnt = platz.ausfallgrund() == Datenbankgrund::Anmeldung;
  Anmeldefenster fenster(anmeldung::worte(platz.optionen().verbindung),
      abgelehnt ? u"Der Server hat die Anmeldung abgelehnt. Bitte geben Sie das Kennwort noch einmal ein."_s : grund,
      ueber);
  if (fenster.exec() != QDialog::Accepted)
    throw Abbruch(Ausgang::Datenbank, grund.isEmpty() ? u"Die Anmeldung ist abgebrochen."_s : grund);
  platz.kennwort(fenster.kennwort());
}

void oeffne_mit_Anmeldung(Arbeitsplatz& platz, QWidget* ueber) {
  for (QString grund;;) {
    frage_Kennwort(platz, grund, ueber);
    try {
      const auto vorher = oberflaeche::mauszeiger().form();
      oberflaeche::mauszeiger().form(oberflaeche::Zeigerform::Sanduhr);
      const auto zurueck = qScopeGuard([vorher] { oberflaeche::mauszeiger().form(vorher); });
      platz.oeffne();
      return;
    } catch (const Abbruch& abbruch) {
      if (!platz.braucht_Kennwort()) throw;
      grund = abbruch.text();
    }
  }
}
