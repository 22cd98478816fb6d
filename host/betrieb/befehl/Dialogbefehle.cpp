#include "host/betrieb/befehl/Dialogbefehle.h"

#include "host/betrieb/befehl/Dialogauftrag.h"

using namespace Qt::Literals::StringLiterals;

const Befehlsprogramm& dialogbefehle::programm() {
  static const Befehlsprogramm Selbst{u"bildzuordnung dialog"_s,
      u"bildzuordnung dialog öffnet einen der Dialoge für sich, ohne das Hauptfenster, und sagt danach, was\n"
      "geschehen ist: für Programme, die die Komponente nicht selbst einbinden.\n"_s,
      u"Eine Zeile mit dem Ergebnis steht auf der Standardausgabe, Meldungen auf der Fehlerausgabe.\n"
      "Ohne --verbindung gilt KVOBILD_VERBINDUNG, dann die Datenbank, die „bildzuordnung“ zuletzt geöffnet\n"
      "hat, dann die im Datenordner. Nennt die Verbindung einen Benutzer ohne Kennwort, gilt\n"
      "--kennwort-von-stdin, dann KVOBILD_KENNWORT, dann fragt ein Fenster. Ein Kennwort im Aufruf sehen\n"
      "andere auf diesem Rechner."_s};
  return Selbst;
}

Befehl dialogbefehle::zuordnung() {
  const QList<Option> eigene{{u"nur-anzeigen"_s, {}, u"nichts lässt sich ändern"_s},
      {u"nur-anhang"_s, {}, u"jedes gezeigte Bild wird als Anhang gekennzeichnet"_s}};
  return {u"zuordnung"_s, u"Bilder eines Vorgangs zeigen und bearbeiten"_s, {},
      uR"(Zeigt die Bilder eines Vorgangs; was der Benutzer speichert, wird geschrieben und nachgeprüft. Die
Zeile JSON nennt: geoeffnet, nur_anzeige, gespeichert, vollstaendig, geprueft; die Zahlen neu,
geaendert, entfernt, nachgefuehrt, nicht_geschrieben, ungewiss; text; und bilder, jedes mit name,
verbleib (neu, geaendert, entfernt, nachgefuehrt, unveraendert, nicht_geschrieben, nicht_kopiert,
nicht_gespeichert, ungewiss) und hinweis.)"_s,
      dialogauftrag::vorgang_Optionen() + eigene + dialogauftrag::datenbank_Optionen() +
          dialogauftrag::fenster_Optionen(),
      0, 0, {}};
}

Befehl dialogbefehle::suche() {
  return {u"suche"_s, u"Bilddateien auf diesem Rechner suchen"_s, {},
      u"Lässt den Benutzer Bilddateien wählen; zugeordnet wird nichts. Die Zeile JSON nennt unter gewaehlt ihre\n"
      "Pfade."_s,
      QList<Option>{{u"ordner"_s, u"ORDNER"_s, u"wo die Suche beginnt; sonst in der Bildablage"_s},
          {u"eines"_s, {}, u"höchstens ein Bild"_s}, {u"titel"_s, u"TEXT"_s, u"steht im Titel des Fensters"_s}} +
          dialogauftrag::datenbank_Optionen() + dialogauftrag::fenster_Optionen(),
      0, 0, {}};
}

Befehl dialogbefehle::alle_Zuordnungen() {
  return {u"alle-zuordnungen"_s, u"alle Zuordnungen eines Bildes"_s, u"BILD"_s,
      uR"(Zeigt, wozu ein Bild des Vorgangs gehört, und löscht, was der Benutzer davon nicht mehr will. BILD ist
sein Name mit Endung, wenn nötig mit dem Ordner unter der Bildablage davor. eigene_entfernen sagt, ob
der Benutzer die Zuordnung zu diesem Vorgang entfernt haben wollte, eigene_entfernt, ob sie es ist.)"_s,
      dialogauftrag::vorgang_Optionen() + dialogauftrag::datenbank_Optionen() + dialogauftrag::fenster_Optionen(), 1, 1,
      {}};
}

Befehl dialogbefehle::weitere() {
  return {u"weitere"_s, u"Bilder eines Vorgangs auch Artikeln zuordnen"_s, {},
      u"Lässt den Benutzer Bilder des Vorgangs auch Artikeln zuordnen. Kopiert und geschrieben wird im Dialog\n"
      "selbst; danach ist nichts mehr zu tun."_s,
      dialogauftrag::vorgang_Optionen() + dialogauftrag::datenbank_Optionen() + dialogauftrag::fenster_Optionen(), 0, 0,
      {}};
}

Befehl dialogbefehle::eigenschaften() {
  return {u"eigenschaften"_s, u"Exif-Eigenschaften einer Bilddatei"_s, u"BILD"_s,
      u"Zeigt die Exif-Eigenschaften einer Bilddatei. BILD ist ihr Pfad auf diesem Rechner; die Datenbank ist\n"
      "dazu nicht nötig."_s,
      QList<Option>{{u"titel"_s, u"TEXT"_s, u"steht im Titel des Fensters"_s}} + dialogauftrag::fenster_Optionen(), 1,
      1, {}};
}

QList<Befehl> dialogbefehle::alle() {
  return {zuordnung(), suche(), alle_Zuordnungen(), weitere(), eigenschaften()};
}
