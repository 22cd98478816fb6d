#pragma once

#include <QString>

#include "host/betrieb/Namen.h"

/// A picture file that is to be taken in.
struct Aufnahmequelle {
  /// As the user or another program named it.
  QString angabe;
  /// The table's form of its path.
  QString pfad;
  /// Its own name, which a share and the table can hold.
  namen::Bilddatei name;
};

namespace aufnahmequelle {

/// Judges name and place. A wrong name ends with Abbruch, Ausgang::Aufruf; a folder and a file that is not there with
/// Ausgang::Datei.
Aufnahmequelle pruefe(const QString& angabe);
/// The same of a file of this machine that another program has handed over, which must be a picture that the system
/// knows or can make into one. A link to nowhere is called so.
Aufnahmequelle pruefe_Bild(const QString& ort);

}  // namespace aufnahmequelle
