// What the window does with the picture report of a record.
#include <QAction>
#include <QPushButton>
#include <QScopedValueRollback>

#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/bericht/Berichtsfenster.h"

using namespace Qt::Literals::StringLiterals;

QAction* Hauptfenster::baue_Berichtsaktion() {
  act_Bericht = aktion(u"act_Bericht"_s, u"Bericht …"_s, QKeySequence::Print, [this] { zeige_Bericht(); });
  connect(ansicht_->cmd_Bericht, &QPushButton::clicked, act_Bericht, &QAction::trigger);
  return act_Bericht;
}

void Hauptfenster::zeige_Bericht(const Berichtsfragen& fragen) {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_) return;
  const Vorgang vorgang = *gewaehlt;
  const QScopedValueRollback offen(dialog_offen_, true);
  Berichtsfenster fenster(platz_, vorgang, fragen, this);
  fenster.exec();
  if (!fenster.ergebnis().isEmpty()) melde(vorgang::infozeile(vorgang) + u": "_s + fenster.ergebnis());
}
