// How the window hands out the pictures of a record.
#include <QAction>
#include <QPushButton>
#include <QScopedValueRollback>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/vorgang/Bildsammlung.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Meldungszeilen.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/ausgabe/Ausgabefenster.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bilder ausgeben"_s;

void sage_Ausgelassene(const Ausgabeergebnis& ergebnis) {
  if (ergebnis.ausgelassene.empty()) return;
  QStringList saetze;
  for (const Ausgelassenes& bild : ergebnis.ausgelassene) saetze.append(u"„%1“: %2"_s.arg(bild.name, bild.grund));
  MsgBox(u"Nicht ausgegeben:\r\n"_s + meldungszeilen(saetze), Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
}

}  // namespace

QAction* Hauptfenster::baue_Ausgabe() {
  act_Ausgeben = aktion(u"act_Ausgeben"_s, u"Bilder ausgeben …"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_S,
      [this] { gib_Bilder_aus(Zielwahl::fragende()); });
  connect(ansicht_->cmd_Ausgeben, &QPushButton::clicked, act_Ausgeben, &QAction::trigger);
  return act_Ausgeben;
}

void Hauptfenster::gib_Bilder_aus(const Zielwahl& zielwahl) {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_) return;
  const Vorgang vorgang = *gewaehlt;
  const QScopedValueRollback offen(dialog_offen_, true);
  if (const auto grund = platz_.wurzel_fehlt()) {
    MsgBox(*grund, Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
    return;
  }
  try {
    const auto sammlung = lies_Bildsammlung(platz_, vorgang);
    const QString name = Bilddatei::ersetze_verbotene(vorgang.nummer).trimmed();
    Ausgabefenster fenster({*sammlung, platz_.wurzel(), name, platz_.optionen().merken}, zielwahl, this);
    if (fenster.exec() != QDialog::Accepted) return;
    sage_Ausgelassene(fenster.ergebnis());
    melde(vorgang::infozeile(vorgang) + u": "_s + fenster.ergebnis().text());
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text(), Knoepfe::OK, Symbol::Kritisch, Titel);
  }
}
