#pragma once

#include <QString>
#include <vector>

#include "component/weg/Verbindungen.h"

/// Writing that the store's own statements can't do row by row. All of it goes over the thread's writing connection.
namespace weg {

/// Puts exactly these rows in the place of all that share the identity of `einer`, in one transaction: it happens whole
/// or not at all. Every identity part of `einer` must be there. Why it failed, or empty.
QString ersetze_Gruppe(
    const Verbindungen& verbindungen, const clsBilderSpeicher& einer, const std::vector<clsBilderSpeicher>& zeilen);

/// Renames a picture in the rows of all records, or, with `nur_von`, in those of that one record. Only the table, not
/// the file. Why it failed, or empty.
QString benenne_in_Tabelle_um(const Verbindungen& verbindungen, const clsBilderSpeicher& alt,
    const clsBilderSpeicher& neu, const Zuordnungsweg::Vorgang* nur_von);

}  // namespace weg
