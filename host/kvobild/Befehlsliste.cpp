#include "host/kvobild/Befehle.h"

using namespace Qt::Literals::StringLiterals;

const Befehlsprogramm& befehle::programm() {
  static const Befehlsprogramm Kvobild{u"kvobild"_s, u"kvobild ordnet Bilddateien den Vorgängen eines Betriebs zu.\n"_s,
      u"Ergebnisse stehen auf der Standardausgabe, Meldungen auf der Fehlerausgabe.\n"
      "Fehlt --verbindung oder --bilder, gilt KVOBILD_VERBINDUNG oder KVOBILD_BILDER aus der Umgebung;\n"
      "nennt die Verbindung einen Benutzer ohne Kennwort, gilt KVOBILD_KENNWORT."_s};
  return Kvobild;
}

QList<Befehl> befehle::alle() {
  return {anlegen(), zuordnen(), lesen(), aendern(), umbenennen(), entfernen(), aufraeumen(), ausgeben(), exif(),
      drehen(), thumbnail(), bericht(), beispieldaten(), datenbank_anlegen(), datenbank_pruefen(), vorgaenge_einlesen(),
      vorgaenge_liste(), protokoll()};
}
