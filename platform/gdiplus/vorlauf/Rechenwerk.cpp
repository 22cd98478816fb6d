#include "platform/gdiplus/vorlauf/Rechenwerk.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/gdiplus/bild/Bildspeicher.h"

namespace {

constexpr int Lesende = 4, Rechnende_hoechstens = 8;

std::int64_t jetzt_ns() {
  const auto zeit = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(zeit).count();
}

void warte_am_Ende() {
  Rechenwerk::aktuell().beende();
}

}  // namespace

// The plug-ins that decode go with the application object, the cache with the process: nobody may be at work then.
Rechenwerk::Rechenwerk() {
  Bildspeicher::aktuell();
  lesende_.setMaxThreadCount(Lesende);
  rechnende_.setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 1, Rechnende_hoechstens));
  qAddPostRoutine(warte_am_Ende);
}

Rechenwerk& Rechenwerk::aktuell() {
  static Rechenwerk werk;
  return werk;
}

Rechenwerk::Aufgabe Rechenwerk::vordringlich(Aufgabe aufgabe) {
  {
    const std::scoped_lock halten(schutz_);
    ++vordringliche_;
  }
  return [this, a = std::move(aufgabe)]() mutable {
    a();
    // Also what the task holds: it may be what the next one waits for.
    a = {};
    std::unique_lock halten(schutz_);
    if (--vordringliche_ == 0) puffer_.clear();
    beginne_Nebenarbeit(std::move(halten));
  };
}

QByteArray Rechenwerk::nimm_Puffer() {
  const std::scoped_lock halten(schutz_);
  if (puffer_.empty()) return {};
  QByteArray letzter = std::move(puffer_.back());
  puffer_.pop_back();
  return letzter;
}

void Rechenwerk::gib_Puffer(QByteArray puffer) {
  // Somebody may hold the content for longer.
  if (!puffer.isDetached() || puffer.capacity() > Lesegrenze) return;
  const std::scoped_lock halten(schutz_);
  if (vordringliche_ > 0 && puffer_.size() < Meiste_Puffer) puffer_.push_back(std::move(puffer));
}

void Rechenwerk::nebenbei(Aufgabe aufgabe) {
  std::unique_lock halten(schutz_);
  nebenarbeit_.push_back(std::move(aufgabe));
  beginne_Nebenarbeit(std::move(halten));
}

void Rechenwerk::beginne_Nebenarbeit(std::unique_lock<std::mutex> gehalten) {
  if (vordringliche_ > 0 || nebenbei_am_Werk_ || nebenarbeit_.empty()) return;
  nebenbei_am_Werk_ = true;
  gehalten.unlock();
  nebenher_.nimm([this] { arbeite_nebenbei(); });
}

void Rechenwerk::arbeite_nebenbei() {
  for (;;) {
    Aufgabe naechste;
    {
      const std::scoped_lock halten(schutz_);
      const bool weiter = vordringliche_ == 0 && !nebenarbeit_.empty();
      if (!weiter) nebenbei_am_Werk_ = false;
      if (!weiter) return;
      if (jetzt_ns() < schluss_ns_) naechste = std::move(nebenarbeit_.front());
      nebenarbeit_.pop_front();
    }
    if (naechste) naechste();
  }
}

// One object for all of them: the pool never owns it, and nothing is made and destroyed across threads.
Rechenwerk::Reihe::Reihe(QThreadPool& faeden) : faeden_(faeden) {
  setAutoDelete(false);
}

void Rechenwerk::Reihe::nimm(Aufgabe aufgabe) {
  {
    const std::scoped_lock halten(schutz_);
    aufgaben_.push_back(std::move(aufgabe));
  }
  faeden_.start(this);
}

void Rechenwerk::Reihe::run() {
  Aufgabe naechste;
  {
    const std::scoped_lock halten(schutz_);
    naechste = std::move(aufgaben_.front());
    aufgaben_.pop_front();
  }
  naechste();
}

// What was read hands its work on to those who decode, so in this order.
void Rechenwerk::warte() {
  lesende_.waitForDone();
  rechnende_.waitForDone();
}

// Another application object may follow in the same process, as in tests.
void Rechenwerk::beende() {
  constexpr std::int64_t Nachfrist_ns = 500'000'000;
  const auto setze = [this](std::int64_t schluss) {
    const std::scoped_lock halten(schutz_);
    schluss_ns_ = schluss;
  };
  setze(jetzt_ns() + Nachfrist_ns);
  warte();
  setze(std::numeric_limits<std::int64_t>::max());
}
