#include "platform/files/wirt/Zeilendatei.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Umbenennen.h"

namespace zeilendatei {
namespace {

/// Many shares know no locks; there each write stands alone, as the open file promises.
bool kennt_keine_Sperren(int fehler) noexcept {
  return fehler == ENOLCK || fehler == EOPNOTSUPP || fehler == ENOSYS || fehler == EINVAL;
}

/// Never blocks: a process that was stopped may hold the lock.
void sperre(int deskriptor) {
  constexpr auto Geduld = std::chrono::seconds(1);
  constexpr auto Takt = std::chrono::milliseconds(1);
  const auto ende = std::chrono::steady_clock::now() + Geduld;
  while (::flock(deskriptor, LOCK_EX | LOCK_NB) != 0) {
    if (kennt_keine_Sperren(errno)) return;
    if (errno != EWOULDBLOCK && errno != EINTR) systemfehler::wirf(errno);
    if (std::chrono::steady_clock::now() > ende) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
    std::this_thread::sleep_for(Takt);
  }
}

/// Another process may have put the file aside while this one waited.
bool steht_noch_da(const struct stat& offene, const QByteArray& ort) {
  struct stat info {};
  return ::stat(ort.constData(), &info) == 0 && info.st_dev == offene.st_dev && info.st_ino == offene.st_ino;
}

bool endet_mit_Zeile(int deskriptor, std::int64_t laenge) {
  char letztes = '\n';
  if (laenge > 0) systemfehler::pruefe(::pread(deskriptor, &letztes, 1, laenge - 1));
  return letztes == '\n';
}

/// What went in is taken out again where not all of it did.
void schreibe_ganz(int deskriptor, const QByteArray& zeilen, std::int64_t laenge) {
  const ssize_t geschrieben = ::write(deskriptor, zeilen.constData(), static_cast<std::size_t>(zeilen.size()));
  if (geschrieben == zeilen.size()) return;
  const int grund = geschrieben < 0 ? errno : ENOSPC;
  if (geschrieben > 0) static_cast<void>(::ftruncate(deskriptor, laenge));
  systemfehler::wirf(grund);
}

/// False where another file has the name by now.
bool versuche_anzuhaengen(
    const QByteArray& ort, const QByteArray& zeilen, const QByteArray& vorige, std::int64_t grenze) {
  const systemfehler::Deskriptor offen(::open(ort.constData(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
  if (offen.wert() < 0) umbenennen::wirf_fuer_Ziel(errno);
  sperre(offen.wert());
  struct stat info {};
  systemfehler::pruefe(::fstat(offen.wert(), &info));
  if (!steht_noch_da(info, ort)) return false;
  if (info.st_size > 0 && info.st_size + zeilen.size() > grenze) {
    umbenennen::ersetze(ort, vorige);
    return false;
  }
  schreibe_ganz(offen.wert(), endet_mit_Zeile(offen.wert(), info.st_size) ? zeilen : '\n' + zeilen, info.st_size);
  return true;
}

}  // namespace

void haenge_an(const QString& pfad, const QByteArray& zeilen, const QString& vorige, std::int64_t grenze) {
  const Pfadkarte& karte = Pfadkarte::aktuell();
  const QByteArray ort = karte.maschinenpfad_neu(pfad);
  const QByteArray vorher = karte.maschinenpfad_neu(vorige);
  constexpr int Hoechstens = 100;
  for (int versuch = 0; versuch < Hoechstens; ++versuch)
    if (versuche_anzuhaengen(ort, zeilen, vorher, grenze)) return;
  throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
}

}  // namespace zeilendatei
