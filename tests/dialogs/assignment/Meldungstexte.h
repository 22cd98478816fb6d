#pragma once

#include "platform/host/Oberflaeche.h"

/// The boxes of the assignment dialog, as they must come.
namespace meldung {

inline oberflaeche::Meldung doppelte_Datei() {
  return {QStringLiteral("Datei mit gleichem Namen schon vohanden!"), QStringLiteral("Doppelte Datei"),
      oberflaeche::Symbol::Information, oberflaeche::Knoepfe::OK};
}

inline oberflaeche::Meldung speichern() {
  return {QStringLiteral("Daten wurden verändert! Wollen Sie die Zuordnung speichern?"), QStringLiteral("Achtung"),
      oberflaeche::Symbol::Frage, oberflaeche::Knoepfe::JaNeinAbbrechen};
}

inline oberflaeche::Meldung umbenannt() {
  return {
      QStringLiteral("Der Dateiname eines oder mehrere schon zugeordneten Bilder wurde verändert.\r\n\r\nWollen Sie "
                     "diese Änderung jetzt durchführen?"),
      QStringLiteral("Dateinamen wurden verändert"), oberflaeche::Symbol::Keins, oberflaeche::Knoepfe::JaNeinAbbrechen};
}

inline oberflaeche::Meldung nicht_umbenannt(const QString& datei) {
  return {QStringLiteral("Datei ") + datei + QStringLiteral(" konnte nicht umbennant werden"), {}};
}

}  // namespace meldung
