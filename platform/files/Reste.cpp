#include "platform/files/Reste.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QList>
#include <algorithm>
#include <chrono>
#include <list>
#include <optional>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Beiname.h"
#include "platform/files/Umbenennen.h"
#include "platform/files/Verzeichnis.h"

namespace reste {
namespace {

struct Rest {
  QByteArray name;
  beiname::Angaben angaben;
};

std::optional<struct stat> stand_von(const QByteArray& ort) {
  struct stat info {};
  if (::lstat(ort.constData(), &info) != 0) return std::nullopt;
  return info;
}

bool ist_juenger(const struct timespec& a, const struct timespec& b) {
  return std::pair(a.tv_sec, a.tv_nsec) >= std::pair(b.tv_sec, b.tv_nsec);
}

QList<Rest> reste_in(const QByteArray& ordner) {
  QList<Rest> alle;
  verzeichnis::gehe_durch(ordner, [&](int verzeichnis, const dirent& eintrag) {
    const char* const name = static_cast<const char*>(eintrag.d_name);
    auto angaben = beiname::lies(name);
    if (angaben && beiname::ist_verlassen(*angaben, verzeichnis, name))
      alle.append({QByteArray(name), *std::move(angaben)});
  });
  return alle;
}

/// Some file's name begins so; then the file whose whole name is not known may be there.
bool beginnt_einer(const QByteArray& ordner, const QByteArray& anfang) {
  bool gefunden = false;
  verzeichnis::gehe_durch(ordner, [&](int, const dirent& eintrag) {
    gefunden = gefunden || QByteArrayView(static_cast<const char*>(eintrag.d_name)).startsWith(anfang);
  });
  return gefunden;
}

/// Killed between the steps of an exchange that the file system can't do in one: the content is all there is.
void raeume_Fertiges(const QByteArray& ordner, const Rest& rest) {
  const QByteArray ort = ordner + '/' + rest.name;
  const QByteArray ziel = ordner + '/' + rest.angaben.ziel;
  if (rest.angaben.gekuerzt ? beginnt_einer(ordner, rest.angaben.ziel) : stand_von(ziel).has_value())
    ::unlink(ort.constData());
  else if (!rest.angaben.gekuerzt)
    umbenennen::benenne_um(ort, ziel);
}

/// The empty file that kept a name free is younger than what announced it; an empty file of somebody's is not.
void raeume_Platzhalter(const QByteArray& ordner, const Rest& rest) {
  const QByteArray ort = ordner + '/' + rest.name;
  const QByteArray ziel = ordner + '/' + rest.angaben.ziel;
  const auto angekuendigt = stand_von(ort);
  const auto platz = rest.angaben.gekuerzt ? std::nullopt : stand_von(ziel);
  if (angekuendigt && platz && S_ISREG(platz->st_mode) && platz->st_size == 0 &&
      ist_juenger(platz->st_mtim, angekuendigt->st_mtim))
    ::unlink(ziel.constData());
  ::unlink(ort.constData());
}

void raeume_einen(const QByteArray& ordner, const Rest& rest) {
  if (rest.angaben.stufe == beiname::Stufe::Fertig) return raeume_Fertiges(ordner, rest);
  if (rest.angaben.stufe == beiname::Stufe::Platzhalter) return raeume_Platzhalter(ordner, rest);
  ::unlink((ordner + '/' + rest.name).constData());
}

using Uhr = std::chrono::steady_clock;
struct Blick {
  QByteArray ordner;
  Uhr::time_point wann;
};
constexpr std::size_t Hoechstens_Blicke = 8;

}  // namespace

void raeume(const QByteArray& ordner) noexcept {
  fehler::still_enden([&] {
    for (const Rest& rest : reste_in(ordner)) fehler::still_enden([&] { raeume_einen(ordner, rest); });
  });
}

void raeume_gelegentlich(const QByteArray& ordner) noexcept {
  fehler::still_enden([&] {
    thread_local std::list<Blick> blicke;
    const auto jetzt = Uhr::now();
    blicke.remove_if([&](const Blick& b) { return jetzt - b.wann > std::chrono::seconds(1); });
    const bool bekannt = std::any_of(blicke.begin(), blicke.end(), [&](const Blick& b) { return b.ordner == ordner; });
    if (bekannt) return;
    blicke.push_front({ordner, jetzt});
    if (blicke.size() > Hoechstens_Blicke) blicke.pop_back();
    raeume(ordner);
  });
}

}  // namespace reste
