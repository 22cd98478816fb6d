#include "host/betrieb/beispiel/Beispieltabelle.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace beispieldaten {
namespace {

constexpr QSize Quer{1024, 768};
constexpr QSize Hoch{768, 1024};
constexpr QSize Kamera{4000, 3000};

constexpr const char16_t* Auftrag = u"Belege\\24-1001";
constexpr const char16_t* Rechnung = u"Belege\\24-2003";
constexpr const char16_t* Montage = u"Montage\\24-1001";
constexpr const char16_t* Artikel = u"Artikel\\Allg";
constexpr const char16_t* Anlage = u"Anlagen\\10002";
constexpr const char16_t* Keiner = nullptr;

constexpr std::array<Beispielbild, 30> Bilder{{
    {1, u"Heizkessel", Auftrag, u"AB", u"24-1001", u"", u"BEL", u"Alter Kessel vor dem Ausbau",
        u"Kessel Baujahr 1987, Typenschild kaum noch lesbar.", Exif::Klein, Quer},
    {2, u"Heizkessel", Auftrag, u"AB", u"24-1001", u"", u"BEL", u"Neuer Kessel nach dem Einbau", nullptr, Exif::Gross,
        Kamera},
    {3, u"Abgasrohr", Auftrag, u"AB", u"24-1001", u"", u"BEL", u"Wanddurchführung", nullptr, Exif::Ohne, Hoch},
    {4, u"Typenschild", Auftrag, u"AB", u"24-1001", u"", u"BEL", u"", u"Seriennummer 0815-4711, 24 kW.", Exif::Klein,
        Quer},
    {5, u"Bad", Rechnung, u"RE", u"24-2003", u"", u"BEL", u"Vor der Sanierung", nullptr, Exif::Gross, Quer},
    {6, u"Bad", Rechnung, u"RE", u"24-2003", u"", u"BEL", u"Nach der Sanierung",
        u"Abnahme mit der Kundin: keine Mängel.", Exif::Gross, Quer},
    {7, u"Dusche", Rechnung, u"RE", u"24-2003", u"", u"BEL", u"Bodengleich, Rinne an der Wand", nullptr, Exif::Klein,
        Hoch},
    {8, u"Fliesen", Rechnung, u"RE", u"24-2003", u"", u"BEL", u"Muster, 30 × 60 cm", nullptr, Exif::Ohne, Quer},
    {9, u"Heizraum", Montage, u"AB", u"24-1001", u"1", u"MON", u"Stand am ersten Tag", nullptr, Exif::Klein, Quer},
    {10, u"Verteiler", Montage, u"AB", u"24-1001", u"1", u"MON", u"Vorlauf noch ohne Dämmung",
        u"Dämmung fehlt, Material ist bestellt.", Exif::Gross, Quer},
    {11, u"Pumpe", Montage, u"AB", u"24-1001", u"1", u"MON", u"", nullptr, Exif::Klein, Hoch},
    {12, u"Schaltschrank", Montage, u"AB", u"24-1001", u"2", u"MON", u"Klemmleiste X1", nullptr, Exif::Gross, Quer},
    {13, u"Fühler", Montage, u"AB", u"24-1001", u"2", u"MON", u"Außenfühler an der Nordseite", nullptr, Exif::Ohne,
        Quer},
    {14, u"Wärmepumpe", Artikel, u"WP-0900", u"", u"", u"ART", u"Luft-Wasser-Wärmepumpe, 9 kW", nullptr, Exif::Klein,
        Kamera},
    {15, u"Mischer", Artikel, u"MI-0025", u"", u"", u"ART", u"Dreiwegemischer DN 25", nullptr, Exif::Ohne, Quer},
    {16, u"Thermostat", Artikel, u"TH-0100", u"", u"", u"ART", u"Kopf mit Fernfühler",
        u"Auslaufartikel, Nachfolger TH-0110.", Exif::Gross, Quer},
    {17, u"Waschtisch", Artikel, u"WT-0600", u"", u"", u"ART", u"Breite 60 cm, weiß", nullptr, Exif::Klein, Quer},
    {18, u"Armatur", Artikel, u"AR-0010", u"", u"", u"ART", u"Einhebelmischer", nullptr, Exif::Klein, Hoch},
    {19, u"Solaranlage", Anlage, u"10002", u"Solar", u"1", u"ANL", u"Kollektorfeld Südseite", nullptr, Exif::Gross,
        Quer},
    {20, u"Speicher", Anlage, u"10002", u"Solar", u"1", u"ANL", u"300 l, im Keller", u"Anode zuletzt geprüft im März.",
        Exif::Klein, Hoch},
    {21, u"Regelung", Anlage, u"10002", u"Solar", u"1", u"ANL", u"", nullptr, Exif::Ohne, Quer},
    {22, u"Brenner", Anlage, u"10002", u"Heizung", u"1", u"ANL", u"Düse 0,55", nullptr, Exif::Gross, Quer},
    {23, u"Baustelle", Keiner, u"", u"", u"", u"", u"", u"Aufnahme bei der Besichtigung, 08:15 Uhr.", Exif::Klein,
        Kamera},
    {24, u"Rohrbruch", Keiner, u"", u"", u"", u"", u"", nullptr, Exif::Gross, Quer},
    {25, u"Übergabe", Keiner, u"", u"", u"", u"", u"", u"Schlüssel übergeben an Frau Öztürk.", Exif::Klein, Quer},
    {26, u"Dachrinne", Keiner, u"", u"", u"", u"", u"", nullptr, Exif::Ohne, Quer},
    {27, u"Zähler", Keiner, u"", u"", u"", u"", u"", nullptr, Exif::Gross, Hoch},
    {28, u"Küche", Keiner, u"", u"", u"", u"", u"", nullptr, Exif::Klein, Quer},
    {29, u"Werkzeug", Keiner, u"", u"", u"", u"", u"", nullptr, Exif::Ohne, Quer},
    {30, u"Fahrzeug", Keiner, u"", u"", u"", u"", u"", nullptr, Exif::Gross, Quer},
}};

}  // namespace

