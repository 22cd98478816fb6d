#pragma once

#include <QByteArray>
#include <QRunnable>
#include <QThreadPool>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <mutex>
#include <vector>

#include "platform/gdiplus/vorlauf/Speicherplatz.h"

/// The threads below the picture layer. Reading has some of its own, so that a slow share is waited for by several at
/// once while the cores decode; decoding has one for each core, at most eight. What is done aside is done by one of
/// those, one after the other, while nothing is to be read or decoded.
class Rechenwerk {
 public:
  /// None may raise.
  using Aufgabe = std::function<void()>;

  /// What is read ahead and not decoded yet: a single file may be larger, as long as it is alone.
  static constexpr qint64 Lesegrenze = qint64{12} * 1024 * 1024;
  static constexpr qint64 Groesste_Datei = 2 * Lesegrenze;
  /// What decoding takes beside the result.
  static constexpr qint64 Rechengrenze = qint64{32} * 1024 * 1024;
  /// What waits to be kept over the end of the program.
  static constexpr qint64 Aufhebegrenze = qint64{32} * 1024 * 1024;
  /// Of that, before it is reduced to its size: the few pictures of a window are in front of that work.
  static constexpr qint64 Ungeschrumpft = qint64{6} * 1024 * 1024;

  static Rechenwerk& aktuell();

  void lies(Aufgabe aufgabe) { lesend_.nimm(vordringlich(std::move(aufgabe))); }
  void rechne(Aufgabe aufgabe) { rechnend_.nimm(vordringlich(std::move(aufgabe))); }
  /// Left out when the process ends and there is more of it than half a second's work.
  void nebenbei(Aufgabe aufgabe);
  /// Waits until all of it is done, also what is done aside.
  void warte();
  /// The same at the end of the process.
  void beende();

  /// A buffer for a file's content, or an empty one. The threads hand each other theirs: the allocator has a store for
  /// each thread, and what comes and goes by the megabyte in all of them would add up. Forgotten when all is done.
  QByteArray nimm_Puffer();
  void gib_Puffer(QByteArray puffer);

  Speicherplatz gelesenes{Lesegrenze, Groesste_Datei};
  Speicherplatz gerechnetes{Rechengrenze};
  Speicherplatz aufgehobenes{Aufhebegrenze};
  Speicherplatz ungeschrumpftes{Ungeschrumpft};

 private:
  /// What waits for one kind of threads. Each time that it runs it does the one that waits longest.
  class Reihe final : public QRunnable {
   public:
    explicit Reihe(QThreadPool& faeden);
    void nimm(Aufgabe aufgabe);
    void run() override;

   private:
    QThreadPool& faeden_;
    std::mutex schutz_;
    std::deque<Aufgabe> aufgaben_;
  };

  Rechenwerk();
  ~Rechenwerk() { beende(); }
  Q_DISABLE_COPY_MOVE(Rechenwerk)
  Aufgabe vordringlich(Aufgabe aufgabe);
  void beginne_Nebenarbeit(std::unique_lock<std::mutex> gehalten);
  void arbeite_nebenbei();

  QThreadPool lesende_;
  QThreadPool rechnende_;
  Reihe lesend_{lesende_};
  Reihe rechnend_{rechnende_};
  Reihe nebenher_{rechnende_};

  std::mutex schutz_;
  int vordringliche_ = 0;  ///< begun or waiting
  bool nebenbei_am_Werk_ = false;
  static constexpr std::size_t Meiste_Puffer = 4;
  std::vector<QByteArray> puffer_;
  std::deque<Aufgabe> nebenarbeit_;
  std::int64_t schluss_ns_ = std::numeric_limits<std::int64_t>::max();
};
