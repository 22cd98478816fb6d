// What the lines of a list are to the table: new, changed, the same or wrong.
#include "host/betrieb/vorgaenge/Einlesezeile.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung_Teile.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Schritte = 5;

/// The line leaves a column as it is, by not naming it or by naming what stands there.
QString bleibt(Vorgangsspalte spalte) {
  return u"((e.Genannte & %1) = 0 OR e.%2 IS v.%2)"_s.arg(
      QString::number(bit(spalte)), vorgangsspalten::eigenschaft(spalte).name);
}

}  // namespace

Einlesebefund Vorgangseinlesung::vergleiche() {
  Einlesebefund befund;
  einlesung::geschuetzt([&] {
    melde(Schritt::Vergleichen, 0, Schritte);
    verglichen_ = datenversion();
    finde_Vorhandene();
    melde(Schritt::Vergleichen, 2, Schritte);
    ordne_ein();
    melde(Schritt::Vergleichen, 3, Schritte);
    sammle_Kunden();
    melde(Schritt::Vergleichen, 4, Schritte);
    befund = zaehle();
    melde(Schritt::Vergleichen, Schritte, Schritte);
  });
  return befund;
}

void Vorgangseinlesung::finde_Vorhandene() {
  // The table's columns stand at the left: their collation is the one that counts.
  verbindung_.Execute(
      u"UPDATE Einlesen_Zeilen SET Grund = Fehler, Nr = CASE WHEN Fehler IS NULL THEN (SELECT v.Nr FROM Vorgaenge v "
      "WHERE v.Typ1 = Einlesen_Zeilen.Typ1 AND v.Key1 = Einlesen_Zeilen.Key1 AND v.Key2 = Einlesen_Zeilen.Key2 "
      "AND v.Key3 = Einlesen_Zeilen.Key3) END"_s);
  verbindung_.Execute(u"UPDATE Einlesen_Zeilen SET Grund = Fehler_neu WHERE Grund IS NULL AND Nr IS NULL"_s);
}

void Vorgangseinlesung::ordne_ein() {
  static const QString Gleich = [] {
    QStringList teile;
    for (const Vorgangsspalte spalte : {Vorgangsspalte::Kundennummer, Vorgangsspalte::Projektnummer,
             Vorgangsspalte::Text, Vorgangsspalte::Ordner, Vorgangsspalte::Stand})
      teile.append(bleibt(spalte));
    // Nothing said of a customer leaves him as he is.
    teile.append(u"(e.Kundenname IS NULL OR e.Kundenname IS k.Name) AND (e.Ort IS NULL OR e.Ort IS k.Ort)"_s);
    return teile.join(u" AND "_s);
  }();
  verbindung_.Execute(
      u"UPDATE Einlesen_Zeilen AS e SET Art = CASE WHEN Grund IS NOT NULL THEN %1 WHEN Nr IS NULL THEN %2 ELSE "
      "(SELECT CASE WHEN %3 THEN %4 ELSE %5 END FROM Vorgaenge v LEFT JOIN Kunden k ON k.Kundennummer = e.Kundennummer "
      "WHERE v.Nr = e.Nr) END"_s.arg(static_cast<int>(Zeilenart::Falsch))
          .arg(static_cast<int>(Zeilenart::Neu))
          .arg(Gleich)
          .arg(static_cast<int>(Zeilenart::Gleich))
          .arg(static_cast<int>(Zeilenart::Geaendert)));
  verbindung_.Execute(
      u"UPDATE Einlesen_Zeilen SET Art = %1, Grund = Fehler_anders WHERE Art <> %2 AND Grund IS NULL AND "
      "Fehler_anders IS NOT NULL"_s.arg(
          QString::number(static_cast<int>(Zeilenart::Falsch)), QString::number(static_cast<int>(Zeilenart::Gleich))));
}

/// The customers that the list names; two of its lines must agree on one.
void Vorgangseinlesung::sammle_Kunden() {
  verbindung_.Execute(u"DELETE FROM Einlesen_Kunden"_s);
  for (const QString& spalte : {u"Name"_s, u"Ort"_s})
    verbindung_.Execute(
        u"INSERT INTO Einlesen_Kunden (Kundennummer, %1, Zeile, Folge) SELECT Kundennummer, %2, Zeile, MIN(Folge) FROM "
        "Einlesen_Zeilen WHERE Grund IS NULL AND %2 IS NOT NULL GROUP BY Kundennummer COLLATE SERVERTEXT "
        "ON CONFLICT (Kundennummer) DO UPDATE SET %1 = excluded.%1"_s.arg(
            spalte, spalte == "Name"_L1 ? u"Kundenname"_s : spalte));
  verbindung_.Execute(
      u"UPDATE Einlesen_Zeilen AS e SET Art = %1, Grund = 'der Kunde ' || e.Kundennummer || ' heißt in Zeile ' || "
      "k.Zeile || ' anders' FROM Einlesen_Kunden k WHERE k.Kundennummer = e.Kundennummer AND e.Grund IS NULL "
      "AND (e.Kundenname <> k.Name OR e.Ort <> k.Ort)"_s.arg(static_cast<int>(Zeilenart::Falsch)));
  verbindung_.Execute(
      u"UPDATE Einlesen_Kunden SET Neu = CASE WHEN EXISTS (SELECT 1 FROM Kunden k WHERE k.Kundennummer = "
      "Einlesen_Kunden.Kundennummer) THEN 0 ELSE 1 END WHERE NOT EXISTS (SELECT 1 FROM Kunden k WHERE "
      "k.Kundennummer = Einlesen_Kunden.Kundennummer AND (Einlesen_Kunden.Name IS NULL OR Einlesen_Kunden.Name IS "
      "k.Name) AND (Einlesen_Kunden.Ort IS NULL OR Einlesen_Kunden.Ort IS k.Ort))"_s);
}

Einlesebefund Vorgangseinlesung::zaehle() {
  Einlesebefund befund;
  const auto satz = verbindung_.Execute(u"SELECT Art, COUNT(*) FROM Einlesen_Zeilen GROUP BY Art"_s);
  for (; !satz->Eof(); satz->MoveNext()) {
    const qint64 anzahl = satz->Text(1).toLongLong();
    switch (static_cast<Zeilenart>(satz->Text(0).toInt())) {
      case Zeilenart::Neu:
        befund.neu = anzahl;
        break;
      case Zeilenart::Geaendert:
        befund.geaendert = anzahl;
        break;
      case Zeilenart::Gleich:
        befund.gleich = anzahl;
        break;
      case Zeilenart::Falsch:
        befund.falsch = anzahl;
        break;
    }
  }
  befund.neue_Kunden = zahl(u"SELECT COUNT(*) FROM Einlesen_Kunden WHERE Neu = 1"_s);
  befund.geaenderte_Kunden = zahl(u"SELECT COUNT(*) FROM Einlesen_Kunden WHERE Neu = 0"_s);
  return befund;
}
