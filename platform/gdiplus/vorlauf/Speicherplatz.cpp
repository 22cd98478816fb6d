#include "platform/gdiplus/vorlauf/Speicherplatz.h"

bool Speicherplatz::passt(qint64 bytes) const noexcept {
  return belegt_ + bytes <= grenze_ || (belegt_ == 0 && bytes <= groesster_);
}

std::optional<Speicherplatz::Anteil> Speicherplatz::warte(qint64 bytes, const std::atomic<bool>& aufgegeben) {
  if (bytes > groesster_) return std::nullopt;
  std::unique_lock halten(schutz_);
  frei_.wait(halten, [&] { return aufgegeben || passt(bytes); });
  if (aufgegeben) return std::nullopt;
  belegt_ += bytes;
  return Anteil(*this, bytes);
}

std::optional<Speicherplatz::Anteil> Speicherplatz::versuche(qint64 bytes) {
  const std::scoped_lock halten(schutz_);
  if (!passt(bytes)) return std::nullopt;
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
