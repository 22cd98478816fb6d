#include "platform/host/Anwendungsobjekt.h"

Einstellungen::~Einstellungen() = default;

void Einstellungen::GetSetting(const QString& /*pAbschnitt*/, const QString& /*pSchluessel*/, QString& pWert,
    const QString& /*pProgramm*/, const QString& /*pBenutzer*/, const QString& pVorgabe) {
  pWert = pVorgabe;
}

Anwendungsobjekt::~Anwendungsobjekt() = default;

std::shared_ptr<Einstellungen> Anwendungsobjekt::Settings() const {
  return std::make_shared<Einstellungen>();
}

QString Anwendungsobjekt::Name() const {
  return {};
}

QString Anwendungsobjekt::User() const {
  return {};
}

QString Anwendungsobjekt::ExeDir() const {
  return {};
}

QString Anwendungsobjekt::ReportDBTemplateDir() const {
  return {};
}

QString Anwendungsobjekt::DBName() const {
  return {};
}
