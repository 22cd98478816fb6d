#include "host/betrieb/befehl/Haltewunsch.h"

namespace {

volatile std::sig_atomic_t gewuenscht = 0;

void merke(int /*signal*/) {
  gewuenscht = 1;
}

}  // namespace

Haltewunsch::Haltewunsch() {
  gewuenscht = 0;
  struct sigaction neue = {};
  neue.sa_handler = &merke;
  neue.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
  for (std::size_t i = 0; i < Signale.size(); ++i)
    if (::sigaction(Signale[i], nullptr, &vorher_[i]) == 0 && vorher_[i].sa_handler != SIG_IGN)
      ::sigaction(Signale[i], &neue, nullptr);
}

Haltewunsch::~Haltewunsch() {
  for (std::size_t i = 0; i < Signale.size(); ++i) ::sigaction(Signale[i], &vorher_[i], nullptr);
}

bool Haltewunsch::ist_da() const noexcept {
  return gewuenscht != 0;
}
