#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

#include "store/Aufraeumliste.h"

/// One file or folder that the component's clearing would delete and a host's leaves where it is.
struct Bleibendes {
  enum class Grund {
    Genannt,      ///< a row names it in full, at another dot than the clearing parts names at
    TextZuBild,   ///< a text file whose picture stays
    Neu,          ///< it came a short while ago: somebody may stand between the copy and the save
    Papierkorb,   ///< an earlier clearing has put it away, of another root that lies in this one
    Ausgenommen,  ///< the user has taken it off the list
  };
  /// As in Aufraeumposten.
  QString Pfad;
  Grund Warum = Grund::Genannt;
  bool ist_Ordner = false;
};

/// What a host's clearing takes away, and what it leaves of that which the component's would take too.
struct Aufraeumplan : Aufraeumliste {
  std::vector<Bleibendes> Bleibend;
  /// What came later is new, in nanoseconds since 1970; none: nothing is.
  std::optional<std::int64_t> Stichzeit;
};
