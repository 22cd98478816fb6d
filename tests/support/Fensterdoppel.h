#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/host/KVOCore.h"
#include "platform/host/Oberflaeche.h"

/// The windows' side of the host's core component, scripted, for as long as it lives; reports go on to the core that
/// was in force. The event pump really pumps.
class Fensterdoppel {
 public:
  Fensterdoppel();
  ~Fensterdoppel();
  Fensterdoppel(const Fensterdoppel&) = delete;
  Fensterdoppel& operator=(const Fensterdoppel&) = delete;

  /// What FensterWiederherstellen puts the window to; none leaves it alone.
  std::optional<Fensterlage> lage;
  /// Runs while the placement is restored, after it was set.
  std::function<void()> beim_Wiederherstellen;
  /// Application name and window of the last restoring and storing.
  QString wiederhergestellt;
  QString gespeichert;
  std::optional<Fensterlage> gespeicherte_Lage;
  /// A handler lets events in at the moment.
  bool pumpt = false;

 private:
  class Pumpe;
  class Core;
  std::shared_ptr<KVOCore> vorher_;
  std::shared_ptr<oberflaeche::Ereignispumpe> pumpe_vorher_;
};
