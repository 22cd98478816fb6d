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

void Rechenwerk::starte(Reihe& reihe, Aufgabe aufgabe, int vorrang) {
  {
    const std::scoped_lock halten(reihe.schutz);
    reihe.aufgaben.push_back(std::move(aufgabe));
  }
  reihe.faeden.start(
      [&reihe] {
    Aufgabe naechste;
    {
      const std::scoped_lock halten(reihe.schutz);
      naechste = std::move(reihe.aufgaben.front());
      reihe.aufgaben.pop_front();
    }
    naechste();
      },
      vorrang);
}

// What was read hands its work on to those who decode, so in this order.
void Rechenwerk::warte() {
  lesende_.waitForDone();
  rechnende_.waitForDone();
}
