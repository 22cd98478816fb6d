// What the call asks of the window beside showing the records: files that wait for one, a search, a new record.
#include <QPushButton>
#include <QTimer>

#include "host/fenster/Hauptfenster.h"
#include "host/fenster/aufnahme/Wartezeile.h"

using namespace Qt::Literals::StringLiterals;

void Hauptfenster::richte_Anfang_ein() {
  connect(wartezeile_->cmd_Annehmen, &QPushButton::clicked, this, &Hauptfenster::ordne_Wartende_zu);
  connect(wartezeile_->cmd_Verwerfen, &QPushButton::clicked, this, [this] {
    wartende_.clear();
    zeige_Wartende(false);
  });
}

void Hauptfenster::zeige_Wartende(bool erlaubt) {
  const Vorgang* gewaehlt = erlaubt ? liste_->gewaehlt() : nullptr;
  wartezeile_->zeige(wartende_, gewaehlt ? gewaehlt->nummer : QString());
}

void Hauptfenster::ordne_Wartende_zu() {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_) return;
  const Vorgang vorgang = *gewaehlt;
  Abwurf abwurf;
  abwurf.dateien = wartende_;
  // Where nothing came of it, another record or another try may do.
  if (!nimm_auf(vorgang, abwurf)) return;
  wartende_.clear();
  zeige_Wartende(false);
}

void Hauptfenster::tu_Anfangstat() {
  const Anfangstat tat = std::exchange(anfangstat_, Anfangstat::Keine);
  if (tat == Anfangstat::Suchen) suche_Bilder();
  if (tat != Anfangstat::Neuer_Vorgang) return;
  if (hat_eigene_Vorgaenge()) return mache_Vorgang();
  melde(u"Neue Vorgänge entstehen in der Anwendung des Betriebs; hier lassen sie sich nicht anlegen."_s);
}
