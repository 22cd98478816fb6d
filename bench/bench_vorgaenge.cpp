// bench_vorgaenge [ORDNER [VORGAENGE]]: a firm's own records, 1,000,000 of them with 5,000,000 assignments unless told
// otherwise, beside the 13 of the samples. The large database is made in ORDNER once, which takes minutes. Measured are
// the program's start until its list is painted, the memory until then, the time from a typed letter to the painted
// answer, and how long the window stood still meanwhile. To be run in an X server, as bench_fenster.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "bench/Messung.h"
#include "bench/Startlauf.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/fenster/Hauptfenster.h"

using namespace Qt::Literals::StringLiterals;
using messung::starte;
using messung::verlange;

namespace {

/// Bounds of the answer to a letter and of a still window, in seconds.
constexpr double Antwort_Mitte = 0.060;
constexpr double Antwort_Schlimmstens = 0.150;
constexpr double Stillstand = 0.050;

void fuelle(adodb::Connection& datenbank, int vorgaenge) {
  const auto zahlen = [](int bis) {
    return u"WITH RECURSIVE z(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM z WHERE n < %1) "_s.arg(bis);
  };
  const auto eines = [](const QString& von, const QString& worte) {
    const QStringList liste = worte.split(u' ');
    QStringList faelle;
    for (qsizetype i = 0; i < liste.size(); ++i) faelle.append(u"WHEN %1 THEN '%2'"_s.arg(i).arg(liste.at(i)));
    return u"CASE (%1) %% %2 %3 END"_s.arg(von).arg(liste.size()).arg(faelle.join(u' ')).replace(u"%%"_s, u"%"_s);
  };
  const QString namen = eines(u"n * 7919"_s, u"Huber Öztürk Maier Schmidt Müller Krüger Bauer Weiß Hofmann Jäger"_s);
  const QString orte = eines(u"n * 104729"_s, u"Freiburg Kirchzarten Ulm Köln Lübeck Görlitz Fürth Mainz Trier"_s);
  const QString dinge = eines(u"n * 31"_s, u"Kessel Wärmepumpe Solaranlage Bad Heizung Lüftung Zähler Dachrinne"_s);
  datenbank.Execute(u"BEGIN TRANSACTION"_s);
  datenbank.Execute(u"INSERT INTO Vorgaenge_Ruhe VALUES ('Messung')"_s);
  datenbank.Execute(zahlen(20000) + u"INSERT INTO Kunden SELECT printf('K%05d', n), "_s + namen +
      u" || ' ' || n || CASE WHEN n % 5 THEN ' GmbH' ELSE '' END, "_s + orte + u" FROM z"_s);
  datenbank.Execute(zahlen(vorgaenge) +
      u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Text, Stand) SELECT "
      "CASE n % 10 WHEN 7 THEN 'MON' WHEN 8 THEN 'ART' WHEN 9 THEN 'ANL' ELSE 'BEL' END, "
      "CASE n % 10 WHEN 8 THEN printf('ART-%07d', n) WHEN 9 THEN printf('K%05d', n % 20000) WHEN 1 THEN 'RE' ELSE 'AB' "
      "END, "
      "CASE n % 10 WHEN 8 THEN '' ELSE printf('%02d-%06d', n % 25, n) END, CASE n % 10 WHEN 7 THEN '1' ELSE '' END, "
      "printf('K%05d', 1 + n % 20000), "_s +
      dinge + u" || ' ' || n % 1000, datetime('2010-01-01', '+' || ((n * 7919) % 7000000) || ' minutes') FROM z"_s);
  datenbank.Execute(
      u"UPDATE Vorgaenge SET Bezeichnung = (SELECT w.Bezeichnung FROM Vorgaenge_Worte w WHERE w.Nr = Vorgaenge.Nr)"_s);
  datenbank.Execute(u"INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT Nr, Suchtext FROM Vorgaenge"_s);
  datenbank.Execute(u"INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT Nr, Wortanfaenge FROM Vorgaenge"_s);
  datenbank.Execute(u"DELETE FROM Vorgaenge_Ruhe"_s);
  datenbank.Execute(zahlen(5) +
      u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, SortIndex) "
      u"SELECT "
      "Key1, CASE Key2 WHEN '' THEN '-' ELSE Key2 END, CASE Key3 WHEN '' THEN '-' ELSE Key3 END, '-', "
      "printf('Bild_%d_%d', Nr, n), 'jpg', Typ1, '-', 'Belege\\' || Nr % 1000, n - 1 FROM Vorgaenge, z"_s);
  datenbank.Execute(u"COMMIT TRANSACTION"_s);
}

/// The data folder with that many records, made where it is missing.
QString grosser_Ordner(const QString& ordner, int vorgaenge) {
  const QString daten = ordner + u"/vorgaenge_%1"_s.arg(vorgaenge);
  const QString tabelle = namen::tabellenpfad(daten);
  if (datenordner::eingerichtet(tabelle)) return daten;
  std::printf("making %d records in %s ...\n", vorgaenge, qPrintable(daten));
  verlange(QDir().mkpath(daten + u"/bilder"_s), "the folder can't be made");
  // Under another name until it is whole.
  const QString neu = daten + u"/neu.db"_s;
  QFile::remove(neu);
  {
    const auto datenbank = oeffne(verbindung_zur_Datei(neu) + u";Mode=ReadWriteCreate"_s);
    schema::richte_Betrieb_ein(*datenbank);
    fuelle(*datenbank, vorgaenge);
  }
  verlange(QFile::rename(neu, daten + u"/betrieb.db"_s), "the database can't be renamed");
  return daten;
}

