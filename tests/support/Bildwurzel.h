#pragma once

#include "platform/files/Pfadkarte.h"
#include "tests/support/Umgebung.h"

/// A folder of the test's own as drive P:, so that its path holds no dot.
class Bildwurzel : public Testordner {
 public:
  Bildwurzel() { Pfadkarte::aktuell().setze(QStringLiteral("P:"), pfad()); }
  ~Bildwurzel() { Pfadkarte::aktuell().entferne(QStringLiteral("P:")); }
  Bildwurzel(const Bildwurzel&) = delete;
  Bildwurzel& operator=(const Bildwurzel&) = delete;
};
