#pragma once

#include <optional>

#include "host/kvobild/pruefung/Tabellenpruefung.h"
#include "platform/adodb/Connection.h"

/// What is known of the firm's records.
struct Sichtlage {
  /// The view Bild_Vorgaenge as the other tables, and its findings; no table where there is none.
  Tabellenlage sicht;
  /// Its records, where they could be read.
  std::optional<qint64> vorgaenge;
};

/// Looks at Bild_Vorgaenge: its columns with their types, the right to read it, whether it answers what the programs
/// ask, and the values of its records; in tables of our own also whether the search index is in step.
/// `mit_Zuordnungen`: Bild_Zuordnungen is there, whose pictures the programs count with the records. Costs four walks
/// over the records, however many there are: the counts of all that can be wrong with one, its doubled keys, its kinds
/// and its folders; a walk more for each kind of finding, to name its first rows. Only the folders are read, each once.
/// The index is read with the texts that it is made of, which takes longest; others can't write meanwhile. Raises what
/// the connection raises when it can't go on.
Sichtlage pruefe_Sicht(adodb::Connection& verbindung, bool mit_Zuordnungen);
