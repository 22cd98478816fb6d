#pragma once

#include <QList>
#include <QString>

#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/vorgang/Datensatz.h"

/// The records that were worked on last at this desk, for each database by itself. Kept in the user's settings beside
/// the places of the windows, unless the options say that nothing is remembered.
class Zuletzt {
 public:
  static constexpr qsizetype Hoechstens = 20;

  explicit Zuletzt(const Wirtsoptionen& optionen);
  /// The last one first.
  const QList<Datensatz>& saetze() const noexcept { return saetze_; }
  void merke(const Datensatz& satz);

 private:
  QString gruppe_;
  bool merken_;
  QList<Datensatz> saetze_;
};
