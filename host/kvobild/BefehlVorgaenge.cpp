#include <QFile>
#include <cstdio>

#include "host/betrieb/Schema.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/vorgaenge/Vorgangsausgabe.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung.h"
#include "host/betrieb/vorgaenge/Vorgangspruefung.h"
#include "host/betrieb/vorgaenge/Vorgangstabelle.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Wrong lines that are told to a person; a script gets them all.
constexpr int Genannte_Zeilen = 100;
constexpr int Zeilen_auf_einmal = 1'000;

std::shared_ptr<adodb::Connection> oeffne_eigene(const Aufruf& aufruf) {
  auto verbindung = oeffne_vorhandene(verbindungszeichenfolge(aufruf));
  const auto ausfall = versuche_Datenbank([&] {
    if (!schema::hat_eigene_Vorgaenge(*verbindung))
      throw Abbruch(Ausgang::Datenbank,
          u"Diese Datenbank hat keine eigenen Vorgänge; eingelesen wird nur in die eingebettete Datenbank eines "
          "Datenordners."_s);
  });
  if (ausfall) throw Abbruch(Ausgang::Datenbank, ausfall->worte);
  return verbindung;
}

/// What the call says of the columns, over what the list says itself.
Spaltenwahl spalten_von(const Aufruf& aufruf, Listenleser& liste) {
  Spaltenwahl wahl = spaltenwahl::vorschlag(liste);
  if (const auto kopf = aufruf.ja_nein(u"kopfzeile"_s); kopf && liste.feste_Namen().isEmpty()) {
    if (!*kopf) wahl = spaltenwahl::nach_Platz();
    wahl.kopfzeile = *kopf;
  }
  if (const auto namen = aufruf.wert(u"spalten"_s)) {
    wahl.spalten.clear();
    for (const QString& name : namen->split(u',')) {
      const auto spalte = vorgangsspalten::nach_Namen(name);
      if (!spalte && !name.trimmed().isEmpty())
        throw Abbruch(Ausgang::Aufruf, u"Die Spalte „%1“ gibt es bei Vorgängen nicht."_s.arg(name.trimmed()));
      wahl.spalten.append(spalte);
    }
  }
  wahl.typ1 = aufruf.wert(u"typ1"_s).value_or(QString());
  if (!wahl.typ1.isEmpty())
    if (const QString grund = vorgangspruefung::pruefe_Typ(wahl.typ1); !grund.isEmpty())
      throw Abbruch(Ausgang::Aufruf, grund + u'.');
  if (const QString grund = spaltenwahl::pruefe(wahl); !grund.isEmpty())
    throw Abbruch(Ausgang::Aufruf, grund + u"; „--spalten“ nennt die Spalten, „--typ1“ die Art."_s);
  return wahl;
}

void nenne_falsche(Vorgangseinlesung& einlesung, qint64 anzahl, bool als_Json) {
  qint64 genannt = 0;
  for (qint64 hinter = 0; genannt < anzahl && (als_Json || genannt < Genannte_Zeilen);) {
    const auto zeilen = einlesung.zeilen(Zeilenart::Falsch, hinter, als_Json ? Zeilen_auf_einmal : Genannte_Zeilen);
    if (zeilen.isEmpty()) return;
    for (const Zeilenbefund& zeile : zeilen) {
      if (als_Json)
        ausgabe::json({{u"art"_s, u"falsch"_s}, {u"zeile"_s, zeile.zeile}, {u"grund"_s, zeile.grund}});
      else
        ausgabe::meldung(u"Zeile %1: %2"_s.arg(QString::number(zeile.zeile), zeile.grund));
      hinter = zeile.folge;
      ++genannt;
    }
  }
  if (genannt < anzahl) ausgabe::meldung(u"… und %1 weitere falsche Zeilen"_s.arg(anzahl - genannt));
}

void zeige(const Einlesebefund& befund, bool geschrieben, bool als_Json) {
  if (als_Json)
    return ausgabe::json({{u"art"_s, u"ergebnis"_s}, {u"neu"_s, befund.neu}, {u"geaendert"_s, befund.geaendert},
        {u"gleich"_s, befund.gleich}, {u"falsch"_s, befund.falsch}, {u"neue_kunden"_s, befund.neue_Kunden},
        {u"geaenderte_kunden"_s, befund.geaenderte_Kunden}, {u"uebernommen"_s, geschrieben}});
  ausgabe::zeile(u"Neu: %1, geändert: %2, gleich: %3, falsch: %4"_s.arg(QString::number(befund.neu),
      QString::number(befund.geaendert), QString::number(befund.gleich), QString::number(befund.falsch)));
  if (befund.neue_Kunden + befund.geaenderte_Kunden > 0)
    ausgabe::zeile(u"Kunden neu: %1, geändert: %2"_s.arg(
        QString::number(befund.neue_Kunden), QString::number(befund.geaenderte_Kunden)));
}

