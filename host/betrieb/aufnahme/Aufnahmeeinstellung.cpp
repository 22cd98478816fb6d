#include "host/betrieb/aufnahme/Aufnahmeeinstellung.h"

#include "host/betrieb/Einstellungsdatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Aufrecht = u"aufrecht"_s;

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Aufnahme"_s) {}
};

}  // namespace

bool aufnahmeeinstellung::aufrecht() {
  return Datei().value(Aufrecht, true).toBool();
}

void aufnahmeeinstellung::aufrecht(bool wert) {
  Datei().setValue(Aufrecht, wert);
}
