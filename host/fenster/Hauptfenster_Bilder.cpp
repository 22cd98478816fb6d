// What the window does with pictures beside the assignment: Exif properties, the search, clearing the picture tree.
#include <QModelIndex>

#include "dialogs/assignment/clsDialoge.h"
#include "host/Aufraeumen.h"
#include "host/Ausgang.h"
#include "host/fenster/Aufraeumfenster.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Vorgangsansicht.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Bildzuordnung"_s;

}  // namespace

void Hauptfenster::zeige_Exif() {
  const Vorschaubild* bild = ansicht_->lst_Bilder->gewaehltes();
  if (!bild || dialog_offen_) return;
  dialog_offen_ = true;
  clsDialoge().Fkt_Aufruf_Dialog_BildInfo(platz_.wurzel() + u'\\' + bild->ordner + u'\\' + bild->datei, {}, true);
  dialog_offen_ = false;
}

void Hauptfenster::suche_Bilder() {
  if (dialog_offen_) return;
  static_cast<void>(platz_.wurzel_fehlt());
  auto funde = std::make_shared<XArrayDBObject>();
  funde->ReDim(0, 0, 0, 10);
  dialog_offen_ = true;
  const bool genommen =
      clsDialoge().Fkt_Aufruf_Dialog_BilderSuchen(platz_.anwendungsobjekt(), platz_.wurzel() + u'\\', funde);
  dialog_offen_ = false;
  if (!genommen) return melde(u"Bilder suchen: nichts gewählt."_s);
  // The last row is empty.
  const std::int32_t anzahl = funde->UpperBound(XArrayDBObject::Dimension::Zeilen);
  QStringList namen;
  for (std::int32_t i = 0; i < anzahl; ++i) namen.append(mit_Leertext(funde->Value(i, 0)));
  melde(anzahl == 0 ? u"Bilder suchen: nichts gewählt."_s
                    : u"Bilder suchen: %1 gewählt – %2"_s.arg(anzahl).arg(namen.join(u", "_s)));
}

void Hauptfenster::raeume_auf() {
  if (dialog_offen_) return;
  if (const auto grund = platz_.wurzel_fehlt()) {
    MsgBox(*grund + u"\r\n\r\nNichts ist gelöscht."_s, Knoepfe::OK, Symbol::Ausrufezeichen, Titel);
    return;
  }
  dialog_offen_ = true;
  try {
    clsBildZuordnungen store;
    if (!platz_.verbindung()) platz_.oeffne();
    store.Init(platz_.verbindungszeichenfolge(), platz_.verbindung(), {});
    Aufraeumen aufraeumen(store, platz_.verbindung(), platz_.wurzel(), platz_.wurzel());
    const Aufraeumliste liste = aufraeumen.liste();
    if (liste.Posten.empty()) {
      MsgBox(u"Es gibt nichts aufzuräumen."_s, Knoepfe::OK, Symbol::Information, Titel);
    } else if (Aufraeumfenster(aufraeumen, liste, this).exec() == QDialog::Accepted) {
      const QStringList geblieben = aufraeumen.fuehre_aus(liste);
      melde(geblieben.isEmpty() ? u"Bilderbaum aufgeräumt: %1 gelöscht."_s.arg(liste.Posten.size())
                                : u"Bilderbaum: NICHT gelöscht sind %1."_s.arg(geblieben.join(u", "_s)));
    } else {
      melde(u"Nichts ist gelöscht."_s);
    }
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text() + u"\r\n\r\nNichts ist gelöscht."_s, Knoepfe::OK, Symbol::Kritisch, Titel);
  } catch (const Laufzeitfehler& fehler) {
    MsgBox(fehler.Beschreibung(), Knoepfe::OK, Symbol::Kritisch, Titel);
  }
  dialog_offen_ = false;
  zeige_gewaehlten();
}
