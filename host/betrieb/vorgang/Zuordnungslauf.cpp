#include "host/betrieb/vorgang/Zuordnungslauf.h"

#include "host/betrieb/vorgang/Bildsammlung.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

Laufergebnis Zuordnungslauf::gehe(const Vorgang& vorgang, bool nur_Anzeige) {
  // Makes the drive known, and says where the pictures really lie.
  if (const auto grund = platz_.wurzel_fehlt()) {
    MsgBox(*grund + u"\r\n\r\nDer Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s,
        Knoepfe::OK, Symbol::Ausrufezeichen, u"Bildzuordnung"_s);
    Laufergebnis ergebnis;
    ergebnis.nur_Anzeige = nur_Anzeige;
    return ergebnis;
  }
  Zuordnungsweg weg(platz_.anwendungsobjekt(), platz_.wurzel(), dialog_);
  weg.aufrecht(aufrecht_);
  return weg.gehe(als_Zuordnungsvorgang(vorgang), nur_Anzeige);
}
