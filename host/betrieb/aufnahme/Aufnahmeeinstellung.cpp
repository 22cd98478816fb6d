#include "host/betrieb/aufnahme/Aufnahmeeinstellung.h"

#include <QSettings>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Aufrecht = u"aufrecht"_s;

/// As the core component names the file of the windows' places.
class Datei : public QSettings {
 public:
  Datei() : QSettings(QSettings::IniFormat, QSettings::UserScope, u"bildzuordnung"_s, u"Aufnahme"_s) {
    setFallbacksEnabled(false);
  }
};

}  // namespace

bool aufnahmeeinstellung::aufrecht() {
  return Datei().value(Aufrecht, true).toBool();
}

void aufnahmeeinstellung::aufrecht(bool wert) {
  Datei().setValue(Aufrecht, wert);
}
