#include "host/betrieb/beispiel/Beispieltabelle.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace beispieldaten {
namespace {

constexpr QSize Quer{1024, 768};
constexpr QSize Hoch{768, 1024};
constexpr QSize Kamera{4000, 3000};

constexpr Beispielvorgang Auftrag{u"Belege\\24-1001", u"AB", u"24-1001", u"", u"BEL"};
constexpr Beispielvorgang Rechnung{u"Belege\\24-2003", u"RE", u"24-2003", u"", u"BEL"};
constexpr Beispielvorgang Montage1{u"Montage\\24-1001", u"AB", u"24-1001", u"1", u"MON"};
constexpr Beispielvorgang Montage2{u"Montage\\24-1001", u"AB", u"24-1001", u"2", u"MON"};
constexpr Beispielvorgang Waermepumpe{u"Artikel\\Allg", u"WP-0900", u"", u"", u"ART"};
constexpr Beispielvorgang Mischer{u"Artikel\\Allg", u"MI-0025", u"", u"", u"ART"};
constexpr Beispielvorgang Thermostat{u"Artikel\\Allg", u"TH-0100", u"", u"", u"ART"};
constexpr Beispielvorgang Waschtisch{u"Artikel\\Allg", u"WT-0600", u"", u"", u"ART"};
constexpr Beispielvorgang Armatur{u"Artikel\\Allg", u"AR-0010", u"", u"", u"ART"};
constexpr Beispielvorgang Solar{u"Anlagen\\10002", u"10002", u"Solar", u"1", u"ANL"};
constexpr Beispielvorgang Heizung{u"Anlagen\\10002", u"10002", u"Heizung", u"1", u"ANL"};
constexpr const Beispielvorgang* Keiner = nullptr;

constexpr std::array<Beispielbild, 30> Bilder{{
    {1, u"Heizkessel", &Auftrag, u"Alter Kessel vor dem Ausbau", u"Kessel Baujahr 1987, Typenschild kaum noch lesbar.",
        Exif::Klein, Quer},
    {2, u"Heizkessel", &Auftrag, u"Neuer Kessel nach dem Einbau", nullptr, Exif::Gross, Kamera},
    {3, u"Abgasrohr", &Auftrag, u"Wanddurchführung", nullptr, Exif::Ohne, Hoch},
    {4, u"Typenschild", &Auftrag, u"", u"Seriennummer 0815-4711, 24 kW.", Exif::Klein, Quer},
    {5, u"Bad", &Rechnung, u"Vor der Sanierung", nullptr, Exif::Gross, Quer},
    {6, u"Bad", &Rechnung, u"Nach der Sanierung", u"Abnahme mit der Kundin: keine Mängel.", Exif::Gross, Quer},
    {7, u"Dusche", &Rechnung, u"Bodengleich, Rinne an der Wand", nullptr, Exif::Klein, Hoch},
    {8, u"Fliesen", &Rechnung, u"Muster, 30 × 60 cm", nullptr, Exif::Ohne, Quer},
    {9, u"Heizraum", &Montage1, u"Stand am ersten Tag", nullptr, Exif::Klein, Quer},
    {10, u"Verteiler", &Montage1, u"Vorlauf noch ohne Dämmung", u"Dämmung fehlt, Material ist bestellt.", Exif::Gross,
        Quer},
    {11, u"Pumpe", &Montage1, u"", nullptr, Exif::Klein, Hoch},
    {12, u"Schaltschrank", &Montage2, u"Klemmleiste X1", nullptr, Exif::Gross, Quer},
    {13, u"Fühler", &Montage2, u"Außenfühler an der Nordseite", nullptr, Exif::Ohne, Quer},
    {14, u"Wärmepumpe", &Waermepumpe, u"Luft-Wasser-Wärmepumpe, 9 kW", nullptr, Exif::Klein, Kamera},
    {15, u"Mischer", &Mischer, u"Dreiwegemischer DN 25", nullptr, Exif::Ohne, Quer},
    {16, u"Thermostat", &Thermostat, u"Kopf mit Fernfühler", u"Auslaufartikel, Nachfolger TH-0110.", Exif::Gross, Quer},
    {17, u"Waschtisch", &Waschtisch, u"Breite 60 cm, weiß", nullptr, Exif::Klein, Quer},
    {18, u"Armatur", &Armatur, u"Einhebelmischer", nullptr, Exif::Klein, Hoch},
    {19, u"Solaranlage", &Solar, u"Kollektorfeld Südseite", nullptr, Exif::Gross, Quer},
    {20, u"Speicher", &Solar, u"300 l, im Keller", u"Anode zuletzt geprüft im März.", Exif::Klein, Hoch},
    {21, u"Regelung", &Solar, u"", nullptr, Exif::Ohne, Quer},
    {22, u"Brenner", &Heizung, u"Düse 0,55", nullptr, Exif::Gross, Quer},
    {23, u"Baustelle", Keiner, u"", u"Aufnahme bei der Besichtigung, 08:15 Uhr.", Exif::Klein, Kamera},
    {24, u"Rohrbruch", Keiner, u"", nullptr, Exif::Gross, Quer},
    {25, u"Übergabe", Keiner, u"", u"Schlüssel übergeben an Frau Öztürk.", Exif::Klein, Quer},
    {26, u"Dachrinne", Keiner, u"", nullptr, Exif::Ohne, Quer},
    {27, u"Zähler", Keiner, u"", nullptr, Exif::Gross, Hoch},
    {28, u"Küche", Keiner, u"", nullptr, Exif::Klein, Quer},
    {29, u"Werkzeug", Keiner, u"", nullptr, Exif::Ohne, Quer},
    {30, u"Fahrzeug", Keiner, u"", nullptr, Exif::Gross, Quer},
}};

}  // namespace