Ausgang lies_ein(const Aufruf& aufruf) {
  const bool probe = aufruf.gesetzt(u"probe"_s);
  const bool auslassen = aufruf.gesetzt(u"fehlerhafte-auslassen"_s);
  const bool als_Json = aufruf.gesetzt(u"json"_s);
  const auto verbindung = oeffne_eigene(aufruf);
  const auto liste = oeffne_Liste(namen::ganzer_Pfad(aufruf.argumente().at(0)));
  Vorgangseinlesung einlesung(*verbindung);
  einlesung.lies(*liste, spalten_von(aufruf, *liste));
  Einlesebefund befund = einlesung.vergleiche();
  const bool schreibt = !probe && (befund.falsch == 0 || auslassen);
  if (schreibt) befund = einlesung.uebernimm(auslassen);
  const bool geschrieben = schreibt && (befund.falsch == 0 || auslassen);
  nenne_falsche(einlesung, befund.falsch, als_Json);
  zeige(befund, geschrieben, als_Json);
  if (befund.zeilen() == 0) ausgabe::meldung(u"Die Liste enthält keine Vorgänge."_s);
  if (!geschrieben && !probe)
    ausgabe::meldung(u"Es ist nichts übernommen; „--fehlerhafte-auslassen“ nimmt die anderen Zeilen."_s);
  return befund.falsch > 0 || befund.zeilen() == 0 ? Ausgang::Teilweise : Ausgang::Erledigt;
}

Ausgang liste(const Aufruf& aufruf) {
  const bool csv = aufruf.gesetzt(u"csv"_s);
  if (csv == aufruf.gesetzt(u"json"_s))
    throw Abbruch(Ausgang::Aufruf, u"Bei „vorgaenge liste“ steht entweder „--csv“ oder „--json“."_s);
  const auto verbindung = oeffne_eigene(aufruf);
  qint64 anzahl = 0;
  const auto ausfall = versuche_Datenbank([&] {
    anzahl = vorgangsausgabe::gib_aus(*verbindung, csv ? vorgangsausgabe::Form::Csv : vorgangsausgabe::Form::Json,
        [](const QByteArray& bytes) {
      return std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout) ==
          static_cast<std::size_t>(bytes.size());
    });
  });
  if (ausfall) throw Abbruch(Ausgang::Datenbank, ausfall->worte);
  return anzahl == 0 ? Ausgang::Teilweise : Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::vorgaenge_einlesen() {
  return {u"vorgaenge einlesen"_s, u"nimmt Vorgänge aus einer Liste in die eingebettete Datenbank"_s, u"DATEI"_s,
      uR"(Liest CSV (Semikolon, Komma oder Tabulator, UTF-8 oder Windows-1252, beides findet der Befehl selbst)
oder JSON (eine Liste von Objekten oder je Zeile eines) mit den Spalten Typ1, Key1, Key2, Key3,
Kundennummer, Kundenname, Ort, Projektnummer, Text, Ordner, Stand. Eine Kopfzeile nennt die Spalten;
ohne sie gilt diese Folge. Was die Liste nicht nennt, bleibt; ein leerer Wert ohne Anführungszeichen
leert das Feld. Alles oder nichts: Ist eine Zeile falsch, wird keine übernommen; jede falsche ist mit
Nummer und Grund genannt. Mit --json steht je falscher Zeile ein Objekt mit „zeile“ und „grund“, am
Ende das Ergebnis mit „neu“, „geaendert“, „gleich“, „falsch“ und „uebernommen“.)"_s,
      {{u"probe"_s, {}, u"zeigt nur, was geschähe"_s},
          {u"fehlerhafte-auslassen"_s, {}, u"nimmt die richtigen Zeilen, auch wenn andere falsch sind"_s},
          {u"typ1"_s, u"TEXT"_s, u"Art der Vorgänge, wenn die Liste keine Spalte dafür hat"_s,
              {u"BEL"_s, u"MON"_s, u"ART"_s, u"ANL"_s}},
          {u"kopfzeile"_s, u"JA_NEIN"_s, u"„ja“ oder „nein“, wenn der Befehl die Kopfzeile nicht erkennt"_s,
              {u"ja"_s, u"nein"_s}},
          {u"spalten"_s, u"NAMEN"_s,
              u"die Spalten der Liste der Reihe nach, mit Komma; eine leere\n"_s
              u"wird übergangen: „Key1,,Text“"_s},
          befehlszeile::verbindung_Option(), befehlszeile::json_Option()},
      1, 1, lies_ein};
}

Befehl befehle::vorgaenge_liste() {
  return {u"vorgaenge liste"_s, u"gibt alle Vorgänge der eingebetteten Datenbank aus"_s, {},
      uR"(Schreibt alle Vorgänge mit ihren Kunden auf die Standardausgabe, als CSV mit Semikolon und Kopfzeile
in UTF-8 oder als JSON, je Zeile ein Objekt. „vorgaenge einlesen“ liest beides, ohne etwas zu ändern.)"_s,
      {{u"csv"_s, {}, u"als CSV"_s}, {u"json"_s, {}, u"als JSON"_s}, befehlszeile::verbindung_Option()}, 0, 0, liste};
}
