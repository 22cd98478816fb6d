#pragma once

#include <QString>

#include "platform/host/KVOCore.h"

/// The core component as this program has it: failures come in a message box, window placements are kept in a file.
class Wirtskern final : public KVOCore {
 public:
  /// The file, a path of this machine; with none nothing is kept.
  explicit Wirtskern(QString einstellungsdatei = {}) : datei_(std::move(einstellungsdatei)) {}

  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
                    bool mitMeldung) override;
  void FensterWiederherstellen(const QString& anwendung, Fensterplatz& fenster) override;
  void FensterSpeichern(const QString& anwendung, const Fensterplatz& fenster) override;

 private:
  QString datei_;
};
