#pragma once

#include <QString>
#include <QTemporaryDir>
#include <optional>

#include "tests/support/Freigabe.h"

/// A folder once more through a pass-through with a delay, which counts (see durchgang.cpp).
class Durchgang {
 public:
  explicit Durchgang(const QString& ziel);
  void starte(const QString& quelle, int mikrosekunden);

  /// For another process, which maps it.
  const QString& zaehlerdatei() const { return zaehlerdatei_; }

 private:
  QTemporaryDir heim_;
  QString zaehlerdatei_;
  Einhaengepunkt eingehaengt_;
  std::optional<Dienst> dienst_;
};
