#include "platform/gdiplus/vorlauf/Inarbeit.h"

#include <QSet>
#include <condition_variable>
#include <mutex>

namespace inarbeit {
namespace {

struct Tafel {
  std::mutex schutz;
  std::condition_variable frei;
  QSet<QByteArray> orte;
};

// Never destroyed: the last mark may go when the process ends.
Tafel& tafel() {
  static auto* const Einzige = new Tafel;
  return *Einzige;
}

}  // namespace

Marke::~Marke() {
  if (ort_.isEmpty()) return;
  Tafel& t = tafel();
  {
    const std::scoped_lock halten(t.schutz);
    t.orte.remove(ort_);
  }
  t.frei.notify_all();
}

Marke warte(const QByteArray& ort) {
  Tafel& t = tafel();
  std::unique_lock halten(t.schutz);
  t.frei.wait(halten, [&] { return !t.orte.contains(ort); });
  t.orte.insert(ort);
  return Marke(ort);
}

std::optional<Marke> versuche(const QByteArray& ort) {
  Tafel& t = tafel();
  const std::scoped_lock halten(t.schutz);
  if (t.orte.contains(ort)) return std::nullopt;
  t.orte.insert(ort);
  return Marke(ort);
}

}  // namespace inarbeit
