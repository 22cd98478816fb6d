#include <QJsonArray>

#include "host/bericht/Berichtsdatei.h"
#include "host/bericht/Berichtsinhalt.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

int je_Seite(const Aufruf& aufruf) {
  const QString angabe = aufruf.wert(u"je-seite"_s).value_or(u"2"_s);
  for (const int anzahl : Berichtswahl::Moegliche_je_Seite)
    if (angabe == QString::number(anzahl)) return anzahl;
  throw Abbruch(Ausgang::Aufruf, u"„--je-seite“ ist 1, 2, 4 oder 6, nicht „%1“."_s.arg(angabe));
}

Dichte dichte(const Aufruf& aufruf) {
  const QString angabe = aufruf.wert(u"dpi"_s).value_or(u"300"_s);
  if (angabe == u"300") return Dichte::Druck;
  if (angabe == u"150") return Dichte::Mail;
  if (angabe == u"original") return Dichte::Original;
  throw Abbruch(Ausgang::Aufruf, u"„--dpi“ ist 150, 300 oder „original“, nicht „%1“."_s.arg(angabe));
}

Berichtswahl wahl_von(const Aufruf& aufruf) {
  return {je_Seite(aufruf), dichte(aufruf), aufruf.gesetzt(u"alle"_s), aufruf.gesetzt(u"mit-info"_s),
      aufruf.gesetzt(u"mit-dateiname"_s), aufruf.gesetzt(u"mit-datum"_s), aufruf.gesetzt(u"mit-ort"_s)};
}

/// The record with the words that the firm's view has for it. Where there is none, or it can't be asked, the report is
/// headed by the number alone.
QString vorgangszeile(adodb::Connection& verbindung, const Datensatz& satz) {
  Vorgang vorgang = vorgang::aus_Schluesseln(satz.typ1, satz.key1, satz.key2, satz.key3);
  static_cast<void>(versuche([&] {
    vorgangsquelle::Frage frage;
    frage.nur_bestimmte = true;
    frage.bestimmte = {vorgang.satz};
    const QList<Vorgang> gefunden = vorgangsquelle::lies(verbindung, vorgangsquelle::herkunft(verbindung), frage);
    if (!gefunden.isEmpty()) vorgang = gefunden.first();
  }));
  return vorgang::infozeile(vorgang);
}

void zeige(const berichtsdatei::Ergebnis& ergebnis, const QString& ziel, bool als_Json) {
  for (const QString& fehlendes : ergebnis.fehlende) ausgabe::meldung(fehlendes);
  if (als_Json)
    return ausgabe::json({{u"ziel"_s, ziel}, {u"seiten"_s, ergebnis.seiten}, {u"bilder"_s, ergebnis.bilder},
        {u"fehlend"_s, QJsonArray::fromStringList(ergebnis.fehlende)}});
  ausgabe::zeile(u"%1: Seiten: %2, Bilder: %3, fehlend: %4"_s.arg(ziel, QString::number(ergebnis.seiten),
      QString::number(ergebnis.bilder), QString::number(ergebnis.fehlende.size())));
}

Ausgang berichte(const Aufruf& aufruf) {
  const Datensatz satz = datensatzangaben::genau(aufruf);
  const Berichtswahl wahl = wahl_von(aufruf);
  const QString ziel = namen::ganzer_Pfad(aufruf.noetig(u"ziel"_s));
  const auto kopfdatei = aufruf.wert(u"kopf"_s);
  const Berichtskopf kopf =
      kopfdatei ? Berichtskopf::aus_Datei(namen::ganzer_Pfad(*kopfdatei)) : Berichtskopf::gemerkter();
  const QString wurzel = bildwurzel(aufruf);
  Befehlssitzung sitzung(aufruf);
  if (!sitzung.lies(satz)) {
    ausgabe::meldung(u"Keine Zuordnung gefunden."_s);
    return Ausgang::Teilweise;
  }
  Bericht bericht = berichtsinhalt::lies(sitzung.store(), wurzel, vorgangszeile(*sitzung.verbindung(), satz), wahl);
  if (bericht.bilder.empty()) {
    ausgabe::meldung(bericht.ohne_Bilder);
    return Ausgang::Teilweise;
  }
  bericht.kopf = kopf;
  ausgabe::Fortschritt balken(u"Bericht"_s);
  const berichtsdatei::Ergebnis ergebnis = berichtsdatei::schreibe(
      ziel, bericht, wahl, [&](std::size_t getan, std::size_t von) { return balken.zeige(getan, von); });
  zeige(ergebnis, ziel, aufruf.gesetzt(u"json"_s));
  return ergebnis.fehlende.isEmpty() ? Ausgang::Erledigt : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::bericht() {
  return {u"bericht"_s, u"macht aus den Bildern eines Vorgangs ein PDF"_s, {},
      uR"(Schreibt die Bilder des Vorgangs, die zum Drucken gekennzeichnet sind, mit ihrem Drucktext in ihrer
Reihenfolge als PDF. „Gesamte Seite“, „Neue Seite“ und „Als Anhang“ gelten. Ein Bild, das fehlt oder nicht
zu lesen ist, behält seinen Platz mit einem Rahmen; der Befehl nennt es und endet mit 1. Ein Bericht dieses
Namens wird ersetzt, sobald der neue ganz geschrieben ist. Was die Originale über Ort und Kamera wissen,
bleibt ohne „--mit-ort“ weg.)"_s,
      befehlszeile::datensatz_Optionen() +
          QList<Option>{befehlszeile::verbindung_Option(), befehlszeile::bilder_Option(),
              {u"ziel"_s, u"DATEI.pdf"_s, u"der Bericht"_s},
              {u"je-seite"_s, u"ZAHL"_s, u"Bilder auf einer Seite: 1, 2, 4 oder 6; ohne Angabe 2"_s,
                  {u"1"_s, u"2"_s, u"4"_s, u"6"_s}},
              {u"dpi"_s, u"DICHTE"_s, u"Bildpunkte je Zoll: 150, 300 oder original; ohne Angabe 300"_s,
                  {u"150"_s, u"300"_s, u"original"_s}},
              {u"alle"_s, {}, u"alle Bilder statt der gekennzeichneten"_s}, {u"mit-info"_s, {}, u"mit der Bild-Info"_s},
              {u"mit-dateiname"_s, {}, u"mit dem Dateinamen"_s}, {u"mit-datum"_s, {}, u"mit dem Tag der Aufnahme"_s},
              {u"mit-ort"_s, {}, u"bei „--dpi original“ mit allem, was die Dateien sagen, auch dem Ort"_s},
              {u"kopf"_s, u"DATEI"_s,
                  u"INI-Datei mit Zeile1, Zeile2, Zeile3 und Zeichen; sonst gilt der Briefkopf des Programms"_s},
              befehlszeile::json_Option()},
      0, 0, berichte};
}
