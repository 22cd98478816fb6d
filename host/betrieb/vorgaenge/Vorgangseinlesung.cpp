#include "host/betrieb/vorgaenge/Vorgangseinlesung.h"

#include <utility>
#include <vector>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/vorgaenge/Einlesezeile.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung_Teile.h"
#include "host/betrieb/vorgang/Vorgang.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;

namespace {

/// Lines between two looks at whether to give up.
constexpr int Takt = 500;

Wert oder_Null(const QString& text) {
  return text.isEmpty() ? Wert() : Wert(text);
}

std::vector<Wert> werte_von(qint64 folge, const Einlesezeile& zeile) {
  std::vector<Wert> werte{folge, zeile.nummer, zeile.fehler.isEmpty() ? Wert(zeile.kennung) : Wert(), zeile.genannte,
      oder_Null(zeile.fehler), oder_Null(zeile.fehler_neu), oder_Null(zeile.fehler_anders)};
  // What a wrong line holds may be no text for a database at all.
  for (const auto& wert : zeile.werte) werte.push_back(wert && zeile.fehler.isEmpty() ? Wert(*wert) : Wert());
  return werte;
}

}  // namespace

Vorgangseinlesung::Vorgangseinlesung(adodb::Connection& verbindung, Fortschritt fortschritt)
    : verbindung_(verbindung), fortschritt_(std::move(fortschritt)) {}

Vorgangseinlesung::~Vorgangseinlesung() {
  for (const QString& tabelle : einlesung::Tabellen)
    gelingt([&] { verbindung_.Execute(u"DROP TABLE IF EXISTS temp."_s + tabelle); });
}

void Vorgangseinlesung::melde(Schritt schritt, qint64 getan, qint64 ganz) {
  if (fortschritt_ && !fortschritt_(schritt, getan, ganz))
    throw Abbruch(Ausgang::Teilweise, u"Abgebrochen; es ist nichts übernommen."_s);
}

qint64 Vorgangseinlesung::zahl(const QString& abfrage) {
  return verbindung_.Execute(abfrage)->Text(0).toLongLong();
}

/// Changes when another connection writes.
QString Vorgangseinlesung::datenversion() {
  return verbindung_.Execute(u"PRAGMA data_version"_s)->Text(0);
}

void Vorgangseinlesung::lege_an() {
  // The index of a large firm is walked at random; with SQLite's 2 MB each page would be read again and again.
  verbindung_.Execute(u"PRAGMA cache_size = -65536"_s);
  for (const QString& tabelle : einlesung::Tabellen) verbindung_.Execute(u"DROP TABLE IF EXISTS temp."_s + tabelle);
  verbindung_.Execute(
      u"CREATE TEMP TABLE Einlesen_Zeilen (Folge INTEGER PRIMARY KEY, Zeile INTEGER, Kennung TEXT COLLATE SERVERTEXT, "
      "Genannte INTEGER, Fehler TEXT, Fehler_neu TEXT, Fehler_anders TEXT, Typ1 TEXT, Key1 TEXT, Key2 TEXT, Key3 TEXT, "
      "Kundennummer TEXT, Kundenname TEXT, Ort TEXT, Projektnummer TEXT, Text TEXT, Ordner TEXT, Stand TEXT, "
      "Nr INTEGER, Art INTEGER, Grund TEXT)"_s);
  verbindung_.Execute(
      u"CREATE TEMP TABLE Einlesen_Doppelte (Kennung TEXT COLLATE SERVERTEXT PRIMARY KEY, Folge INTEGER)"_s);
  verbindung_.Execute(
      u"CREATE TEMP TABLE Einlesen_Kunden (Kundennummer TEXT COLLATE SERVERTEXT PRIMARY KEY, Name TEXT, Ort TEXT, "
      "Zeile INTEGER, Folge INTEGER, Neu INTEGER)"_s);
  verbindung_.Execute(u"CREATE TEMP TABLE Einlesen_Beruehrte (Nr INTEGER PRIMARY KEY)"_s);
}

