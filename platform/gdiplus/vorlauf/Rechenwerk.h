#pragma once

#include <QRunnable>
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

  void lies(Aufgabe aufgabe) { lesend_.nimm(std::move(aufgabe)); }
  void rechne(Aufgabe aufgabe) { rechnend_.nimm(std::move(aufgabe)); }
  void nebenbei(Aufgabe aufgabe) { nebenher_.nimm(std::move(aufgabe)); }
  /// Waits until all of it is done, also what is done aside.
  void warte();

  Speicherplatz gelesenes{Lesegrenze};
  Speicherplatz gerechnetes{Rechengrenze};

 private:
  /// What waits for one kind of threads. Each time that it runs it does the one that waits longest.
  class Reihe final : public QRunnable {
   public:
    Reihe(QThreadPool& faeden, int vorrang);
    void nimm(Aufgabe aufgabe);
    void run() override;

   private:
    QThreadPool& faeden_;
    const int vorrang_;
    std::mutex schutz_;
    std::deque<Aufgabe> aufgaben_;
  };

  Rechenwerk();
  ~Rechenwerk() { warte(); }
  Q_DISABLE_COPY_MOVE(Rechenwerk)

  QThreadPool lesende_;
  QThreadPool rechnende_;
  Reihe lesend_{lesende_, 1};
  Reihe rechnend_{rechnende_, 1};
  Reihe nebenher_{rechnende_, 0};
};