std::span<const Beispielbild> bilder() {
  return Bilder;
}

QStringList saetze_des_Betriebs() {
  return {
      u"INSERT INTO Kunden VALUES ('10001', 'Bäckerei Huber', 'Freiburg'), ('10002', 'Familie Öztürk', 'Kirchzarten'), "
      u"('10003', 'Gemeinde Sankt Märgen', 'Sankt Märgen')"_s,
      u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Kundennummer, Projektnummer) VALUES "
      u"('BEL', 'AB', '24-1001', '10001', 'P-24-07'), ('BEL', 'RE', '24-2003', '10002', 'P-24-11'), "
      u"('BEL', 'AN', '24-3005', '10003', 'P-24-12')"_s,
      u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Key3, Text) VALUES ('MON', 'AB', '24-1001', '1', 'Kessel und "
      u"Verteiler'), "
      u"('MON', 'AB', '24-1001', '2', 'Elektrik und Fühler')"_s,
      u"INSERT INTO Vorgaenge (Typ1, Key1, Text) VALUES ('ART', 'WP-0900', 'Wärmepumpe 9 kW'), "
      u"('ART', 'MI-0025', 'Dreiwegemischer DN 25'), ('ART', 'TH-0100', 'Thermostatkopf'), "
      u"('ART', 'TH-0110', 'Thermostatkopf, neue Ausführung'), ('ART', 'WT-0600', 'Waschtisch 60 cm'), "
      u"('ART', 'AR-0010', 'Einhebelmischer')"_s,
      u"INSERT INTO Artikelzusatz VALUES ('WP-0900', 'außen aufgestellt', '70120'), ('MI-0025', NULL, '70120'), "
      u"('TH-0100', 'Auslauf', '70300'), ('TH-0110', 'weiß', '70300'), ('WT-0600', 'weiß, mit Überlauf', ''), "
      u"('AR-0010', 'verchromt', NULL)"_s,
      u"INSERT INTO ArtikelstammZF VALUES ('ZF-9001', 'Pumpengruppe', 'mit Mischer', '70120'), "
      u"('ZF-9002', 'Pufferspeicher 500 l', NULL, '')"_s,
      u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Text) VALUES "
      u"('ANL', '10002', 'Solar', '1', '10002', 'Thermische Solaranlage'), "
      u"('ANL', '10002', 'Heizung', '1', '10002', 'Ölkessel')"_s,
  };
}

}  // namespace beispieldaten
