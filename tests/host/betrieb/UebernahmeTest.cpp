// A data folder of an older program: its records stand in the tables of today, and the old file lies beside.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/SqlZerleger.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString skript(const QString& name) {
  QFile datei(QStringLiteral(KVO_QUELLORDNER) + u"/sql/sqlite/"_s + name);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
  return QString::fromUtf8(datei.readAll());
}

class AltesVerzeichnis : public ::testing::Test {
 protected:
  AltesVerzeichnis() {
    QDir().mkpath(ordner_.pfad(u"daten/bilder"_s));
    adodb::Connection alte;
    alte.Open(u"Mode=ReadWriteCreate;"_s + verbindung());
    for (const QString& name : {u"Bild_Zuordnungen.sql"_s, u"Wirtstabellen_Beispiel.sql"_s})
      for (const QString& anweisung : adodb::zerlege_skript(skript(name))) alte.Execute(anweisung);
    for (const QString& tabelle :
        {u"Kunden (Kundennummer, Name, Ort)"_s, u"Montageauftraege (Belegart, Belegnummer, MontageNr, Aufgabe)"_s,
            u"Artikelstamm (Artikelnummer, Bezeichnung, Bezeichnung3, Hauptlieferant)"_s,
            u"Anlagen (Referenz1, Referenz2, Referenz3, Bezeichnung)"_s,
            u"Einstellungen (Programm, Benutzer, Abschnitt, Schluessel, Wert)"_s})
      alte.Execute(u"CREATE TABLE "_s + tabelle);
    for (const QString& zeilen : {u"Kunden VALUES ('10001', 'Huber', 'Ulm'), ('10002', 'Öztürk', NULL)"_s,
             u"BelegKopfZunft VALUES ('AB', '1', '10001', 'P7'), ('RE', '2', NULL, NULL)"_s,
             u"Montageauftraege VALUES ('AB', '1', '1', 'Kessel')"_s,
             u"Artikelstamm VALUES ('WP', 'Pumpe', 'außen', '70')"_s,
             u"Anlagen VALUES ('10002', 'Solar', '1', 'Kollektor')"_s,
             u"Einstellungen VALUES ('Standard', 'Standard', 'Firmendaten', 'MitArtikelstammZF', '1')"_s,
             u"Bild_Zuordnungen (Typ1, Key1, Key2, Key3, key4, Typ2, Bildname) VALUES ('BEL', 'AB', '1', '-', '-', "
             u"'-', 'a'), "
             u"('BEL', 'nur', 'Bild', '-', '-', '-', 'b')"_s})
      alte.Execute(u"INSERT INTO "_s + zeilen);
  }
  QString tabellenordner() const { return namen::tabellenpfad(ordner_.pfad(u"daten"_s)); }
  QString verbindung() const { return verbindung_zur_Datei(ordner_.pfad(u"daten/betrieb.db"_s)); }
  QStringList werte(const QString& abfrage) const {
    adodb::Connection offene;
    offene.Open(verbindung());
    QStringList alle;
    const auto satz = offene.Execute(abfrage);
    for (; satz->State() == adodb::adStateOpen && !satz->Eof(); satz->MoveNext()) alle.append(satz->Text(0));
    return alle;
  }
  Testordner ordner_;
};

}  // namespace

TEST_F(AltesVerzeichnis, ItsRecordsAreBroughtOverOnceAndTheOldFileIsKept) {
  const MeldungsDoppel keine_Meldung;
  datenordner::richte_ein(tabellenordner());
  EXPECT_EQ(
      werte(u"SELECT Typ1 || ' ' || Key1 || ' ' || Key2 || ' ' || Key3 || ': ' || Bezeichnung FROM Bild_Vorgaenge "
            "ORDER BY 1"_s),
      (QStringList{u"ANL 10002 Solar 1: Kollektor · Öztürk"_s, u"ART WP  : Pumpe"_s,
          u"BEL AB 1 : Huber, Ulm · Projekt P7"_s, u"BEL RE 2 : "_s, u"BEL nur Bild : "_s, u"MON AB 1 1: Kessel"_s}));
  EXPECT_EQ(werte(u"SELECT Kundennummer || Projektnummer FROM BelegKopfZunft WHERE Belegart = 'ab'"_s),
      QStringList{u"10001P7"_s});
  EXPECT_EQ(werte(u"SELECT Bezeichnung || Bezeichnung3 || Hauptlieferant FROM Artikelstamm"_s),
      QStringList{u"Pumpeaußen70"_s});
  EXPECT_EQ(werte(u"SELECT Wert FROM Einstellungen"_s), QStringList{u"1"_s});
  EXPECT_EQ(werte(u"SELECT name FROM sqlite_master WHERE name GLOB '*_bisher'"_s), QStringList());
  EXPECT_EQ(werte(u"SELECT COUNT(*) FROM Bild_Zuordnungen"_s), QStringList{u"2"_s});
  adodb::Connection vorher;
  vorher.Open(verbindung_zur_Datei(ordner_.pfad(u"daten/betrieb-vorher.db"_s)));
  EXPECT_EQ(vorher.Execute(u"SELECT COUNT(*) FROM Montageauftraege"_s)->Text(0), u"1"_s);
  datenordner::richte_ein(tabellenordner());
  EXPECT_FALSE(ordner_.vorhanden(u"daten/betrieb-vorher-2.db"_s));
  EXPECT_FALSE(ordner_.vorhanden(u"daten/betrieb-vorher.neu"_s));
}

