#pragma once

#include <QtGlobal>
#include <array>
#include <csignal>

/// While one lives, Ctrl+C, SIGTERM and the end of the terminal do not end the process but are a wish to stop, which
/// long work asks for where nothing is half done. A second such signal ends the process at once, and what the caller
/// has switched off stays off. One at a time.
class Haltewunsch {
 public:
  Haltewunsch();
  ~Haltewunsch();
  Q_DISABLE_COPY_MOVE(Haltewunsch)

  bool ist_da() const noexcept;

 private:
  static constexpr std::array Signale{SIGINT, SIGTERM, SIGHUP};
  std::array<struct sigaction, Signale.size()> vorher_{};
};
