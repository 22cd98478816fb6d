#include "platform/gdiplus/vorlauf/Speicherplatz.h"

std::optional<Speicherplatz::Anteil> Speicherplatz::warte(qint64 bytes, const std::atomic<bool>& aufgegeben) {
  if (bytes > grenze_) return std::nullopt;
  std::unique_lock halten(schutz_);
  frei_.wait(halten, [&] { return aufgegeben || belegt_ + bytes <= grenze_; });
  if (aufgegeben) return std::nullopt;
  belegt_ += bytes;
  return Anteil(*this, bytes);
}

std::optional<Speicherplatz::Anteil> Speicherplatz::versuche(qint64 bytes) {
  const std::scoped_lock halten(schutz_);
  if (belegt_ + bytes > grenze_) return std::nullopt;
  belegt_ += bytes;
  return Anteil(*this, bytes);
}

// Taken once, so that nobody misses the call between looking and waiting.
void Speicherplatz::wecke() {
  { const std::scoped_lock halten(schutz_); }
  frei_.notify_all();
}

void Speicherplatz::nimm_zurueck(qint64 bytes) {
  {
    const std::scoped_lock halten(schutz_);
    belegt_ -= bytes;
  }
  frei_.notify_all();
}
