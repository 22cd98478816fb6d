#include "host/kvobild/Befehle.h"

#include "host/betrieb/befehl/Ausgabe.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/gdiplus/miniatur/Miniaturen.h"

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

Ausgang befehle::laufe(const QStringList& argumente) {
  // What a command writes comes from the files themselves, and a script leaves nothing in its user's cache.
  miniaturen::an(false);
  try {
    const Ausgang ausgang = befehlszeile::fuehre_aus(programm(), alle(), argumente);
    if (ausgabe::abgeschlossen()) return ausgang;
    throw Abbruch(Ausgang::Datei, u"Die Ausgabe ist nicht vollständig zu schreiben."_s);
  } catch (const Abbruch& abbruch) {
    ausgabe::meldung(abbruch.text());
    return abbruch.ausgang();
  } catch (const Laufzeitfehler& fehler) {
    ausgabe::meldung(u"%1 (Fehler %2)"_s.arg(fehler.Beschreibung(), QString::number(fehler.Nummer())));
    return ausgang_von(fehler);
  } catch (const std::bad_alloc&) {
    ausgabe::meldung(u"Der Speicher reicht nicht."_s);
    return Ausgang::Datei;
  }
}
