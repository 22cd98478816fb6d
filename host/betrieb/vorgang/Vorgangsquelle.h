#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "host/betrieb/vorgang/Vorgang.h"
#include "platform/adodb/Connection.h"

/// Reads the business records from the host's tables.
namespace vorgangsquelle {

struct Bestand {
  /// By kind, and by number within a kind.
  QList<Vorgang> vorgaenge;
  /// One line for each kind of record whose table could not be read.
  QStringList hinweise;
};

/// Reads all records and the numbers of their pictures: one query for all numbers, one for each table of the host. A
/// record that only Bild_Zuordnungen knows is listed too. A table of the host that is missing is told in `hinweise`.
/// Raises what the connection raises for Bild_Zuordnungen.
Bestand lies(adodb::Connection& verbindung);

}  // namespace vorgangsquelle
