#include "imaging/Dateiaufrichtung.h"

#include "imaging/Drehspur.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/files/Ersatzdatei.h"
#include "platform/gdiplus/bild/Dauerspeicher.h"

aufrichtung::Ergebnis aufrichtung::richte_Datei_auf(const QString& datei, const QString& quelle) {
  Ergebnis ergebnis;
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& f) {
    ergebnis = {Befund::Gescheitert, {}, f.Beschreibung()};
      },
      [&] {
    ergebnis = richte_auf(dateien::lies_alles(datei), drehspur::hat(datei) ? datei : quelle);
    if (ergebnis.bytes.isEmpty()) return;
    Ersatzdatei neu(datei);
    neu.schreibe(ergebnis.bytes, Ersatzdatei::Zeit::Behalten);
    neu.tausche(true);
    dauerspeicher::vergiss(datei);
    ergebnis.bytes.clear();
  });
  return ergebnis;
}
