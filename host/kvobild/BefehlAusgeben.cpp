#include <QJsonArray>

#include "host/bericht/ausgabe/Bilderausgabe.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void zeige_Json(const Ausgabeergebnis& ergebnis) {
  QJsonArray fehlende;
  for (const Ausgelassenes& bild : ergebnis.ausgelassene)
    fehlende.append(QJsonObject{{u"name"_s, bild.name}, {u"grund"_s, bild.grund}});
  ausgabe::json({{u"ziel"_s, ergebnis.ziel}, {u"bilder"_s, ergebnis.bilder}, {u"fehlend"_s, fehlende}});
}

Ausgang gib_aus(const Aufruf& aufruf) {
  const Datensatz satz = datensatzangaben::genau(aufruf);
  const QString ziel = namen::tabellenpfad(aufruf.noetig(u"ziel"_s));
  const QString wurzel = bildwurzel(aufruf);
  Befehlssitzung sitzung(aufruf);
  if (!sitzung.lies(satz)) {
    ausgabe::meldung(u"Keine Zuordnung gefunden."_s);
    return Ausgang::Teilweise;
  }
  const Ausgabewahl wahl{
      aufruf.gesetzt(u"mit-texten"_s), aufruf.gesetzt(u"nur-gekennzeichnete"_s), aufruf.gesetzt(u"mit-ort"_s)};
  ausgabe::Fortschritt balken(u"Bilder"_s);
  const Ausgabeergebnis ergebnis = Bilderausgabe(sitzung.store(), wurzel, wahl).gib_aus(ziel, [&](int getan, int von) {
    return balken.zeige(static_cast<std::size_t>(getan), static_cast<std::size_t>(von));
  });
  for (const Ausgelassenes& bild : ergebnis.ausgelassene)
    ausgabe::meldung(u"„%1“ ist nicht ausgegeben: %2"_s.arg(bild.name, bild.grund));
  if (aufruf.gesetzt(u"json"_s))
    zeige_Json(ergebnis);
  else
    ausgabe::zeile(ergebnis.text());
  return ergebnis.vollstaendig() ? Ausgang::Erledigt : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::ausgeben() {
  return {u"ausgeben"_s, u"gibt die Bilder eines Vorgangs als Dateien aus"_s, {},
      uR"(Schreibt die Bilder des Vorgangs, wie sie sind, in ihrer Reihenfolge als „01_Name.jpg“, „02_…“ in
einen Ordner, der angelegt wird, wenn er fehlt, oder in eine ZIP-Datei. Ersetzt wird nichts: Gibt es
einen der Namen schon, wird gar nichts geschrieben. Ein Bild, das fehlt oder nicht zu lesen ist, wird
genannt, die anderen werden ausgegeben. Ortsangaben (GPS) bleiben weg.
Mit --json steht ein Objekt da: „ziel“, „bilder“ (wie viele ausgegeben sind) und „fehlend“, je Bild
mit „name“ und „grund“.)"_s,
      befehlszeile::datensatz_Optionen() +
          QList<Option>{{u"ziel"_s, u"ORDNER|DATEI.zip"_s, u"wohin; endet es auf „.zip“, in eine ZIP-Datei"_s},
              {u"mit-texten"_s, {}, u"legt Drucktext und Information je Bild als „01_Name.txt“ bei"_s},
              {u"nur-gekennzeichnete"_s, {}, u"nur die Bilder, die gedruckt werden"_s},
              {u"mit-ort"_s, {}, u"lässt die Ortsangaben (GPS) in den Bildern"_s}, befehlszeile::verbindung_Option(),
              befehlszeile::bilder_Option(), befehlszeile::json_Option()},
      0, 0, gib_aus};
}
