#pragma once

#include <QString>
#include <memory>

#include "platform/adodb/Connection.h"
#include "platform/host/Anwendungsobjekt.h"

/// The settings in the program's own table "Einstellungen". A table that is missing or can't be read raises its
/// failure.
class Einstellungstabelle final : public Einstellungen {
 public:
  explicit Einstellungstabelle(std::shared_ptr<adodb::Connection> verbindung) : verbindung_(std::move(verbindung)) {}
  void GetSetting(const QString& pAbschnitt, const QString& pSchluessel, QString& pWert, const QString& pProgramm,
      const QString& pBenutzer, const QString& pVorgabe) override;

 private:
  std::shared_ptr<adodb::Connection> verbindung_;
};
