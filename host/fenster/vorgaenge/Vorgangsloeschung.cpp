#include "host/fenster/vorgaenge/Vorgangsloeschung.h"

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/vorgaenge/Vorgangstabelle.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Titel = u"Vorgang löschen"_s;

}  // namespace

Loeschergebnis loesche_Vorgang(adodb::Connection& verbindung, const Vorgang& vorgang) {
  const Vorgangsschluessel schluessel = vorgangstabelle::schluessel_von(vorgang);
  int bilder = 0;
  const auto ausfall = versuche_Datenbank([&] { bilder = vorgangstabelle::anzahl_Bilder(verbindung, schluessel); });
  if (ausfall) {
    MsgBox(ausfall->worte, Knoepfe::OK, Symbol::Kritisch, Titel);
    return Loeschergebnis::Behalten;
  }
  if (bilder > 0) {
    const Antwort antwort = MsgBox(u"%1 hat %2 und wird nicht gelöscht.\r\n\r\nBilder anzeigen?"_s.arg(
                                       vorgangstabelle::genannt(schluessel), vorgang::anzahl_Bilder(bilder)),
        Knoepfe::JaNein, Symbol::Frage, Titel);
    return antwort == Antwort::Ja ? Loeschergebnis::Bilder_zeigen : Loeschergebnis::Behalten;
  }
  if (MsgBox(u"Soll dieser Vorgang gelöscht werden?\r\n\r\n%1"_s.arg(vorgang::infozeile(vorgang)), Knoepfe::JaNein,
          Symbol::Frage, Titel) != Antwort::Ja)
    return Loeschergebnis::Behalten;
  try {
    vorgangstabelle::loesche(verbindung, schluessel);
    return Loeschergebnis::Geloescht;
  } catch (const Abbruch& abbruch) {
    MsgBox(abbruch.text(), Knoepfe::OK, Symbol::Kritisch, Titel);
    return Loeschergebnis::Behalten;
  }
}
