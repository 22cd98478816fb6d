#include "platform/files/wirt/Zeilendatei.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string_view>
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

/// Never blocks: a process that was stopped may hold the lock. False where there are no locks.
bool sperre(int deskriptor) {
  constexpr auto Geduld = std::chrono::seconds(1);
  constexpr auto Takt = std::chrono::milliseconds(1);
  const auto ende = std::chrono::steady_clock::now() + Geduld;
  while (::flock(deskriptor, LOCK_EX | LOCK_NB) != 0) {
    if (kennt_keine_Sperren(errno)) return false;
    if (errno != EWOULDBLOCK && errno != EINTR) systemfehler::wirf(errno);
    if (std::chrono::steady_clock::now() > ende) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
    std::this_thread::sleep_for(Takt);
  }
  return true;
}

/// Another process may have put the file aside while this one waited.
bool steht_noch_da(const struct stat& offene, const QByteArray& ort) {
  struct stat info {};
  return ::stat(ort.constData(), &info) == 0 && info.st_dev == offene.st_dev && info.st_ino == offene.st_ino;
}

/// Where the last whole line ends.
std::int64_t ende_der_Zeilen(int deskriptor, std::int64_t laenge) {
  std::array<char, 4096> stueck{};
  while (laenge > 0) {
    const std::int64_t beginn = std::max<std::int64_t>(0, laenge - static_cast<std::int64_t>(stueck.size()));
    const auto gelesen = systemfehler::pruefe(
        ::pread(deskriptor, stueck.data(), static_cast<std::size_t>(laenge - beginn), static_cast<off_t>(beginn)));
    const std::string_view text(stueck.data(), static_cast<std::size_t>(gelesen));
    if (const auto stelle = text.rfind('\n'); stelle != std::string_view::npos)
      return beginn + static_cast<std::int64_t>(stelle) + 1;
    laenge = beginn;
  }
  return 0;
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
  const bool gesperrt = sperre(offen.wert());
  struct stat info {};
  systemfehler::pruefe(::fstat(offen.wert(), &info));
  if (!steht_noch_da(info, ort)) return false;
  // The system ends a killed process between two pages of its line; nobody else is writing now.
  const std::int64_t ende = ende_der_Zeilen(offen.wert(), info.st_size);
  const bool zerrissen = ende < info.st_size;
  if (zerrissen && gesperrt) {
    systemfehler::pruefe(::ftruncate(offen.wert(), static_cast<off_t>(ende)));
    info.st_size = static_cast<off_t>(ende);
  }
  if (info.st_size > 0 && info.st_size + zeilen.size() > grenze) {
    umbenennen::ersetze(ort, vorige);
    return false;
  }
  schreibe_ganz(offen.wert(), zerrissen && !gesperrt ? '\n' + zeilen : zeilen, info.st_size);
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
