#pragma once

#include <QList>

#include "host/kvobild/pruefung/Befund.h"

/// What is known of the values in Bild_Vorgaenge.
struct Sichtwerte {
  qint64 vorgaenge = 0;
  QList<Befund> befunde;
};

/// Looks for records that the programs can't work with: parts of the key that are empty, NULL, "-", too long or hold an
/// apostrophe, keys that stand there twice, folders that leave the picture root; and for what they would show cut or
/// under a name that nobody gave. `mit_Textstand`: that column has to be judged by its values. Raises what the
/// connection raises.
Sichtwerte pruefe_Sichtwerte(adodb::Connection& verbindung, bool mit_Textstand);