TEST_F(AltesVerzeichnis, WhatIsBroughtOverIsFound) {
  datenordner::richte_ein(tabellenordner());
  adodb::Connection offene;
  offene.Open(verbindung());
  vorgangsquelle::Frage frage;
  for (const auto& [worte, nummer] : {std::pair(u"kollektor ÖZTÜRK"_s, u"10002 Solar 1"_s), {u"hu"_s, u"AB 1"_s}}) {
    frage.filter = Vorgangsfilter::lies(worte);
    const QList<Vorgang> gefunden = vorgangsquelle::lies(offene, vorgangsquelle::Herkunft::Eigene, frage);
    ASSERT_EQ(gefunden.size(), 1) << worte.toStdString();
    EXPECT_EQ(gefunden[0].nummer, nummer);
  }
}

TEST_F(AltesVerzeichnis, RowsThatTheNewTablesRefuseAreToldAndStayInTheOldFile) {
  werte(
      u"INSERT INTO Artikelstamm VALUES ('wp', 'dieselbe', NULL, NULL), (NULL, 'ohne', NULL, NULL), "
      "('MI', 'Mischer', NULL, NULL)"_s);
  werte(u"INSERT INTO Anlagen VALUES (hex(zeroblob(26)), '1', '1', 'zu lang')"_s);
  werte(u"INSERT INTO Kunden VALUES ('10001', 'noch einmal', NULL)"_s);
  MeldungsDoppel meldungen;
  meldungen.erwarte(
      {u"Beim Übernehmen in die neuen Tabellen sind 4 Zeilen ausgelassen, deren Nummer fehlt, zu lang ist oder "
       "schon dasteht. Sie stehen weiter in „%1“."_s.arg(namen::angezeigt(tabellenordner() + u"\\betrieb-vorher.db"_s)),
          u"Bildzuordnung"_s, oberflaeche::Symbol::Ausrufezeichen, oberflaeche::Knoepfe::OK});
  datenordner::richte_ein(tabellenordner());
  EXPECT_EQ(werte(u"SELECT Key1 FROM Vorgaenge WHERE Typ1 = 'ART' ORDER BY 1"_s), (QStringList{u"MI"_s, u"WP"_s}));
  datenordner::richte_ein(tabellenordner());
}

TEST_F(AltesVerzeichnis, TablesThatAreMissingHaveNoRecords) {
  werte(u"DROP TABLE Montageauftraege"_s);
  werte(u"DROP TABLE Kunden"_s);
  datenordner::richte_ein(tabellenordner());
  EXPECT_EQ(werte(u"SELECT COUNT(*) FROM Vorgaenge"_s), QStringList{u"5"_s});
}

TEST_F(AltesVerzeichnis, AFailureInTheMiddleLeavesAllAsItWas) {
  werte(u"ALTER TABLE Anlagen RENAME COLUMN Bezeichnung TO Wort"_s);
  const QStringList vorher = werte(u"SELECT name || sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY 1"_s);
  EXPECT_THROW(datenordner::richte_ein(tabellenordner()), Abbruch);
  EXPECT_EQ(werte(u"SELECT name || sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY 1"_s), vorher);
  EXPECT_EQ(werte(u"SELECT COUNT(*) FROM Kunden"_s), QStringList{u"2"_s});
}
