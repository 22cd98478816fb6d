#include "platform/gdiplus/miniatur/Eintragsdatei.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "platform/gdiplus/miniatur/Eintragsort.h"

namespace miniatur {
namespace {

int oeffne_neu(QByteArray& vorlage) {
  return ::mkostemp(vorlage.data(), O_CLOEXEC);
}

bool schreibe_alles(int deskriptor, const QByteArray& bytes) {
  qsizetype geschrieben = 0;
  while (geschrieben < bytes.size()) {
    const ssize_t n =
        ::write(deskriptor, bytes.constData() + geschrieben, static_cast<std::size_t>(bytes.size() - geschrieben));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    geschrieben += n;
  }
  return true;
}

}  // namespace

Eintragsdatei::Eintragsdatei(const QByteArray& pfad)
    : deskriptor_(::open(pfad.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)) {
  struct stat s {};
  if (deskriptor_.wert() < 0 || ::fstat(deskriptor_.wert(), &s) != 0) return;
  if (S_ISREG(s.st_mode) && s.st_uid == ::geteuid() && s.st_size <= Groesste) laenge_ = s.st_size;
}

QByteArray Eintragsdatei::lies(std::int64_t anzahl) const {
  QByteArray bytes(std::min(anzahl, laenge_), Qt::Uninitialized);
  qsizetype gelesen = 0;
  while (gelesen < bytes.size()) {
    const ssize_t n =
        ::pread(deskriptor_.wert(), bytes.data() + gelesen, static_cast<std::size_t>(bytes.size() - gelesen), gelesen);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    gelesen += n;
  }
  bytes.truncate(gelesen);
  return bytes;
}

Neuer_Eintrag::Neuer_Eintrag(const QByteArray& ordner, const QByteArray& name, const QByteArray& bytes)
    : ziel_(ordner + '/' + name) {
  const QByteArray vorlage = ordner + "/." + name + ".XXXXXX";
  vorlaeufig_ = vorlage;
  int deskriptor = oeffne_neu(vorlaeufig_);
  if (deskriptor < 0 && errno == ENOENT) {
    mache_Ordner(ordner);
    vorlaeufig_ = vorlage;
    deskriptor = oeffne_neu(vorlaeufig_);
  }
  if (deskriptor < 0) {
    vorlaeufig_.clear();
    return;
  }
  // Some masks leave the owner fewer rights than he asks for.
  const bool gut = ::fchmod(deskriptor, S_IRUSR | S_IWUSR) == 0 && schreibe_alles(deskriptor, bytes);
  // A share tells only now what it could not write.
  geschrieben_ = ::close(deskriptor) == 0 && gut;
}

Neuer_Eintrag::~Neuer_Eintrag() {
  if (!vorlaeufig_.isEmpty()) ::unlink(vorlaeufig_.constData());
}

bool Neuer_Eintrag::benenne() {
  if (!geschrieben_ || ::rename(vorlaeufig_.constData(), ziel_.constData()) != 0) return false;
  vorlaeufig_.clear();
  return true;
}

}  // namespace miniatur
