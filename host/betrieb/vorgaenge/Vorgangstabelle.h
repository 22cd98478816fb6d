#pragma once

#include <QList>
#include <QString>
#include <array>
#include <optional>

#include "host/betrieb/vorgang/Vorgang.h"
#include "platform/adodb/Connection.h"

/// A customer as the table Kunden holds him.
struct Kunde {
  QString nummer;
  QString name;
  QString ort;
  friend bool operator==(const Kunde&, const Kunde&) = default;
};

/// What tells one record from all others. A part that the record does not have is empty.
struct Vorgangsschluessel {
  QString typ1;
  std::array<QString, 3> keys;
  friend bool operator==(const Vorgangsschluessel&, const Vorgangsschluessel&) = default;
};

/// A record as the table Vorgaenge holds it.
struct Vorgangssatz {
  Vorgangsschluessel schluessel;
  std::optional<QString> kundennummer;
  std::optional<QString> projektnummer;
  QString text;
  std::optional<QString> ordner;
  /// "2026-11-22 09:15:00".
  std::optional<QString> stand;
  friend bool operator==(const Vorgangssatz&, const Vorgangssatz&) = default;
};

/// The firm's records in the embedded database's own tables. What writes does it in one transaction, and ends with
/// Abbruch and words where nothing was written; what reads raises what the connection raises.
namespace vorgangstabelle {

/// The key of a record of the list.
Vorgangsschluessel schluessel_von(const Vorgang& vorgang);
/// "Beleg AB 24-1001".
QString genannt(const Vorgangsschluessel& schluessel);

std::optional<Vorgangssatz> lies(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel);
bool gibt_es(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel);
/// Rows of Bild_Zuordnungen that name the record.
int anzahl_Bilder(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel);
std::optional<Kunde> kunde(adodb::Connection& verbindung, const QString& nummer);
/// The first customers whose number begins with what was typed, or whose name or place has it; all where it is empty.
QList<Kunde> kunden(adodb::Connection& verbindung, const QString& eingabe, int hoechstens);

/// Makes a record, and its customer where he is new. Its `stand` is this moment where it has none.
void mache(adodb::Connection& verbindung, const Vorgangssatz& satz, const std::optional<Kunde>& neuer_Kunde);
/// Changes a record that was read as `gelesen`. Refused where another desk has changed it since, and where its kind or
/// number would change although it has pictures.
void aendere(adodb::Connection& verbindung, const Vorgangssatz& gelesen, const Vorgangssatz& neu,
    const std::optional<Kunde>& neuer_Kunde);
/// Deletes a record; refused where it has pictures.
void loesche(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel);

}  // namespace vorgangstabelle
