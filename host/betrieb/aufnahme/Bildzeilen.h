#pragma once

#include <QString>
#include <cstdint>
#include <functional>

#include "host/betrieb/Namen.h"
#include "host/betrieb/vorgang/Datensatz.h"
#include "store/clsBildZuordnungen.h"

/// Names and rows of new pictures in a record.
namespace bildzeilen {

/// The picture's name with the stamp behind it. A name that is taken, by a file of the folder, by a row of the record
/// or by what `vergeben` tells, gets a number: two pictures of one name in one second stay two.
namen::Bilddatei freier_Name(const namen::Bilddatei& alt, const QString& stempel, const QString& ordner,
    clsBildZuordnungen& store, const std::function<bool(const namen::Bilddatei&)>& vergeben = {});

/// Makes the folder of the new pictures where it is missing. A failure ends with Abbruch, Ausgang::Datei.
void mache_Ordner(clsBildZuordnungen& store, const QString& ordner);

/// The first SortIndex behind those of the rows, for that many new ones. Ends with Abbruch, Ausgang::Datenbank, where
/// the column does not reach so far. The rows have the places of the table (Zuordnungsweg::uebernimm_Reihenfolge).
std::int64_t naechster_Platz(clsBildZuordnungen& store, std::int64_t anzahl);

/// Adds the row of a picture whose copy is in place; it is the current one then. `alt` is the source's name for the
/// words of a failure, which ends with Abbruch, Ausgang::Datenbank.
void lege_an(clsBildZuordnungen& store, const Datensatz& satz, const namen::Bilddatei& alt, const namen::Bilddatei& neu,
    const QString& pfad, std::int64_t platz);

}  // namespace bildzeilen
