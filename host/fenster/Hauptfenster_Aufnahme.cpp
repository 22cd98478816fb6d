// What the window does with pictures that are dropped on a record or pasted, and how that is taken back.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QTimer>

#include "host/betrieb/aufnahme/Aufnahme.h"
#include "host/betrieb/aufnahme/Aufnahmeeinstellung.h"
#include "host/betrieb/aufnahme/Ruecknahme.h"
#include "host/betrieb/vorgang/Bildsammlung.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Meldungszeilen.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/aufnahme/Abwurfziel.h"
#include "host/fenster/aufnahme/Aufnahmefenster.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bildzuordnung"_s;

void sage(const Aufnahmeergebnis& ergebnis) {
  QStringList absaetze;
  if (!ergebnis.probleme.isEmpty()) absaetze.append(u"Nicht zugeordnet:\r\n"_s + meldungszeilen(ergebnis.probleme));
  if (!ergebnis.hinweise.isEmpty()) absaetze.append(u"Zugeordnet, aber:\r\n"_s + meldungszeilen(ergebnis.hinweise));
  if (!absaetze.isEmpty()) MsgBox(absaetze.join(u"\r\n\r\n"_s), Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
}

bool frage_nach_Doppelten(const QString& name) {
  return MsgBox(
             u"„%1“ hat der Vorgang schon: Der Inhalt ist derselbe.\r\n\r\nTrotzdem noch einmal zuordnen? Die "
             "Antwort gilt für alle solchen Bilder, die jetzt dazukommen."_s.arg(name),
             Knoepfe::JaNein, Symbol::Frage, Titel) == Antwort::Ja;
}

}  // namespace

void Hauptfenster::richte_Aufnahme_ein() {
  cmd_Rueckgaengig->setObjectName(u"cmd_Rueckgaengig"_s);
  cmd_Rueckgaengig->setToolTip(u"Nimmt die eben zugeordneten Bilder wieder heraus (Strg+Z)"_s);
  cmd_Rueckgaengig->hide();
  statusBar()->addWidget(cmd_Rueckgaengig);
  connect(cmd_Rueckgaengig, &QPushButton::clicked, this, &Hauptfenster::nimm_zurueck);
  act_Aufrecht->setCheckable(true);
  act_Aufrecht->setChecked(!platz_.optionen().merken || aufnahmeeinstellung::aufrecht());
  lauf_.aufrecht(act_Aufrecht->isChecked());
  connect(act_Aufrecht, &QAction::toggled, this, [this](bool an) {
    lauf_.aufrecht(an);
    if (platz_.optionen().merken) aufnahmeeinstellung::aufrecht(an);
  });
  const auto nimm = [this](const Vorgang* vorgang, const Abwurf& abwurf) {
    // The other program waits for its answer until the event is over.
    if (vorgang) QTimer::singleShot(0, this, [this, abwurf, ziel = *vorgang] { nimm_auf(ziel, abwurf); });
  };
  new Abwurfziel(
      *liste_->flaeche(), [this](QPoint ort) { return dialog_offen_ ? QRect() : liste_->zeile_bei(ort); },
      [=, this](QPoint ort, const Abwurf& abwurf) { nimm(liste_->vorgang_bei(ort), abwurf); });
  new Abwurfziel(
      *ansicht_, [this](QPoint) { return dialog_offen_ || !liste_->gewaehlt() ? QRect() : ansicht_->bildflaeche(); },
      [=, this](QPoint, const Abwurf& abwurf) { nimm(liste_->gewaehlt(), abwurf); });
}

void Hauptfenster::fuege_ein() {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  const QMimeData* inhalt = QApplication::clipboard()->mimeData();
  if (!gewaehlt || dialog_offen_) return;
  if (!inhalt || !abwurf::kann_sein(*inhalt))
    return melde(u"Einfügen: In der Zwischenablage ist weder eine Datei noch ein Bild."_s);
  // The list is read anew meanwhile.
  const Vorgang vorgang = *gewaehlt;
  nimm_auf(vorgang, abwurf::lies(*inhalt));
}

bool Hauptfenster::nimm_auf(const Vorgang& vorgang, const Abwurf& abwurf) {
  if (dialog_offen_) return false;
  QScopedValueRollback offen(dialog_offen_, true);
  Aufnahmeergebnis ergebnis;
  ergebnis.alle = static_cast<int>(abwurf.dateien.size() + abwurf.pixel.size());
  if (const auto grund = platz_.wurzel_fehlt()) {
    ergebnis.probleme.append(*grund);
  } else if (ergebnis.alle > 0) {
    Aufnahmefenster fenster(this);
    const auto zeige = [&](int fertige, int alle) { return fenster.zeige(fertige, alle); };
    ergebnis =
        Aufnahme(platz_, als_Zuordnungsvorgang(vorgang), {act_Aufrecht->isChecked(), zeige, frage_nach_Doppelten})
            .nimm_auf(abwurf.dateien, abwurf.pixel);
  }
  ergebnis.probleme = abwurf.probleme + ergebnis.probleme;
  if (!ergebnis.bilder.empty()) aktualisiere();
  sage(ergebnis);
  melde(vorgang::infozeile(vorgang) + u": "_s + ergebnis.text());
  if (ergebnis.bilder.empty()) return false;
  zurueck_ = std::make_unique<Zurueck>(Zurueck{vorgang, std::move(ergebnis)});
  cmd_Rueckgaengig->show();
  return true;
}

void Hauptfenster::vergiss_Aufnahme() {
  zurueck_.reset();
  cmd_Rueckgaengig->hide();
}

void Hauptfenster::nimm_zurueck() {
  if (!zurueck_ || dialog_offen_) return;
  const QScopedValueRollback offen(dialog_offen_, true);
  const auto zurueck = std::move(zurueck_);
  const auto vorher = mauszeiger().form();
  mauszeiger().form(Zeigerform::Sanduhr);
  const ruecknahme::Ergebnis ergebnis =
      ruecknahme::nimm_zurueck(platz_, als_Zuordnungsvorgang(zurueck->vorgang), zurueck->ergebnis);
  mauszeiger().form(vorher);
  aktualisiere();
  if (ergebnis.geblieben.size() > 1)
    MsgBox(u"Nicht alles ist zurückgenommen:\r\n"_s + meldungszeilen(ergebnis.geblieben), Knoepfe::OK,
        Symbol::Ausrufezeichen, Titel);
  melde(vorgang::infozeile(zurueck->vorgang) + u": "_s + ergebnis.text());
}
