#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <iosfwd>
#include <vector>

#include "exif/clsExifInfo.h"

/// What one Load gave.
struct Ladeergebnis {
  std::int32_t fehler = 0;  ///< Number of the failure that reached the caller, 0 for none.
  bool load = false;
  bool is_loaded = false;
  std::vector<Exif_Entry> entries;
};

bool operator==(const Exif_Entry& links, const Exif_Entry& rechts);
bool operator==(const Ladeergebnis& links, const Ladeergebnis& rechts);
void PrintTo(const Exif_Entry& entry, std::ostream* os);
void PrintTo(const Ladeergebnis& ergebnis, std::ostream* os);

/// Loads a file with a new object.
Ladeergebnis lade(const QString& pfad);

/// Reads the same from the whole content in memory, rule by rule and byte by byte, without anything of the reader's.
Ladeergebnis referenz(const QByteArray& inhalt);
