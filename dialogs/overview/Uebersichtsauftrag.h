#pragma once

#include <QString>
#include <memory>

#include "platform/host/Anwendungsobjekt.h"

/// What an entry point hands to both overview dialogs.
struct Uebersichtsauftrag {
  std::shared_ptr<Anwendungsobjekt> pAppObj;
  /// Root of the picture tree, without a closing backslash.
  QString pRootpath;
  QString pStandardBildPfad;
  /// The assignment from which the dialog was opened.
  QString pKey1, pKey2, pKey3, pKey4;
  QString PTyp1, pTyp2;
  QString pGL_jmtVerarbeitungsdatum;
  QString pInfoZeile;
};
