#include "host/betrieb/beispiel/Uebernahme.h"

#include <QStringList>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"

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

bool gibt_es(adodb::Connection& verbindung, const QString& tabelle) {
  return !verbindung.Execute(u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '%1'"_s.arg(tabelle))->Eof();
}

/// Whole or not there: a copy that a full disk cut short must not be taken for the old state.
void sichere(adodb::Connection& verbindung, const QString& ordner) {
  const FileSystemObject dateien;
  const QString neu = ordner + u"\\betrieb-vorher.neu"_s;
  if (dateien.FileExists(neu)) dateien.DeleteFile(neu, true);
  verbindung.Execute(u"VACUUM INTO "_s + literal(QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(neu))));
  QString ziel = ordner + u"\\betrieb-vorher.db"_s;
  for (int i = 2; dateien.FileExists(ziel); ++i) ziel = ordner + u"\\betrieb-vorher-%1.db"_s.arg(i);
  dateien.MoveFile(neu, ziel);
}

void uebernimm(adodb::Connection& verbindung) {
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
  });
  verbindung.Execute(grund ? u"ROLLBACK TRANSACTION"_s : u"COMMIT TRANSACTION"_s);
  if (grund) throw Laufzeitfehler(*grund);
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
  const auto ausfall = versuche_Datenbank([&] {
    if (schema::hat_eigene_Vorgaenge(*verbindung)) return;
    sichere(*verbindung, ordner);
    uebernimm(*verbindung);
  });
  if (!ausfall || ausfall->grund == Datenbankgrund::Recht_fehlt) return;
  throw Abbruch(Ausgang::Datenbank,
      u"Die Datenbank im Datenordner „%1“ ist nicht auf den heutigen Stand zu bringen und unverändert: %2"_s.arg(
          namen::angezeigt(ordner), ausfall->worte));
}
