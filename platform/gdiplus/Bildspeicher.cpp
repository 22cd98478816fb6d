#include "platform/gdiplus/Bildspeicher.h"

#include <algorithm>
#include <chrono>

#include "platform/files/Pfadkarte.h"

std::int64_t Bildspeicher::systemuhr() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
      .count();
}

Bildspeicher& Bildspeicher::aktuell() {
  static Bildspeicher speicher;
  return speicher;
}

std::optional<Bildspeicher::Schluessel> Bildspeicher::schluessel(const QString& pfad) const {
  const std::int64_t jetzt = uhr_.load()();
  const Schluessel s{Pfadkarte::aktuell().maschinenpfad(pfad), dateien::kennung(pfad)};
  if (std::max(s.kennung.geaendert_ns, s.kennung.zustand_ns) > jetzt - kRuhezeit_ns) return std::nullopt;
  return s;
}

std::optional<Bildspeicher::Eintrag> Bildspeicher::suche(const Schluessel& schluessel) {
  const std::scoped_lock halten(sperre_);
  const auto treffer = nach_pfad_.constFind(schluessel.pfad);
  if (treffer == nach_pfad_.constEnd() || (*treffer)->kennung != schluessel.kennung) return std::nullopt;
  faecher_.splice(faecher_.begin(), faecher_, *treffer);
  return faecher_.front().eintrag;
}

void Bildspeicher::merke(const Schluessel& schluessel, const Bildkopf& kopf, const QImage& reduziert) {
  const std::scoped_lock halten(sperre_);
  if (reduziert.sizeInBytes() > grenze_ / 4) return;
  auto treffer = nach_pfad_.constFind(schluessel.pfad);
  if (treffer != nach_pfad_.constEnd() && (*treffer)->kennung != schluessel.kennung) {
    entferne(*treffer);
    treffer = nach_pfad_.constEnd();
  }
  if (treffer == nach_pfad_.constEnd()) {
    faecher_.push_front({schluessel.pfad, schluessel.kennung, {kopf, {}}, 0});
    nach_pfad_.insert(schluessel.pfad, faecher_.begin());
  } else {
    faecher_.splice(faecher_.begin(), faecher_, *treffer);
  }
  Fach& fach = faecher_.front();
  const auto zaehle = [&](qint64 bytes) {
    fach.bytes += bytes;
    belegt_ += bytes;
  };
  auto& alle = fach.eintrag.reduzierte;
  if (std::any_of(alle.cbegin(), alle.cend(), [&](const QImage& b) { return b.size() == reduziert.size(); })) return;
  alle.prepend(reduziert);
  zaehle(reduziert.sizeInBytes());
  if (alle.size() > kGroessen_je_Datei) zaehle(-alle.takeLast().sizeInBytes());
  raeume_auf();
}

qint64 Bildspeicher::belegt() const {
  const std::scoped_lock halten(sperre_);
  return belegt_;
}

void Bildspeicher::leere() {
  const std::scoped_lock halten(sperre_);
  while (!faecher_.empty()) entferne(faecher_.begin());
}

void Bildspeicher::grenze(qint64 bytes) {
  const std::scoped_lock halten(sperre_);
  grenze_ = bytes;
  raeume_auf();
}

void Bildspeicher::uhr(Uhr andere) {
  uhr_ = andere != nullptr ? andere : systemuhr;
}

void Bildspeicher::entferne(Faecher::iterator fach) {
  belegt_ -= fach->bytes;
  nach_pfad_.remove(fach->pfad);
  faecher_.erase(fach);
}

void Bildspeicher::raeume_auf() {
  while (belegt_ > grenze_ && !faecher_.empty()) entferne(std::prev(faecher_.end()));
}
