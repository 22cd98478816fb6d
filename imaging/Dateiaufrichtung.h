#pragma once

#include "imaging/Aufrichtung.h"

namespace aufrichtung {

/// Sets the picture of a file upright in its place, as richte_auf does; the file keeps its time stamp and its rights,
/// read-only ones too, and at each moment its name stands for the whole old picture or the whole new one. `quelle` is
/// the file that it is a copy of. Never raises: what fails leaves the file as it is, with the reason in the result. The
/// result's bytes are empty.
Ergebnis richte_Datei_auf(const QString& datei, const QString& quelle);

}  // namespace aufrichtung