void Vorgangseinlesung::lies(Listenleser& liste, const Spaltenwahl& wahl) {
  verglichen_.clear();
  einlesung::geschuetzt([&] {
    lege_an();
    // One transaction over the temporary tables alone: nobody else waits for it.
    verbindung_.Execute(u"BEGIN"_s);
    const auto ende = qScopeGuard([this] { gelingt([this] { verbindung_.Execute(u"COMMIT"_s); }); });
    lies_Zeilen(liste, wahl);
    finde_Doppelte();
  });
}

void Vorgangseinlesung::lies_Zeilen(Listenleser& liste, const Spaltenwahl& wahl) {
  static const QString Einfuegen =
      u"INSERT INTO Einlesen_Zeilen (Folge, Zeile, Kennung, Genannte, Fehler, Fehler_neu, Fehler_anders, Typ1, Key1, "
      "Key2, Key3, Kundennummer, Kundenname, Ort, Projektnummer, Text, Ordner, Stand) VALUES (?"_s +
      u", ?"_s.repeated(6 + static_cast<qsizetype>(Vorgangsspaltenzahl)) + u')';
  liste.von_vorn();
  Listenzeile zeile;
  if (wahl.kopfzeile) liste.naechste(zeile);
  for (qint64 folge = 1; liste.naechste(zeile); ++folge) {
    verbindung_.Execute(Einfuegen, werte_von(folge, als_Einlesezeile(zeile, wahl)));
    if (folge % Takt == 0) melde(Schritt::Lesen, liste.gelesen(), liste.groesse());
  }
  melde(Schritt::Lesen, liste.groesse(), liste.groesse());
}

/// The first line of a number counts; which of them is meant, only the firm knows.
void Vorgangseinlesung::finde_Doppelte() {
  verbindung_.Execute(u"CREATE INDEX temp.Einlesen_Kennung ON Einlesen_Zeilen (Kennung)"_s);
  verbindung_.Execute(
      u"INSERT INTO Einlesen_Doppelte (Kennung, Folge) SELECT Kennung, MIN(Folge) FROM Einlesen_Zeilen "
      "WHERE Fehler IS NULL GROUP BY Kennung HAVING COUNT(*) > 1"_s);
  verbindung_.Execute(
      u"UPDATE Einlesen_Zeilen SET Fehler = 'dieselbe Nummer steht schon in Zeile ' || (SELECT e.Zeile FROM "
      "Einlesen_Doppelte d JOIN Einlesen_Zeilen e ON e.Folge = d.Folge WHERE d.Kennung = Einlesen_Zeilen.Kennung) "
      "WHERE Fehler IS NULL AND Folge IN (SELECT z.Folge FROM Einlesen_Doppelte d JOIN Einlesen_Zeilen z "
      "ON z.Kennung = d.Kennung WHERE z.Folge > d.Folge)"_s);
}

QList<Zeilenbefund> Vorgangseinlesung::zeilen(std::optional<Zeilenart> art, qint64 hinter, int hoechstens) {
  QList<Zeilenbefund> liste;
  einlesung::geschuetzt([&] {
    const auto satz = verbindung_.Execute(
        u"SELECT Folge, Zeile, Art, Typ1, Key1, Key2, Key3, Text, Grund FROM Einlesen_Zeilen WHERE Folge > ? AND "
        "(? IS NULL OR Art = ?) ORDER BY Folge LIMIT ?"_s,
        {Wert(hinter), art ? Wert(std::int64_t{static_cast<int>(*art)}) : Wert(),
            art ? Wert(std::int64_t{static_cast<int>(*art)}) : Wert(), Wert(std::int64_t{hoechstens})});
    for (; !satz->Eof(); satz->MoveNext()) {
      const auto v = vorgang::aus_Schluesseln(satz->Text(3), satz->Text(4), satz->Text(5), satz->Text(6));
      const bool gelesen = !satz->Text(4).isEmpty();
      liste.append(
          {satz->Text(0).toLongLong(), satz->Text(1).toLongLong(), static_cast<Zeilenart>(satz->Text(2).toInt()),
              satz->Text(3), gelesen ? v.nummer : QString(), satz->Text(7), satz->Text(8)});
    }
  });
  return liste;
}

namespace einlesung {

const QStringList Tabellen{u"Einlesen_Zeilen"_s, u"Einlesen_Doppelte"_s, u"Einlesen_Kunden"_s, u"Einlesen_Beruehrte"_s};

}  // namespace einlesung
