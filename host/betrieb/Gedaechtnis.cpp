#include "host/betrieb/Gedaechtnis.h"

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Einstellungsdatei.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/vorgaben/Betriebsvorgaben.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Verbindung = u"Verbindung"_s;
const QString Bilder = u"Bilder"_s;

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Verbindung"_s) {}
};

bool meinen_dasselbe(const QString& verbindung, const QString& gemerkte) {
  return !gemerkte.isEmpty() && !verbindung.isEmpty() &&
      anmeldung::zum_Merken(verbindung) == anmeldung::zum_Merken(gemerkte);
}

void pruefe_Gesperrtes(const Wirtsoptionen& optionen, const Betriebsvorgaben& betrieb) {
  if (!optionen.verbindung.isEmpty() && !meinen_dasselbe(optionen.verbindung, betrieb.verbindung))
    betrieb.pruefe_frei(Betriebsvorgaben::Verbindung, u"--verbindung"_s);
  if (optionen.datenordner_genannt) betrieb.pruefe_frei(Betriebsvorgaben::Verbindung, u"--datenordner"_s);
  if (optionen.eingebettet) betrieb.pruefe_frei(Betriebsvorgaben::Verbindung, u"--eingebettet"_s);
  if (!optionen.bilder.isEmpty()) betrieb.pruefe_frei(Betriebsvorgaben::Bilder, u"--bilder"_s);
}

/// The picture root belongs to its database.
void nimm_vom_Betrieb(const Betriebsvorgaben& betrieb, Wirtsoptionen& optionen) {
  if (optionen.verbindung.isEmpty()) optionen.verbindung = anmeldung::mit_Kennwort_der_Umgebung(betrieb.verbindung);
  const bool seine = meinen_dasselbe(optionen.verbindung, betrieb.verbindung);
  if (optionen.bilder.isEmpty() && (seine || betrieb.sperrt(Betriebsvorgaben::Bilder)))
    optionen.bilder = betrieb.bilder;
}

}  // namespace

Wirtsoptionen gedaechtnis::ergaenzt(Wirtsoptionen optionen) {
  if (!optionen.merken) return optionen;
  const Betriebsvorgaben betrieb = Betriebsvorgaben::lies();
  betrieb.richte_Laufwerke_ein();
  pruefe_Gesperrtes(optionen, betrieb);
  Datei datei;
  if (optionen.eingebettet) {
    datei.clear();
    return optionen;
  }
  const bool offen = optionen.verbindung.isEmpty() && !optionen.datenordner_genannt;
  const QString gemerkte =
      betrieb.sperrt(Betriebsvorgaben::Verbindung) ? betrieb.verbindung : datei.value(Verbindung).toString();
  if (offen) optionen.verbindung = anmeldung::mit_Kennwort_der_Umgebung(gemerkte);
  if (!betrieb.sperrt(Betriebsvorgaben::Bilder) && optionen.bilder.isEmpty() &&
      meinen_dasselbe(optionen.verbindung, datei.value(Verbindung).toString()))
    optionen.bilder = datei.value(Bilder).toString();
  if (offen) nimm_vom_Betrieb(betrieb, optionen);
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
