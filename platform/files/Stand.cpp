#include "platform/files/Stand.h"

#include <cerrno>
#include <utility>

#include "platform/files/Pfadkarte.h"

namespace stand {
namespace {

Stand sieh_nach(QByteArray ort) {
  Stand s{std::move(ort), {}, 0};
  if (::stat(s.ort.constData(), &s.info) != 0) s.fehler = errno;
  return s;
}

std::int64_t nanosekunden(const struct timespec& zeit) {
  return zeit.tv_sec * 1'000'000'000LL + zeit.tv_nsec;
}

}  // namespace

Stand von(const QString& pfad) {
  const Pfadkarte& karte = Pfadkarte::aktuell();
  Stand genau = sieh_nach(karte.genauer_Pfad(pfad));
  if (genau.vorhanden()) return genau;
  return sieh_nach(karte.maschinenpfad(pfad));
}

dateien::Kennung kennung(const struct stat& info) {
  return {info.st_dev, info.st_ino, info.st_size, nanosekunden(info.st_mtim), nanosekunden(info.st_ctim)};
}

}  // namespace stand
