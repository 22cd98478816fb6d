#include "host/fenster/dialog/Abschied.h"

#include <fcntl.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>
#include <array>
#include <cerrno>
#include <csignal>

namespace {

constexpr std::array Signale{SIGINT, SIGTERM, SIGHUP};

/// Both ends of the pipe through which a signal reaches the event loop.
std::array<int, 2>& rohr() {
  static std::array<int, 2> enden{-1, -1};
  return enden;
}

void laeute(int /*signal*/) {
  const int vorher = errno;
  const char byte = 0;
  static_cast<void>(::write(rohr()[1], &byte, 1));
  errno = vorher;
}

}  // namespace

Abschied::Abschied() {
  if (::pipe2(rohr().data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  glocke_ = std::make_unique<QSocketNotifier>(rohr()[0], QSocketNotifier::Read);
  connect(glocke_.get(), &QSocketNotifier::activated, this, [this] {
    glocke_->setEnabled(false);
    verlangt_ = true;
  });
  // Long loops of the dialogs let events run; only a loop that waits has nothing half done.
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
    if (verlangt_) schliesse();
  });
  struct sigaction neue = {};
  neue.sa_handler = &laeute;
  neue.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
  for (const int signal : Signale) {
    struct sigaction alte = {};
    // What the caller has switched off stays off.
    if (::sigaction(signal, nullptr, &alte) == 0 && alte.sa_handler != SIG_IGN) ::sigaction(signal, &neue, nullptr);
  }
}

Abschied::~Abschied() {
  for (const int signal : Signale) {
    struct sigaction jetzige = {};
    if (::sigaction(signal, nullptr, &jetzige) == 0 && jetzige.sa_handler == &laeute) ::signal(signal, SIG_DFL);
  }
  glocke_.reset();
  for (int& ende : rohr())
    if (ende >= 0) ::close(std::exchange(ende, -1));
}

void Abschied::schliesse() const {
  if (QWidget* aufgeklappt = QApplication::activePopupWidget()) aufgeklappt->hide();
  if (QWidget* vorn = QApplication::activeModalWidget()) vorn->hide();
}
