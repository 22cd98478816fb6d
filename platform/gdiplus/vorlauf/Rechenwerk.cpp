#include "platform/gdiplus/vorlauf/Rechenwerk.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <utility>

#include "platform/gdiplus/bild/Bildspeicher.h"

namespace {

constexpr int Lesende = 4, Rechnende_hoechstens = 8;

void warte_am_Ende() {
  Rechenwerk::aktuell().warte();
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

// One object for all of them: the pool never owns it, and nothing is made and destroyed across threads.
Rechenwerk::Reihe::Reihe(QThreadPool& faeden, int vorrang) : faeden_(faeden), vorrang_(vorrang) {
  setAutoDelete(false);
}

void Rechenwerk::Reihe::nimm(Aufgabe aufgabe) {
  {
    const std::scoped_lock halten(schutz_);
    aufgaben_.push_back(std::move(aufgabe));
  }
  faeden_.start(this, vorrang_);
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
