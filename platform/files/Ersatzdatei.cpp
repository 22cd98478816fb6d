#include "platform/files/Ersatzdatei.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QByteArray>
#include <QList>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Schreiben.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"

namespace {

QByteArray ordner_von(const QByteArray& ort) {
  return ort.left(ort.lastIndexOf('/') + 1);
}

QByteArray ohne_Verweise(const QByteArray& ort) {
  const std::unique_ptr<char, void (*)(void*)> wahrer(::realpath(ort.constData(), nullptr), &::free);
  if (!wahrer) systemfehler::wirf(errno);
  return {wahrer.get()};
}

/// Calls `versuch` with one underscore before the name, with two and so on, until none meets an existing file. The last
/// failure is the one of the whole.
template <class Versuch>
QByteArray freier_Name(const QByteArray& ort, Versuch&& versuch) {
  const QByteArray ordner = ordner_von(ort);
  QByteArray name = ort.mid(ordner.size());
  for (int i = 0; i < NAME_MAX; ++i) {
    name = ('_' + name).left(NAME_MAX);
    if (versuch(ordner + name)) return ordner + name;
    if (errno != EEXIST) break;
  }
  systemfehler::wirf(errno);
}

/// Attributes of the system may not be ours to set; everything else is copied.
void uebernimm_Attribute(const QByteArray& von, int nach) {
  QByteArray namen(1 << 16, '\0');
  const ssize_t laenge = ::listxattr(von.constData(), namen.data(), static_cast<std::size_t>(namen.size()));
  if (laenge <= 0) return;
  QByteArray wert(1 << 16, '\0');
  for (const QByteArray& name : namen.left(laenge - 1).split('\0')) {
    const ssize_t n = ::getxattr(von.constData(), name.constData(), wert.data(), static_cast<std::size_t>(wert.size()));
    if (n < 0) continue;
    if (::fsetxattr(nach, name.constData(), wert.constData(), static_cast<std::size_t>(n), 0) == 0) continue;
    if (errno != EPERM && errno != EACCES && errno != ENOTSUP) systemfehler::wirf(errno);
  }
}

void uebernimm(const QByteArray& von, int nach, bool mit_Zeit) {
  struct stat info {};
  systemfehler::pruefe(::stat(von.constData(), &info));
  // A user who may not give the file away owns the new one, as after any other save. The owner goes first, since
  // changing it takes rights away.
  if (::fchown(nach, info.st_uid, info.st_gid) != 0) errno = 0;
  systemfehler::pruefe(::fchmod(nach, info.st_mode & 07777));
  uebernimm_Attribute(von, nach);
  if (!mit_Zeit) return;
  const std::array<struct timespec, 2> zeiten{info.st_atim, info.st_mtim};
  systemfehler::pruefe(::futimens(nach, zeiten.data()));
}

bool kennt_keine_namenlosen(int fehler) noexcept {
  return fehler == EOPNOTSUPP || fehler == EISDIR || fehler == EINVAL || fehler == ENOENT;
}

}  // namespace

Ersatzdatei::Ersatzdatei(const QString& pfad) {
  const stand::Stand s = stand::von(pfad);
  if (!s.vorhanden()) systemfehler::wirf(s.fehler);
  if (!S_ISREG(s.info.st_mode)) throw Laufzeitfehler(fehlernummer::PfadZugriff);
  ort_ = ohne_Verweise(s.ort);
}

Ersatzdatei::~Ersatzdatei() {
  if (!name_.isEmpty()) ::unlink(name_.constData());
}

int Ersatzdatei::oeffne_mit_Namen() {
  int deskriptor = -1;
  name_ = freier_Name(ort_, [&](const QByteArray& name) {
    deskriptor = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    return deskriptor >= 0;
  });
  return deskriptor;
}

void Ersatzdatei::schreibe(const QByteArray& bytes, Zeit zeit) {
  int deskriptor = ::open(ordner_von(ort_).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (deskriptor < 0 && !kennt_keine_namenlosen(errno)) systemfehler::wirf(errno);
  systemfehler::Deskriptor datei(deskriptor >= 0 ? deskriptor : oeffne_mit_Namen());
  schreiben::schreibe_alle(datei.wert(), bytes);
  uebernimm(ort_, datei.wert(), zeit == Zeit::Behalten);
  systemfehler::pruefe(::fsync(datei.wert()));
  if (name_.isEmpty()) benenne(datei.wert());
  datei.schliesse();
}

void Ersatzdatei::benenne(int deskriptor) {
  const QByteArray quelle = "/proc/self/fd/" + QByteArray::number(deskriptor);
  name_ = freier_Name(ort_, [&](const QByteArray& name) {
    return ::linkat(AT_FDCWD, quelle.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0;
  });
}

void Ersatzdatei::tausche(bool auch_schreibgeschuetzte) {
  if (name_.isEmpty()) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  struct stat info {};
  systemfehler::pruefe(::stat(ort_.constData(), &info));
  if (!auch_schreibgeschuetzte && systemfehler::schreibgeschuetzt(info.st_mode))
    throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  int ergebnis = ::rename(name_.constData(), ort_.constData());
  if (ergebnis != 0 && (errno == EEXIST || errno == ENOTSUP)) {
    // A file system that renames to free names only. Should the second step fail, the new content is all there is, and
    // stays under its own name.
    systemfehler::pruefe(::unlink(ort_.constData()));
    const QByteArray name = std::exchange(name_, {});
    systemfehler::pruefe(::rename(name.constData(), ort_.constData()));
    return;
  }
  systemfehler::pruefe(ergebnis);
  name_.clear();
}
