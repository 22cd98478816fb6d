#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include "platform/host/KVOCore.h"

/// The core component as a program with windows has it when its host brings none: reports are told in message boxes,
/// and window placements are kept in the user's configuration.
///
/// Placements lie in one INI file for each application, "Fenster.ini" in a folder named after it, with one group for
/// each window name: `Links`, `Oben`, `Breite`, `Hoehe` in logical pixels of the normal window, and `Maximiert`.
class FensterCore final : public KVOCore {
 public:
  /// With `mitMeldung` a message box, otherwise one line on standard error.
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool mitMeldung) override;
  /// Leaves the window alone when nothing was stored or when what was stored is no placement.
  void FensterWiederherstellen(const QString& anwendung, Fensterplatz& fenster) override;
  /// An empty placement isn't kept, and neither is any where the configuration can't be written; nobody is told.
  void FensterSpeichern(const QString& anwendung, const Fensterplatz& fenster) override;
};

/// A window's inner rectangle as the usable areas of today's screens allow it, all in logical pixels. One that can be
/// grasped by its title bar on some screen and is no larger than that screen stays as it is; any other comes back
/// whole onto the nearest screen, as small as that needs. Without screens nothing changes.
QRect eingepasst(const QRect& rechteck, const QList<QRect>& bildschirme);
