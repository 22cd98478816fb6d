#pragma once

#include <QThreadPool>
#include <deque>
#include <functional>
#include <mutex>

#include "platform/gdiplus/vorlauf/Speicherplatz.h"

/// The threads below the picture layer. Reading has some of its own, so that a slow share is waited for by several at
/// once while the cores decode; decoding has one for each core, at most eight. What is done aside is only taken up when
/// nothing is to be decoded.
class Rechenwerk {
 public:
  /// None may raise.
  using Aufgabe = std::function<void()>;

  /// What is read ahead and not decoded yet, and what decoding takes beside the result: together 64 MB.
  static constexpr qint64 Lesegrenze = qint64{24} * 1024 * 1024;
  static constexpr qint64 Rechengrenze = qint64{40} * 1024 * 1024;

  static Rechenwerk& aktuell();

  void lies(Aufgabe aufgabe) { starte(lesend_, std::move(aufgabe), 1); }
  void rechne(Aufgabe aufgabe) { starte(rechnend_, std::move(aufgabe), 1); }
  void nebenbei(Aufgabe aufgabe) { starte(nebenher_, std::move(aufgabe), 0); }
  /// Waits until all of it is done, also what is done aside.
  void warte();

  Speicherplatz gelesenes{Lesegrenze};
  Speicherplatz gerechnetes{Rechengrenze};

 private:
  struct Reihe {
    QThreadPool& faeden;
    std::mutex schutz;
    std::deque<Aufgabe> aufgaben;
  };

  Rechenwerk();
  ~Rechenwerk() { warte(); }
  Q_DISABLE_COPY_MOVE(Rechenwerk)
  static void starte(Reihe& reihe, Aufgabe aufgabe, int vorrang);

  QThreadPool lesende_;
  QThreadPool rechnende_;
  Reihe lesend_{lesende_, {}, {}};
  Reihe rechnend_{rechnende_, {}, {}};
  Reihe nebenher_{rechnende_, {}, {}};
};
