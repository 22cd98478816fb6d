#include "platform/files/Schreiben.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Systemfehler.h"

namespace schreiben {
namespace {

QByteArray ordner_von(const QByteArray& pfad) {
  const qsizetype ende = pfad.lastIndexOf('/');
  return ende <= 0 ? QByteArray("/") : pfad.left(ende);
}

[[noreturn]] void wirf_fuer_Ziel(int fehler) {
  if (fehler == ENOENT) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  systemfehler::wirf(fehler);
}

}  // namespace

void schreibe_alle(int deskriptor, QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t n = ::write(deskriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (n < 0 && errno == EINTR) continue;
    bytes = bytes.sliced(systemfehler::pruefe(n));
  }
}

Nebendatei::Nebendatei(const QByteArray& ziel)
    : ziel_(ziel), name_(ordner_von(ziel) + "/.kvo-XXXXXX"), deskriptor_(::mkostemp(name_.data(), O_CLOEXEC)) {
  if (deskriptor_ < 0) wirf_fuer_Ziel(errno);
}

Nebendatei::~Nebendatei() {
  if (deskriptor_ >= 0) ::close(deskriptor_);
  if (!name_.isEmpty()) ::unlink(name_.constData());
}

void Nebendatei::kopiere_von(int quelle) {
  QByteArray puffer(1 << 20, Qt::Uninitialized);
  for (;;) {
    const ssize_t n = ::read(quelle, puffer.data(), static_cast<std::size_t>(puffer.size()));
    if (n < 0 && errno == EINTR) continue;
    if (systemfehler::pruefe(n) == 0) return;
    schreibe(QByteArray::fromRawData(puffer.constData(), n));
  }
}

void Nebendatei::uebernimm(const struct stat& vorbild, bool zeitstempel) {
  // The owner can be given away by few; then the copy belongs to whoever makes it, as any copy does. The owner goes
  // first, since changing it takes rights away.
  if (::fchown(deskriptor_, vorbild.st_uid, vorbild.st_gid) != 0) errno = 0;
  systemfehler::pruefe(::fchmod(deskriptor_, vorbild.st_mode & 0777));
  if (!zeitstempel) return;
  const std::array<struct timespec, 2> zeiten{vorbild.st_atim, vorbild.st_mtim};
  systemfehler::pruefe(::futimens(deskriptor_, zeiten.data()));
}

void Nebendatei::vollende(bool ersetzen) {
  systemfehler::pruefe(::fdatasync(deskriptor_));
  const int deskriptor = std::exchange(deskriptor_, -1);
  systemfehler::pruefe(::close(deskriptor));
  if (ersetzen) {
    if (::rename(name_.constData(), ziel_.constData()) != 0) wirf_fuer_Ziel(errno);
  } else if (!benenne_um(name_, ziel_)) {
    throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
  }
  name_.clear();
}

bool benenne_um(const QByteArray& quelle, const QByteArray& ziel) {
  if (::renameat2(AT_FDCWD, quelle.constData(), AT_FDCWD, ziel.constData(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EXDEV) return false;
  if (errno != EINVAL && errno != ENOSYS) wirf_fuer_Ziel(errno);
  // A file system without that call: a look comes before the rename.
  struct stat info {};
  if (::lstat(ziel.constData(), &info) == 0) throw Laufzeitfehler(fehlernummer::DateiVorhanden);
  if (::rename(quelle.constData(), ziel.constData()) != 0) wirf_fuer_Ziel(errno);
  return true;
}

}  // namespace schreiben
