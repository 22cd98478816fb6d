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

}  // namespace

Stand von(const QString& pfad) {
  const Pfadkarte& karte = Pfadkarte::aktuell();
  Stand genau = sieh_nach(karte.genauer_Pfad(pfad));
  if (genau.vorhanden()) return genau;
  return sieh_nach(karte.maschinenpfad(pfad));
}

}  // namespace stand
