#pragma once

#include <QtGlobal>
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

/// So many bytes may be in use at once by those who ask for them here. Works across threads.
class Speicherplatz {
 public:
  /// A share of it, given back at the end of its life.
  class Anteil {
   public:
    Anteil(Speicherplatz& von, qint64 bytes) noexcept : von_(&von), bytes_(bytes) {}
    Anteil(Anteil&& anderer) noexcept : von_(std::exchange(anderer.von_, nullptr)), bytes_(anderer.bytes_) {}
    ~Anteil() {
      if (von_ != nullptr) von_->nimm_zurueck(bytes_);
    }
    Anteil(const Anteil&) = delete;
    Anteil& operator=(const Anteil&) = delete;
    Anteil& operator=(Anteil&&) = delete;

   private:
    Speicherplatz* von_;
    qint64 bytes_;
  };

  /// A single share may be as large as `groesster`, where that is more than `grenze`; nobody else has one then.
  explicit Speicherplatz(qint64 grenze, qint64 groesster = 0) noexcept
      : grenze_(grenze), groesster_(std::max(grenze, groesster)) {}

  /// Waits for so much room. None for more than there ever is, and once `aufgegeben` is set (see wecke).
  std::optional<Anteil> warte(qint64 bytes, const std::atomic<bool>& aufgegeben);
  /// The same without waiting.
  std::optional<Anteil> versuche(qint64 bytes);
  /// Those who wait look again whether they were given up.
  void wecke();

 private:
  void nimm_zurueck(qint64 bytes);

  bool passt(qint64 bytes) const noexcept;

  const qint64 grenze_;
  const qint64 groesster_;
  std::mutex schutz_;
  std::condition_variable frei_;
  qint64 belegt_ = 0;
};
