// bench_fenster [LAEUFE]: how soon the program's window is up with a record of ten pictures, beside an empty Qt window
// of the same size; and how soon the dialog of that record is when another program opens it, beside the program's
// window. Each run is a process of its own, timed from its start until its window is painted; the previews
// follow behind that, one by one. To be run in an X server, if need be one without a screen ("xvfb-run -s -noreset"):
// Qt's offscreen windows cost next to nothing, and the comparison would be one with reading the fonts, which the empty
// window does not need.
#include <QGuiApplication>
#include <QTemporaryDir>

#include "bench/Messung.h"
#include "bench/Startlauf.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/Datenordner.h"

using namespace Qt::Literals::StringLiterals;
using messung::starte;

namespace {

/// Sample data whose record AN 24-3005 has ten pictures.
void richte_Daten_ein(const QString& ordner) {
  const QString tabelle = namen::tabellenpfad(ordner);
  datenordner::richte_ein(tabelle);
  oeffne(datenordner::verbindung(tabelle))
      ->Execute(
          u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
          "Beschreibung, Druckkennzeichen, Grafik_Ursprung, SortIndex) SELECT 'AN', '24-3005', '-', '-', Bildname, "
          "BildExt, 'BEL', '-', BildPfad, Beschreibung, Druckkennzeichen, '-', 0 FROM Bild_Zuordnungen LIMIT 10"_s);
}

}  // namespace

int main(int argc, char** argv) {
  const int laeufe = argc > 1 ? std::atoi(argv[1]) : 25;
  const QTemporaryDir ordner;
  {
    int keine = 1;
    const QGuiApplication programm(keine, argv);
    richte_Daten_ein(ordner.filePath(u"daten"_s));
  }
  const std::string wirt = KVO_WIRT_PROGRAMM;
  const std::string leer = KVO_LEERES_FENSTER;
  const std::string daten = ordner.filePath(u"daten"_s).toStdString();
  messung::vergleiche(
      "window with a record of 10 pictures | empty Qt window", laeufe, 2.0,
      [&] {
    starte({wirt, "--datenordner", daten, "--vorgang", "AN 24-3005"});
      },
      [&] { starte({leer}); });
  messung::vergleiche(
      "dialog of that record by itself | window", laeufe, 1.3,
      [&] {
    starte({wirt, "dialog", "zuordnung", "--datenordner", daten, "--typ1", "BEL", "--key1", "AN", "--key2", "24-3005"});
      },
      [&] {
    starte({wirt, "--datenordner", daten, "--vorgang", "AN 24-3005"});
  });
  return messung::urteil();
}
