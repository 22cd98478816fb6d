#include "host/betrieb/Gedaechtnis.h"

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Einstellungsdatei.h"
#include "host/betrieb/Namen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Verbindung = u"Verbindung"_s;
const QString Bilder = u"Bilder"_s;

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Verbindung"_s) {}
};

}  // namespace

Wirtsoptionen gedaechtnis::ergaenzt(Wirtsoptionen optionen) {
  if (!optionen.merken) return optionen;
  Datei datei;
  if (optionen.eingebettet) {
    datei.clear();
    return optionen;
  }
  const QString gemerkte = datei.value(Verbindung).toString();
  const bool offen = optionen.verbindung.isEmpty() && !optionen.datenordner_genannt;
  if (offen) optionen.verbindung = anmeldung::mit_Kennwort_der_Umgebung(gemerkte);
  const bool dieselbe = !gemerkte.isEmpty() && !optionen.verbindung.isEmpty() &&
      anmeldung::zum_Merken(optionen.verbindung) == anmeldung::zum_Merken(gemerkte);
  if (dieselbe && optionen.bilder.isEmpty()) optionen.bilder = datei.value(Bilder).toString();
  return optionen;
}

void gedaechtnis::merke(const Wirtsoptionen& optionen) {
  if (!optionen.merken || optionen.verbindung.isEmpty()) return;
  const QString verbindung = anmeldung::zum_Merken(optionen.verbindung);
  if (verbindung.isEmpty()) return;
  Datei datei;
  datei.setValue(Verbindung, verbindung);
  datei.setValue(Bilder, optionen.bilder.isEmpty() ? QString() : namen::ganzer_Pfad(optionen.bilder));
}
