#include "platform/files/Binaerdatei.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"

namespace {

/// A FIFO or a device must not make anybody wait, and a folder is no file.
void pruefe_Art(unsigned modus) {
  if (!S_ISREG(modus)) throw Laufzeitfehler(fehlernummer::PfadZugriff);
  if (systemfehler::unlesbar(modus)) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
}

constexpr int Immer = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

bool nur_lesen_erlaubt(int fehler) {
  return fehler == EACCES || fehler == EPERM || fehler == EROFS || fehler == ETXTBSY;
}

}  // namespace

void Binaerdatei::schliesse() noexcept {
  if (deskriptor_ >= 0) ::close(deskriptor_);
  deskriptor_ = -1;
  laenge_ = 0;
}

void Binaerdatei::oeffne(const QString& pfad, int art) {
  schliesse();
  auto [ort, info, grund] = stand::von(pfad);
  if (grund == 0) pruefe_Art(info.st_mode);
  constexpr mode_t Rechte = 0666;
  int deskriptor = ::open(ort.constData(), art | Immer, Rechte);
  if (deskriptor < 0 && art != O_RDONLY && nur_lesen_erlaubt(errno))
    deskriptor = ::open(ort.constData(), O_RDONLY | Immer);
  if (deskriptor < 0 && errno == ENOENT && (art & O_CREAT) != 0) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  uebernimm(deskriptor);
}

void Binaerdatei::uebernimm(int deskriptor) {
  systemfehler::Deskriptor offen(systemfehler::pruefe(deskriptor));
  struct stat info {};
  systemfehler::pruefe(::fstat(offen.wert(), &info));
  pruefe_Art(info.st_mode);
  laenge_ = info.st_size;
  deskriptor_ = offen.entnimm();
}

void Binaerdatei::oeffne_Binaer(const QString& pfad) {
  oeffne(pfad, O_RDWR | O_CREAT);
}

void Binaerdatei::oeffne_lesend(const QString& pfad) {
  oeffne(pfad, O_RDONLY);
}

void Binaerdatei::oeffne_Ort(const QByteArray& ort) {
  schliesse();
  uebernimm(::open(ort.constData(), O_RDONLY | Immer));
}

dateien::Kennung Binaerdatei::kennung() const {
  struct stat info {};
  if (::fstat(deskriptor_, &info) != 0) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
  return stand::kennung(info);
}

std::size_t Binaerdatei::lies(std::int64_t position, std::span<std::byte> ziel) const {
  std::size_t gelesen = 0;
  while (gelesen < ziel.size()) {
    const auto rest = ziel.subspan(gelesen);
    const ssize_t n = ::pread(deskriptor_, rest.data(), rest.size(), position + static_cast<std::int64_t>(gelesen));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
    if (n == 0) break;
    gelesen += static_cast<std::size_t>(n);
  }
  return gelesen;
}
