#include <QDateTime>

#include "host/betrieb/Namen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/protokoll/Protokollleser.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A day begins at midnight; a time without an offset is the one of this place.
std::optional<QDateTime> seit(const Aufruf& aufruf) {
  const std::optional<QString> angabe = aufruf.wert(u"seit"_s);
  if (!angabe) return std::nullopt;
  for (const QString& form : {u"yyyy-MM-dd"_s, u"d.M.yyyy"_s})
    if (const QDate tag = QDate::fromString(*angabe, form); tag.isValid()) return tag.startOfDay();
  const QDateTime zeit = QDateTime::fromString(*angabe, Qt::ISODate);
  if (zeit.isValid()) return zeit;
  throw Abbruch(Ausgang::Aufruf, u"„--seit“ ist ein Tag wie „2024-05-31“ oder „31.5.2024“, nicht „%1“."_s.arg(*angabe));
}

Ausgang zeige(const Aufruf& aufruf) {
  const protokollleser::Auswahl auswahl{seit(aufruf), aufruf.wert(u"bild"_s).value_or(QString())};
  const std::optional<QString> genannt = aufruf.wert(u"datenordner"_s);
  const QString ordner = genannt ? namen::tabellenpfad(*genannt) : protokollordner(aufruf);
  const protokollleser::Inhalt inhalt = protokollleser::lies(ordner, auswahl);
  for (const QJsonObject& zeile : inhalt.zeilen) {
    if (aufruf.gesetzt(u"json"_s))
      ausgabe::json(zeile);
    else
      ausgabe::zeile(protokollleser::worte(zeile));
  }
  if (inhalt.beschaedigte > 0)
    ausgabe::meldung(u"Beschädigte Zeilen des Protokolls, die übergangen sind: %1."_s.arg(inhalt.beschaedigte));
  if (!inhalt.zeilen.isEmpty()) return Ausgang::Erledigt;
  ausgabe::meldung(u"Im Protokoll von „%1“ steht dazu nichts."_s.arg(namen::angezeigt(ordner)));
  return Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::protokoll() {
  return {u"protokoll"_s, u"zeigt, was mit den Bildern geschah"_s, {},
      uR"(Zeigt das Protokoll, die älteste Zeile zuerst: wann wer an welchem Platz ein Bild zugeordnet,
entfernt, umbenannt, gedreht, aufgeräumt, zurückgeholt oder endgültig gelöscht hat, und was daraus
wurde. Es liegt als „protokoll.jsonl“ neben der SQLite-Datei oder, bei einem Server, im Datenordner
von „bildzuordnung“, und bleibt, auch wenn der Vorgang nicht mehr da ist. Mit --json steht je Zeile
ein Objekt mit „zeit“, „benutzer“, „platz“, „tat“ (zuordnen, entfernen, umbenennen, drehen,
aufraeumen, zurueckholen, endgueltig_loeschen), „bild“, „ergebnis“ (erledigt, gescheitert) und, wo
es das gibt, „vorgang“, „neu“ und „lauf“.)"_s,
      {{u"seit"_s, u"DATUM"_s, u"nur, was seit diesem Tag geschah, etwa 2024-05-31"_s},
          {u"bild"_s, u"NAME"_s, u"nur dieses Bild: NAME.ENDUNG, auch mit dem Ordner davor"_s},
          {u"datenordner"_s, u"ORDNER"_s, u"das Protokoll in diesem Ordner"_s}, befehlszeile::verbindung_Option(),
          befehlszeile::json_Option()},
      0, 0, zeige};
}
