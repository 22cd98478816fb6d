// Linked beside a program's own main: once its first window has been painted, writes one byte to file descriptor 3 and
// ends the process.
#include <QWidget>

#include "bench/Malwache.h"

namespace {

bool ist_Fenster(QObject& empfaenger) {
  const auto* fenster = qobject_cast<QWidget*>(&empfaenger);
  return fenster && fenster->isWindow();
}

void setze_Wache() {
  new Malwache(ist_Fenster, [] { return QByteArray("\1"); });
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(setze_Wache)
