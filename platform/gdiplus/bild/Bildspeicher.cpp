#include "platform/gdiplus/bild/Bildspeicher.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/gdiplus/miniatur/Miniaturablage.h"

std::int64_t Bildspeicher::systemuhr() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
      .count();
}

Bildspeicher& Bildspeicher::aktuell() {
  static Bildspeicher speicher;
  return speicher;
}

std::optional<Bildspeicher::Schluessel> Bildspeicher::schluessel(const QString& pfad) const {
  const dateien::Fundstelle f = dateien::fundstelle(pfad);
  return schluessel(f.ort, f.kennung);
}

std::optional<Bildspeicher::Schluessel> Bildspeicher::schluessel(
    const QByteArray& ort, const dateien::Kennung& kennung) const {
  if (std::max(kennung.geaendert_ns, kennung.zustand_ns) > uhr_.load()() - Ruhezeit_ns) return std::nullopt;
  return Schluessel{ort, kennung, Miniaturablage::aktuell().jetzt()};
}

// The entry of exactly that state, moved to the front.
Bildspeicher::Fach* Bildspeicher::finde(const Schluessel& schluessel) {
  const auto treffer = nach_Pfad_.constFind(schluessel.pfad);
  if (treffer == nach_Pfad_.constEnd() || (*treffer)->kennung != schluessel.kennung) return nullptr;
  faecher_.splice(faecher_.begin(), faecher_, *treffer);
  return &faecher_.front();
}

std::optional<Bildspeicher::Eintrag> Bildspeicher::suche(const Schluessel& schluessel) {
  const std::scoped_lock halten(sperre_);
  const Fach* const fach = finde(schluessel);
  return fach != nullptr ? std::optional(fach->eintrag) : std::nullopt;
}

void Bildspeicher::zaehle(Fach& fach, qint64 bytes) noexcept {
  fach.bytes += bytes;
  belegt_ += bytes;
}

// Where the path is known in another state, that one goes.
Bildspeicher::Fach& Bildspeicher::fach_fuer(const Schluessel& schluessel, const Bildkopf& kopf) {
  if (Fach* const fach = finde(schluessel)) return *fach;
  if (const auto alt = nach_Pfad_.constFind(schluessel.pfad); alt != nach_Pfad_.constEnd()) entferne(*alt);
  faecher_.push_front({schluessel.pfad, schluessel.kennung, {kopf, {}}, 0});
  nach_Pfad_.insert(schluessel.pfad, faecher_.begin());
  zaehle(faecher_.front(), Kopfgewicht);
  return faecher_.front();
}

void Bildspeicher::merke_Kopf(const Schluessel& schluessel, const Bildkopf& kopf) {
  const std::scoped_lock halten(sperre_);
  fach_fuer(schluessel, kopf);
  raeume_auf();
}

void Bildspeicher::merke(const Schluessel& schluessel, const Bildkopf& kopf, const QImage& reduziert) {
  const std::scoped_lock halten(sperre_);
  if (reduziert.sizeInBytes() > grenze_ / 4) return;
  Fach& fach = fach_fuer(schluessel, kopf);
  auto& alle = fach.eintrag.reduzierte;
  if (std::any_of(alle.cbegin(), alle.cend(), [&](const QImage& b) { return b.size() == reduziert.size(); })) return;
  if (alle.isEmpty()) zaehle(fach, -Kopfgewicht);
  alle.prepend(reduziert);
  zaehle(fach, reduziert.sizeInBytes());
  if (alle.size() > Groessen_je_Datei) zaehle(fach, -alle.takeLast().sizeInBytes());
  raeume_auf();
}

bool Bildspeicher::haelt(QSize groesse) const {
  const std::scoped_lock halten(sperre_);
  return flaeche(groesse) * qint64{sizeof(QRgb)} <= grenze_ / 4;
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
  nach_Pfad_.remove(fach->pfad);
  faecher_.erase(fach);
}

void Bildspeicher::raeume_auf() {
  while (belegt_ > grenze_ && !faecher_.empty()) entferne(std::prev(faecher_.end()));
}
