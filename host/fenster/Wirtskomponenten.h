#pragma once

#include <QHash>
#include <QString>

#include "platform/host/Anwendungsobjekt.h"
#include "platform/host/Komponenten.h"

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

/// Makes the program's look-up and article managers known to the component for as long as it lives.
class Wirtskomponenten {
 public:
  Wirtskomponenten();
  ~Wirtskomponenten();
  Wirtskomponenten(const Wirtskomponenten&) = delete;
  Wirtskomponenten& operator=(const Wirtskomponenten&) = delete;

 private:
  QHash<QString, komponenten::Fabrik> vorige_;
};
