#pragma once

#include <QSettings>
#include <QString>

/// One of the program's files in the user's settings, beside the one in which the core component keeps the windows'
/// places.
class Einstellungsdatei : public QSettings {
 public:
  explicit Einstellungsdatei(const QString& name)
      : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("bildzuordnung"), name) {
    setFallbacksEnabled(false);
  }
};
