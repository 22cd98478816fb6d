#pragma once

#include <QSet>
#include <QString>
#include <cstdint>

#include "host/betrieb/Namen.h"
#include "host/betrieb/vorgang/Datensatz.h"
#include "store/clsBildZuordnungen.h"

/// Names and rows of new pictures in a record.
namespace bildzeilen {

/// The names that new pictures of a record can't have: those of the files in its folder, of its rows, and of the
/// pictures that were named before. A missing folder holds none.
class Vergebene {
 public:
  Vergebene(clsBildZuordnungen& store, const QString& ordner);

  /// The picture's name with the stamp behind it, which is taken from then on. A name that is taken gets a number: two
  /// pictures of one name in one second stay two.
  namen::Bilddatei freier_Name(const namen::Bilddatei& alt, const QString& stempel);

 private:
  /// In upper case, as a share compares them; the text files of pictures too.
  QSet<QString> namen_;
};

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