void vergleiche_Start(const std::string& gross, const std::string& klein) {
  const std::string fenster = KVO_FENSTER_PROGRAMM;
  const std::string wirt = KVO_WIRT_PROGRAMM;
  messung::vergleiche(
      "start until the window is painted | 13 records", 15, 1.2,
      [&] {
    starte({fenster, "--datenordner", gross});
      },
      [&] {
    starte({fenster, "--datenordner", klein});
  });
  messung::vergleiche(
      "start until the list is painted, 200 rows | 13 rows", 15, messung::Ohne_Ziel,
      [&] {
    starte({wirt, "--datenordner", gross});
      },
      [&] {
    starte({wirt, "--datenordner", klein});
  });
  const double unser = std::stod(starte({wirt, "--datenordner", gross}));
  const double peer = std::stod(starte({wirt, "--datenordner", klein}));
  std::printf("%-58s %10.1f MB %10.1f MB   %6.3f  (aim <= 1.30)%s\n", "memory until then | 13 records", unser / 1024,
      peer / 1024, unser / peer, unser / peer <= 1.3 ? "" : " NO");
  messung::erwarte(unser / peer <= 1.3);
}

class Tippen {
 public:
  explicit Tippen(const QString& daten) : fenster_(optionen(daten), {}) {
    fenster_.beginne();
    fenster_.show();
    verlange(QTest::qWaitForWindowExposed(&fenster_), "the window does not show");
    verlange(QTest::qWaitFor([&] { return fenster_.ruht(); }, 60'000), "no answer");
    feld_ = fenster_.findChild<QLineEdit*>(u"txt_Filter"_s);
    baum_ = fenster_.findChild<QTreeView*>(u"tree_Vorgaenge"_s);
    takt_.setInterval(0);
    QObject::connect(&takt_, &QTimer::timeout, [this] { merke_Pause(); });
    takt_.start();
    uhr_.start();
  }

  /// Types a text letter by letter, each behind the painted answer to the one before.
  void tippe(const QString& text) {
    leere();
    QString bisher;
    for (const QChar c : text) {
      bisher += c;
      const double zeit = messung::sekunden([&] {
        QTest::sendKeyEvent(
            QTest::Click, feld_, static_cast<Qt::Key>(c.toUpper().unicode()), QString(c), Qt::NoModifier);
        warte_auf_Antwort();
        baum_->viewport()->repaint();
      });
      zeiten.push_back(zeit);
      if (zeit > Antwort_Schlimmstens) std::printf("  \"%s\" took %.1f ms\n", qPrintable(bisher), zeit * 1e3);
      verlange(QTest::qWaitFor([&] { return fenster_.ruht(); }, 60'000), "no number");
    }
    std::printf("  %-40s %8.1f ms for the last letter, %d shown\n", qPrintable(text), zeiten.back() * 1e3,
        fenster_.liste()->anzahl());
  }

  std::vector<double> zeiten;
  double laengste_Pause = 0;

 private:
  static Wirtsoptionen optionen(const QString& daten) {
    Wirtsoptionen eine;
    eine.datenordner = daten;
    return eine;
  }
  void warte_auf_Antwort() {
    while (fenster_.fragt()) QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  void leere() {
    feld_->clear();
    verlange(QTest::qWaitFor([&] { return fenster_.ruht(); }, 60'000), "no answer");
  }
  /// How long the window did not come back to its events.
  void merke_Pause() {
    laengste_Pause = std::max(laengste_Pause, static_cast<double>(uhr_.nsecsElapsed()) / 1e9);
    uhr_.restart();
  }

  Hauptfenster fenster_;
  QLineEdit* feld_ = nullptr;
  QTreeView* baum_ = nullptr;
  QTimer takt_;
  QElapsedTimer uhr_;
};

void messe_Tippen(const QString& gross) {
  Tippen probe(gross);
  for (const QString& text : {u"ab"_s, u"gmbh"_s, u"12-345"_s, u"ab 07-0"_s, u"ART-0000008"_s, u"huber ulm kessel"_s,
           u"öztürk solaranlage gmbh"_s, u"xyzzy"_s, u"k g"_s})
    probe.tippe(text);
  const double mitte = messung::median(probe.zeiten);
  const double schlimmste = *std::max_element(probe.zeiten.begin(), probe.zeiten.end());
  const auto zeile = [](const char* name, double wert, double ziel) {
    std::printf("%-58s %10.1f ms  (aim <= %.0f ms)%s\n", name, wert * 1e3, ziel * 1e3, wert <= ziel ? "" : " NO");
    messung::erwarte(wert <= ziel);
  };
  zeile("letter typed until its answer is painted, median", mitte, Antwort_Mitte);
  zeile("the same at worst", schlimmste, Antwort_Schlimmstens);
  zeile("longest time without events while typing", probe.laengste_Pause, Stillstand);
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir eigener;
  const QString ordner = argc > 1 ? QString::fromLocal8Bit(argv[1]) : eigener.path();
  const int vorgaenge = argc > 2 ? std::atoi(argv[2]) : 1'000'000;
  int keine = 1;
  const QApplication programm(keine, argv);
  const QString gross = grosser_Ordner(ordner, vorgaenge);
  const QString klein = eigener.filePath(u"klein"_s);
  datenordner::richte_ein(namen::tabellenpfad(klein));
  vergleiche_Start(gross.toStdString(), klein.toStdString());
  messe_Tippen(gross);
  return messung::urteil();
}
