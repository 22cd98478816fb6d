#pragma once

#include <QString>

#include "host/bericht/ausgabe/Ausgabebild.h"

/// What the user chose when pictures were handed out last, kept beside the places of the program's windows. That place
/// data goes with them is never kept: it is chosen anew each time.
struct Ausgabeeinstellung {
  Ausgabewahl wahl;
  bool als_Zip = false;
  /// Folder of this machine that held the target, or empty.
  QString ordner;

  static Ausgabeeinstellung gemerkte();
  void merke() const;
};
