#pragma once

#include <QString>
#include <memory>

#include "platform/host/Anwendungsobjekt.h"

/// What an entry point hands to a dialog.
struct Auftrag {
  std::shared_ptr<Anwendungsobjekt> pAppObj;
  /// Root of the picture tree, without a closing separator.
  QString pRootpath;
  /// Folder of the record below the root; new pictures are copied there.
  QString pStandardBildPfad;
  QString PTyp1, pTyp2;
  QString pGL_jmtVerarbeitungsdatum;
  QString pInfoZeile;
};

/// The overviews also know the assignment from which they were opened.
struct Uebersichtsauftrag : Auftrag {
  QString pKey1, pKey2, pKey3, pKey4;
};
