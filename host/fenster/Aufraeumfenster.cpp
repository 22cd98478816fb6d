#include "host/fenster/Aufraeumfenster.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

bool darf_aufraeumen(const Aufraeumen& aufraeumen, const Aufraeumliste& liste, QWidget* ueber) {
  QDialog fenster(ueber);
  fenster.setObjectName(u"Aufraeumfenster"_s);
  fenster.setWindowTitle(u"Bilderbaum aufräumen"_s);
  auto* lage = new QVBoxLayout(&fenster);
  auto* frage = new QLabel(u"Sollen diese Dateien und Ordner endgültig gelöscht werden?"_s);
  frage->setWordWrap(true);
  lage->addWidget(frage);
  auto* namen = new QListWidget;
  namen->setObjectName(u"lst_Aufraeumen"_s);
  namen->setAccessibleName(u"Was gelöscht wird"_s);
  for (const Aufraeumposten& p : liste.Posten)
    namen->addItem(aufraeumen.angezeigt(p) + u" – "_s + Aufraeumen::worte(p.Warum));
  lage->addWidget(namen, 1);
  if (const QStringList saetze = aufraeumen.warnungen(liste); !saetze.isEmpty()) {
    auto* warnung = new QLabel(saetze.join(u'\n'));
    warnung->setObjectName(u"lbl_Warnung"_s);
    warnung->setTextFormat(Qt::PlainText);
    warnung->setWordWrap(true);
    lage->addWidget(warnung);
  }
  auto* knoepfe = new QDialogButtonBox;
  auto* loeschen = knoepfe->addButton(u"%1 löschen"_s.arg(liste.Posten.size()), QDialogButtonBox::AcceptRole);
  auto* abbrechen = knoepfe->addButton(u"Abbrechen"_s, QDialogButtonBox::RejectRole);
  loeschen->setObjectName(u"cmd_Loeschen"_s);
  abbrechen->setObjectName(u"cmd_Abbrechen"_s);
  // Enter must not delete.
  loeschen->setAutoDefault(false);
  abbrechen->setDefault(true);
  lage->addWidget(knoepfe);
  // Only now does the button belong to this window.
  abbrechen->setFocus();
  QObject::connect(knoepfe, &QDialogButtonBox::accepted, &fenster, &QDialog::accept);
  QObject::connect(knoepfe, &QDialogButtonBox::rejected, &fenster, &QDialog::reject);
  fenster.resize(620, 420);
  return fenster.exec() == QDialog::Accepted;
}
