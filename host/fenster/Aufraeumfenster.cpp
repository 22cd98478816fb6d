#include "host/fenster/Aufraeumfenster.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

using Grund = Aufraeumposten::Grund;

QString warum(Grund grund) {
  switch (grund) {
    case Grund::OhneZuordnung:
      return u"keine Zuordnung"_s;
    case Grund::AbfrageGescheitert:
      return u"nicht zu prüfen, geht auch mit Zuordnung"_s;
    case Grund::TextOhneBild:
      return u"Text ohne Bild"_s;
    case Grund::LeererOrdner:
      break;
  }
  return u"leerer Ordner"_s;
}

/// What a user might not expect of the list.
QString warnungen(const Aufraeumen& aufraeumen, const Aufraeumliste& liste) {
  QStringList saetze;
  const auto eines = [&](auto bedingung) { return std::any_of(liste.Posten.begin(), liste.Posten.end(), bedingung); };
  if (eines([&](const auto& p) { return aufraeumen.liegt_in_der_Wurzel(p); }))
    saetze.append(u"Was unmittelbar in der Bildablage liegt, geht, ob zugeordnet oder nicht."_s);
  if (eines([](const auto& p) { return p.Warum == Grund::AbfrageGescheitert; }))
    saetze.append(u"Nach manchen Dateien ließ sich die Tabelle nicht fragen, etwa wegen eines Hochkommas."_s);
  if (!ist_True(liste.Ergebnis)) saetze.append(u"Ein Ordner ist nicht zu lesen; über ihm bleibt alles stehen."_s);
  return saetze.join(u'\n');
}

}  // namespace

Aufraeumfenster::Aufraeumfenster(const Aufraeumen& aufraeumen, const Aufraeumliste& liste, QWidget* ueber)
    : QDialog(ueber) {
  setObjectName(u"Aufraeumfenster"_s);
  setWindowTitle(u"Bilderbaum aufräumen"_s);
  auto* lage = new QVBoxLayout(this);
  auto* frage = new QLabel(u"Sollen diese Dateien und Ordner endgültig gelöscht werden?"_s);
  frage->setWordWrap(true);
  lage->addWidget(frage);
  auto* namen = new QListWidget;
  namen->setObjectName(u"lst_Aufraeumen"_s);
  namen->setAccessibleName(u"Was gelöscht wird"_s);
  for (const Aufraeumposten& p : liste.Posten) namen->addItem(aufraeumen.angezeigt(p) + u" – "_s + warum(p.Warum));
  lage->addWidget(namen, 1);
  if (const QString text = warnungen(aufraeumen, liste); !text.isEmpty()) {
    auto* warnung = new QLabel(text);
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
  abbrechen->setFocus();
  lage->addWidget(knoepfe);
  connect(knoepfe, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(knoepfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
  resize(620, 420);
}
