#include <QHash>

#include "host/betrieb/Namen.h"
#include "host/betrieb/aufnahme/Bildstatus.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "imaging/Bilddrehung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

gdiplus::Drehart drehart(const Aufruf& aufruf) {
  using namespace gdiplus;
  static const QHash<QString, Drehart> Arten{{u"90"_s, Um90}, {u"180"_s, Um180}, {u"270"_s, Um270},
      {u"waagerecht"_s, Waagerecht}, {u"senkrecht"_s, Senkrecht}};
  const QString um = aufruf.noetig(u"um"_s);
  const auto art = Arten.constFind(um);
  if (art != Arten.constEnd()) return *art;
  throw Abbruch(
      Ausgang::Aufruf, u"„--um“ ist „90“, „180“, „270“, „waagerecht“ oder „senkrecht“, nicht „%1“."_s.arg(um));
}

/// Only where a database says which journal: the command itself needs none.
void protokolliere(const QString& ziel, bool gelungen) {
  const QString verbindung = qEnvironmentVariable("KVOBILD_VERBINDUNG");
  if (verbindung.isEmpty()) return;
  const Protokoll protokoll(Protokoll::ordner(verbindung_aus_Angabe(verbindung), eigener_Datenordner()), {});
  Protokoll::schreibe({Protokolleintrag::Tat::Drehen, gelungen, namen::angezeigt(ziel)});
}

Ausgang drehe(const Aufruf& aufruf) {
  const gdiplus::Drehart art = drehart(aufruf);
  const QString quelle = namen::tabellenpfad(aufruf.argumente().at(0));
  const QString ziel = zieldatei(aufruf.argumente().at(1));
  const std::int32_t status = bilddrehung::drehe(quelle, ziel, art);
  protokolliere(ziel, status == 0);
  if (status != 0)
    throw Abbruch(Ausgang::Datei,
        u"„%1“ ist nicht nach „%2“ zu drehen: %3 (Status %4)"_s.arg(
            aufruf.argumente().at(0), aufruf.argumente().at(1), bildstatus::worte(status), QString::number(status)));
  return Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::drehen() {
  return {u"drehen"_s, u"dreht oder spiegelt ein Bild in eine zweite Datei"_s, u"QUELLE ZIEL"_s,
      uR"(Dreht das Bild im Uhrzeigersinn oder spiegelt es und schreibt es als JPEG; QUELLE bleibt, wie sie ist.
Ein JPEG, dessen Größe es zulässt, verliert dabei nichts; sonst werden die Bildpunkte mit den eigenen
Tabellen des Bildes neu kodiert. Exif und alle anderen Angaben bleiben, wie sie sind. ZIEL wird ersetzt,
aber erst, wenn das Ergebnis vollständig auf dem Datenträger ist.)"_s,
      {{u"um"_s, u"ART"_s,
          u"90, 180 oder 270 Grad; waagerecht (links und rechts) oder\nsenkrecht (oben und unten) spiegeln"_s}},
      2, 2, drehe};
}
