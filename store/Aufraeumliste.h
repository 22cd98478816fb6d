#pragma once

#include <QString>
#include <vector>

#include "platform/basic/Variant.h"

/// One file or folder that a clearing of the picture tree deletes.
struct Aufraeumposten {
  enum class Grund {
    OhneZuordnung,       ///< no row of Bild_Zuordnungen names the file
    AbfrageGescheitert,  ///< the question for the file's rows failed, and no earlier answer of the folder keeps it
    TextOhneBild,        ///< a text file whose picture does not exist, or whose name is too short to name one
    LeererOrdner         ///< a folder that holds nothing any more
  };
  /// As the clearing composes it: the folder it began at, backslashes, names.
  QString Pfad;
  Grund Warum = Grund::OhneZuordnung;

  bool ist_Ordner() const noexcept { return Warum == Grund::LeererOrdner; }
};

/// What a clearing deletes, in its order.
struct Aufraeumliste {
  /// What the clearing itself would give: True; False where a subfolder could not be cleared; Empty where the folder
  /// could not be read. Where it is not True, folders are left out.
  Variant Ergebnis;
  std::vector<Aufraeumposten> Posten;
};
