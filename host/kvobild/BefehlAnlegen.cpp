#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/beispiel/Beispieldaten.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Ausgang lege_an(const Aufruf& aufruf) {
  const bool mit_Beispiel = aufruf.gesetzt(u"beispieltabellen"_s);
  const schema::Angelegt angelegt = schema::lege_an(verbindungszeichenfolge(aufruf), mit_Beispiel);
  for (const QString& name : angelegt.tabellen) ausgabe::zeile(u"Tabelle angelegt: "_s + name);
  for (const QString& name : angelegt.spalten) ausgabe::zeile(u"Spalte ergänzt: "_s + name);
  for (const QString& name : angelegt.indexe) ausgabe::zeile(u"Index angelegt: "_s + name);
  if (angelegt.nichts())
    ausgabe::meldung(mit_Beispiel
            ? u"Die Tabellen Bild_Zuordnungen und BelegKopfZunft bestehen schon; sie bleiben, wie sie sind."_s
            : u"Die Tabelle Bild_Zuordnungen besteht schon; sie bleibt, wie sie ist."_s);
  return Ausgang::Erledigt;
}

const QString Erklaerung =
    uR"(Legt die Tabelle Bild_Zuordnungen mit ihren Indizes an, auf SQLite oder auf dem Server, und eine
SQLite-Datei, wenn sie fehlt. Eine Tabelle, die es schon gibt, behält ihre Zeilen und Spalten; Spalten und
Indizes, die ihr fehlen, bekommt sie. In einer leeren Datenbank entsteht auch Bild_Vorgaenge für die Vorgänge
des Betriebs, auf SQLite mit eigenen Tabellen dahinter, auf dem Server als Tabelle; wo es schon Zuordnungen
gibt oder ein Name vergeben ist, nicht. Ein zweiter Lauf tut nichts; auch das gilt als erledigt.)"_s;

Option beispiel_Option() {
  return {u"beispieltabellen"_s, {}, u"legt auch BelegKopfZunft an, die sonst der Betrieb hat"_s};
}

Ausgang mache_Beispieldaten(const Aufruf& aufruf) {
  beispieldaten::erzeuge(namen::tabellenpfad(aufruf.argumente().at(0)));
  return Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::anlegen() {
  return {u"anlegen"_s, u"legt die Tabelle Bild_Zuordnungen an"_s, {},
      u"Kurz für „datenbank anlegen“:\n"_s + Erklaerung, {befehlszeile::verbindung_Option(), beispiel_Option()}, 0, 0,
      lege_an};
}

Befehl befehle::datenbank_anlegen() {
  Befehl befehl = anlegen();
  befehl.name = u"datenbank anlegen"_s;
  befehl.erklaerung = Erklaerung;
  return befehl;
}

Befehl befehle::beispieldaten() {
  return {u"beispieldaten"_s, u"füllt einen Ordner mit den Beispielen eines Handwerksbetriebs"_s, u"ORDNER"_s,
      u"Schreibt in den Ordner, der fehlen oder leer sein muss: „betrieb.db“ (Datenbank mit Vorgängen und\n"_s
      u"Zuordnungen), „bilder“ (Bildablage) und „eingang“ (Bilder, die noch nicht zugeordnet sind)."_s,
      {}, 1, 1, mache_Beispieldaten};
}