std::span<const Beispielbild> bilder() {
  return Bilder;
}

QStringList tabellen_des_betriebs() {
  return {
      u"CREATE TABLE Kunden (Kundennummer TEXT COLLATE SERVERTEXT, Name TEXT COLLATE SERVERTEXT, "
      u"Ort TEXT COLLATE SERVERTEXT)"_s,
      u"INSERT INTO Kunden VALUES ('10001', 'Bäckerei Huber', 'Freiburg'), ('10002', 'Familie Öztürk', 'Kirchzarten'), "
      u"('10003', 'Gemeinde Sankt Märgen', 'Sankt Märgen')"_s,
      u"INSERT INTO BelegKopfZunft (Belegart, Belegnummer, Kundennummer, Projektnummer) VALUES "
      u"('AB', '24-1001', '10001', 'P-24-07'), ('RE', '24-2003', '10002', 'P-24-11'), "
      u"('AN', '24-3005', '10003', 'P-24-12')"_s,
      u"CREATE TABLE Montageauftraege (Belegart TEXT COLLATE SERVERTEXT, Belegnummer TEXT COLLATE SERVERTEXT, "
      u"MontageNr TEXT COLLATE SERVERTEXT, Aufgabe TEXT COLLATE SERVERTEXT)"_s,
      u"INSERT INTO Montageauftraege VALUES ('AB', '24-1001', '1', 'Kessel und Verteiler'), "
      u"('AB', '24-1001', '2', 'Elektrik und Fühler')"_s,
      u"CREATE TABLE Artikelstamm (Artikelnummer TEXT COLLATE SERVERTEXT, Bezeichnung TEXT COLLATE SERVERTEXT, "
      u"Bezeichnung3 TEXT COLLATE SERVERTEXT, Hauptlieferant TEXT COLLATE SERVERTEXT)"_s,
      u"INSERT INTO Artikelstamm VALUES ('WP-0900', 'Wärmepumpe 9 kW', 'außen aufgestellt', '70120'), "
      u"('MI-0025', 'Dreiwegemischer DN 25', NULL, '70120'), "
      u"('TH-0100', 'Thermostatkopf', 'Auslauf', '70300'), "
      u"('TH-0110', 'Thermostatkopf, neue Ausführung', 'weiß', '70300'), "
      u"('WT-0600', 'Waschtisch 60 cm', 'weiß, mit Überlauf', ''), ('AR-0010', 'Einhebelmischer', 'verchromt', NULL)"_s,
      // The second stock of firms that keep one; the setting MitArtikelstammZF chooses it.
      u"CREATE TABLE ArtikelstammZF (Artikelnummer TEXT COLLATE SERVERTEXT, Bezeichnung TEXT COLLATE SERVERTEXT, "
      u"Bezeichnung3 TEXT COLLATE SERVERTEXT, Hauptlieferant TEXT COLLATE SERVERTEXT)"_s,
      u"INSERT INTO ArtikelstammZF VALUES ('ZF-9001', 'Pumpengruppe', 'mit Mischer', '70120'), "
      u"('ZF-9002', 'Pufferspeicher 500 l', NULL, '')"_s,
      u"CREATE TABLE Einstellungen (Programm TEXT COLLATE SERVERTEXT, Benutzer TEXT COLLATE SERVERTEXT, "
      u"Abschnitt TEXT COLLATE SERVERTEXT, Schluessel TEXT COLLATE SERVERTEXT, Wert TEXT COLLATE SERVERTEXT)"_s,
      u"INSERT INTO Einstellungen VALUES ('Standard', 'Standard', 'Firmendaten', 'MitArtikelstammZF', '0')"_s,
      u"CREATE TABLE Anlagen (Referenz1 TEXT COLLATE SERVERTEXT, Referenz2 TEXT COLLATE SERVERTEXT, "
      u"Referenz3 TEXT COLLATE SERVERTEXT, Bezeichnung TEXT COLLATE SERVERTEXT)"_s,
      u"INSERT INTO Anlagen VALUES ('10002', 'Solar', '1', 'Thermische Solaranlage'), "
      u"('10002', 'Heizung', '1', 'Ölkessel')"_s,
  };
}

}  // namespace beispieldaten
