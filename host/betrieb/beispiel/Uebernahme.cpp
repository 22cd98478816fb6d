#include "host/betrieb/beispiel/Uebernahme.h"

#include <QStringList>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The tables of an older data folder with the columns that are taken over.
const QStringList& bisherige() {
  static const QStringList Alle{u"Kunden (Kundennummer, Name, Ort)"_s,
      u"BelegKopfZunft (Belegart, Belegnummer, Kundennummer, Projektnummer)"_s,
      u"Montageauftraege (Belegart, Belegnummer, MontageNr, Aufgabe)"_s,
      u"Artikelstamm (Artikelnummer, Bezeichnung, Bezeichnung3, Hauptlieferant)"_s,
      u"Anlagen (Referenz1, Referenz2, Referenz3, Bezeichnung)"_s};
  return Alle;
}

/// Where a row of an older table, `b`, stands today: what names it, and the table of today with its condition.
struct Verbleib {
  QString tabelle;
  QString kennung;
  QString heute;
};

const QList<Verbleib>& verbleibe() {
  static const QString In_Vorgaengen =
      u"Vorgaenge v ON v.Typ1 = '%1' AND v.Key1 = %2 AND v.Key2 = %3 AND v.Key3 = %4"_s;
  static const QList<Verbleib> Alle{
      {u"Kunden"_s, u"v.Kundennummer"_s, u"Kunden v ON v.Kundennummer = b.Kundennummer"_s},
      {u"BelegKopfZunft"_s, u"v.Nr"_s,
          In_Vorgaengen.arg(u"BEL"_s, u"b.Belegart"_s, u"COALESCE(b.Belegnummer, '')"_s, u"''"_s)},
      {u"Montageauftraege"_s, u"v.Nr"_s,
          In_Vorgaengen.arg(
              u"MON"_s, u"b.Belegart"_s, u"COALESCE(b.Belegnummer, '')"_s, u"COALESCE(b.MontageNr, '')"_s)},
      {u"Artikelstamm"_s, u"v.Nr"_s, In_Vorgaengen.arg(u"ART"_s, u"b.Artikelnummer"_s, u"''"_s, u"''"_s)},
      {u"Anlagen"_s, u"v.Nr"_s,
          In_Vorgaengen.arg(
              u"ANL"_s, u"b.Referenz1"_s, u"COALESCE(b.Referenz2, '')"_s, u"COALESCE(b.Referenz3, '')"_s)}};
  return Alle;
}

/// Rows of the older tables that those of today did not take: without a number, with one that is too long, or with one
/// that stands there twice.
int ausgelassene(adodb::Connection& verbindung) {
  int anzahl = 0;
  for (const Verbleib& eine : verbleibe())
    anzahl +=
        verbindung
            .Execute(
                u"SELECT (SELECT COUNT(*) FROM %1_bisher) - (SELECT COUNT(DISTINCT %2) FROM %1_bisher b JOIN %3)"_s.arg(
                    eine.tabelle, eine.kennung, eine.heute))
            ->Text(0)
            .toInt();
  return anzahl;
}

bool gibt_es(adodb::Connection& verbindung, const QString& tabelle) {
  return !verbindung.Execute(u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '%1'"_s.arg(tabelle))->Eof();
}

/// Whole or not there: a copy that a full disk cut short must not be taken for the old state. Gives its name.
QString sichere(adodb::Connection& verbindung, const QString& ordner) {
  const FileSystemObject dateien;
  const QString neu = ordner + u"\\betrieb-vorher.neu"_s;
  if (dateien.FileExists(neu)) dateien.DeleteFile(neu, true);
  verbindung.Execute(u"VACUUM INTO "_s + literal(QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(neu))));
  QString ziel = ordner + u"\\betrieb-vorher.db"_s;
  for (int i = 2; dateien.FileExists(ziel); ++i) ziel = ordner + u"\\betrieb-vorher-%1.db"_s.arg(i);
  dateien.MoveFile(neu, ziel);
  return ziel;
}

/// Gives the number of rows that were left out.
int uebernimm(adodb::Connection& verbindung) {
  int ohne = 0;
  verbindung.Execute(u"BEGIN IMMEDIATE TRANSACTION"_s);
  const auto grund = versuche([&] {
    // Another program may have come first.
    if (schema::hat_eigene_Vorgaenge(verbindung)) return;
    for (const QString& spalten : bisherige()) {
      const QString tabelle = spalten.section(u' ', 0, 0);
      if (gibt_es(verbindung, tabelle))
        verbindung.Execute(u"ALTER TABLE %1 RENAME TO %1_bisher"_s.arg(tabelle));
      else
        verbindung.Execute(u"CREATE TABLE %1_bisher %2"_s.arg(tabelle, spalten.section(u' ', 1)));
    }
    schema::richte_Betrieb_ein(verbindung);
    schema::uebernimm_Betrieb(verbindung);
    ohne = ausgelassene(verbindung);
    for (const Verbleib& eine : verbleibe()) verbindung.Execute(u"DROP TABLE %1_bisher"_s.arg(eine.tabelle));
  });
  verbindung.Execute(grund ? u"ROLLBACK TRANSACTION"_s : u"COMMIT TRANSACTION"_s);
  if (grund) throw Laufzeitfehler(*grund);
  return ohne;
}

}  // namespace

bool uebernahme::noetig(const QString& ordner) {
  std::shared_ptr<adodb::Connection> verbindung;
  bool alt = false;
  return !versuche_zu_oeffnen(datenordner::verbindung(ordner), verbindung) &&
      gelingt([&] { alt = !schema::hat_eigene_Vorgaenge(*verbindung); }) && alt;
}

void uebernahme::bringe_auf_Stand(const QString& ordner) {
  const auto verbindung = oeffne(datenordner::verbindung(ordner));
  int ohne = 0;
  QString vorher;
  const auto ausfall = versuche_Datenbank([&] {
    if (schema::hat_eigene_Vorgaenge(*verbindung)) return kennzeichne(*verbindung);
    vorher = sichere(*verbindung, ordner);
    ohne = uebernimm(*verbindung);
  });
  if (ohne > 0)
    oberflaeche::MsgBox(
        u"Beim Übernehmen in die neuen Tabellen sind %1 Zeilen ausgelassen, deren Nummer fehlt, zu lang ist "
        "oder schon dasteht. Sie stehen weiter in „%2“."_s.arg(QString::number(ohne), namen::angezeigt(vorher)),
        oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Ausrufezeichen, u"Bildzuordnung"_s);
  if (!ausfall || ausfall->grund == Datenbankgrund::Recht_fehlt) return;
  throw Abbruch(Ausgang::Datenbank,
      u"Die Datenbank im Datenordner „%1“ ist nicht auf den heutigen Stand zu bringen und unverändert: %2"_s.arg(
          namen::angezeigt(ordner), ausfall->worte));
}
