#include "host/Ausgabe.h"
#include "host/Befehle.h"
#include "host/Beispieldaten.h"
#include "host/Namen.h"
#include "host/Schema.h"
#include "host/Sitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Ausgang lege_an(const Aufruf& aufruf) {
  if (!schema::lege_an(verbindungszeichenfolge(aufruf)))
    ausgabe::meldung(u"Die Tabelle Bild_Zuordnungen besteht schon; sie bleibt, wie sie ist."_s);
  return Ausgang::Erledigt;
}

Ausgang mache_beispieldaten(const Aufruf& aufruf) {
  beispieldaten::erzeuge(namen::tabellenpfad(aufruf.argumente().at(0)));
  return Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::anlegen() {
  return {u"anlegen"_s,
          u"legt die Tabelle Bild_Zuordnungen an"_s,
          {},
          u"Legt die Tabelle Bild_Zuordnungen in der eingebetteten Datenbank an, und deren Datei, wenn sie\n"_s
          u"fehlt. Eine Tabelle, die es schon gibt, bleibt, wie sie ist; auch das gilt als erledigt."_s,
          {befehlszeile::verbindung_option()},
          0,
          0,
          lege_an};
}

Befehl befehle::beispieldaten() {
  return {u"beispieldaten"_s,
          u"füllt einen Ordner mit den Beispielen eines Handwerksbetriebs"_s,
          u"ORDNER"_s,
          u"Schreibt in den Ordner, der fehlen oder leer sein muss: „betrieb.db“ (Datenbank mit Vorgängen und\n"_s
          u"Zuordnungen), „bilder“ (Bildablage) und „eingang“ (Bilder, die noch nicht zugeordnet sind)."_s,
          {},
          1,
          1,
          mache_beispieldaten};
}
