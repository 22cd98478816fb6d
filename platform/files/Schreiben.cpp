#include "platform/files/Schreiben.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Attribute.h"
#include "platform/files/Beiname.h"
#include "platform/files/Reste.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Umbenennen.h"

namespace schreiben {
namespace {

constexpr mode_t Neue_Datei = 0666;
constexpr mode_t Alle_Rechte = 0777;

/// Gives the number of bytes.
off_t kopiere(int quelle, int ziel) {
  QByteArray puffer(1 << 20, Qt::Uninitialized);
  for (off_t anzahl = 0;;) {
    const ssize_t n = ::read(quelle, puffer.data(), static_cast<std::size_t>(puffer.size()));
    if (n < 0 && errno == EINTR) continue;
    if (systemfehler::pruefe(n) == 0) return anzahl;
    schreibe_alle(ziel, QByteArrayView(puffer.constData(), n));
    anzahl += n;
  }
}

/// Some devices and shares keep nothing back, and know no such call.
void bringe_auf_die_Platte(int deskriptor) {
  if (::fsync(deskriptor) != 0 && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) systemfehler::wirf(errno);
}

/// A share tells at closing what it could not write.
void schliesse(int deskriptor) {
  // After an interruption the descriptor is closed all the same (close(2)).
  if (::close(deskriptor) != 0 && errno != EINTR) systemfehler::wirf(errno);
}

}  // namespace

void schreibe_alle(int deskriptor, QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t n = ::write(deskriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (n < 0 && errno == EINTR) continue;
    bytes = bytes.sliced(systemfehler::pruefe(n));
  }
}

Nebendatei::Nebendatei(const QByteArray& ziel) : ziel_(ziel) {
  const QByteArray ordner = umbenennen::ordner_von(ziel);
  reste::raeume_gelegentlich(ordner);
  struct stat info {};
  if (::stat(ziel.constData(), &info) == 0 && S_ISREG(info.st_mode)) bisherige_ = info;
  deskriptor_ = ::open(ordner.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, rechte());
  if (deskriptor_ < 0) mache_mit_Namen();
}

Nebendatei::~Nebendatei() {
  if (deskriptor_ >= 0) ::close(deskriptor_);
  if (!name_.isEmpty()) ::unlink(name_.constData());
}

/// Never more than the file that is replaced grants: what is written can be read from the start.
int Nebendatei::rechte() const {
  return static_cast<int>(bisherige_ ? (bisherige_->st_mode & Alle_Rechte) | S_IRUSR | S_IWUSR : Neue_Datei);
}

void Nebendatei::mache_mit_Namen() {
  const QByteArray name =
      umbenennen::ordner_von(ziel_) + '/' + beiname::bilde(umbenennen::name_von(ziel_), beiname::Stufe::Entsteht);
  deskriptor_ = ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, rechte());
  if (deskriptor_ < 0) umbenennen::wirf_fuer_Ziel(errno);
  name_ = name;
}

void Nebendatei::kopiere_von(int quelle) {
  const off_t anzahl = kopiere(quelle, deskriptor_);
  struct stat info {};
  systemfehler::pruefe(::fstat(quelle, &info));
  if (anzahl < info.st_size) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
}

void Nebendatei::sichere() {
  if (bisherige_) attribute::uebernimm(ziel_, *bisherige_, deskriptor_);
  if (zeit_) attribute::uebernimm_Zeit(*zeit_, deskriptor_);
  bringe_auf_die_Platte(deskriptor_);
  // What has no name yet can get one only while it is open.
  schliesse(name_.isEmpty() ? systemfehler::pruefe(::dup(deskriptor_)) : std::exchange(deskriptor_, -1));
}

void Nebendatei::benenne(bool ersetzen) {
  if (ersetzen && bisherige_)
    ersetze();
  else
    nimm_freien_Namen(ersetzen);
  name_.clear();
}

void Nebendatei::nimm_freien_Namen(bool ersetzen) {
  if (name_.isEmpty()) {
    const QByteArray quelle = "/proc/self/fd/" + QByteArray::number(deskriptor_);
    if (::linkat(AT_FDCWD, quelle.constData(), AT_FDCWD, ziel_.constData(), AT_SYMLINK_FOLLOW) == 0)
      return umbenennen::sichere_Ordner(umbenennen::ordner_von(ziel_));
    if (errno == EEXIST && ersetzen) return ersetze();
    if (errno == EEXIST) umbenennen::wirf_fuer_Ziel(errno);
    bekomme_Namen();
  }
  if (ersetzen) return ersetze();
  if (!umbenennen::benenne_um(name_, ziel_)) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
}

/// A file system, or a machine without /proc, that makes files without a name but can't give them one.
void Nebendatei::bekomme_Namen() {
  const systemfehler::Deskriptor ohne_Namen(std::exchange(deskriptor_, -1));
  systemfehler::pruefe(::lseek(ohne_Namen.wert(), 0, SEEK_SET));
  mache_mit_Namen();
  kopiere_von(ohne_Namen.wert());
  sichere();
}

void Nebendatei::ersetze() {
  const QByteArray fertig = umbenennen::fertig_neben(ziel_);
  if (name_.isEmpty()) {
    const QByteArray quelle = "/proc/self/fd/" + QByteArray::number(deskriptor_);
    if (::linkat(AT_FDCWD, quelle.constData(), AT_FDCWD, fertig.constData(), AT_SYMLINK_FOLLOW) == 0)
      name_ = fertig;
    else
      bekomme_Namen();
  }
  if (name_ != fertig) {
    // Only what is whole may come back into the target's place should this process end in the exchange.
    if (::rename(name_.constData(), fertig.constData()) != 0) umbenennen::wirf_fuer_Ziel(errno);
    name_ = fertig;
  }
  umbenennen::ersetze(name_, ziel_);
}

}  // namespace schreiben
