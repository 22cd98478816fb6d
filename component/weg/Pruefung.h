#pragma once

#include <QStringList>
#include <vector>

#include "component/weg/Satz.h"

namespace weg {

/// What the table is to hold of a row after the save.
struct Wunsch {
  enum class Art { Einfuegen, Aendern, Entfernen };
  Art art = Art::Aendern;
  Stand soll;
};

struct Befund {
  /// `Fehlt`: no such row. `Anders`: it holds something else. `Steht_noch`: it should be gone. `Doppelt`: the new row
  /// stands there twice, all columns equal.
  enum class Lage { Erfuellt, Fehlt, Anders, Steht_noch, Doppelt };
  Lage lage = Lage::Erfuellt;
  /// For `Anders`, in words for the user.
  QStringList abweichungen;
};

/// Compares all rows of a record with what was wanted; one finding for each wish. Rows that no wish is about are not
/// looked at. Rows of one identity are counted: as many must be there as are wanted, each once.
std::vector<Befund> pruefe(const std::vector<Wunsch>& wuensche, const std::vector<Stand>& gefunden);

}  // namespace weg
