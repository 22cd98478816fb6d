#include "platform/files/Systemfehler.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/basic/Laufzeitfehler.h"

namespace systemfehler {

void wirf(int fehler) {
  switch (fehler) {
    case EEXIST:
      throw Laufzeitfehler(fehlernummer::DateiVorhanden);
    case ENOENT:
      throw Laufzeitfehler(fehlernummer::DateiNichtGefunden);
    case ENOTDIR:
    case ELOOP:
      throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
    case EACCES:
    case EPERM:
    case ENOTEMPTY:
    case EBUSY:
    case ETXTBSY:
      throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
    case EROFS:
    case EISDIR:
      throw Laufzeitfehler(fehlernummer::PfadZugriff);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      throw Laufzeitfehler(fehlernummer::DatentraegerVoll);
    case ENAMETOOLONG:
    case EINVAL:
      throw Laufzeitfehler(fehlernummer::UngueltigerDateiname);
    case ENOMEM:
      throw Laufzeitfehler(fehlernummer::SpeicherErschoepft);
    default:
      throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
  }
}

template <class Ergebnis>
Ergebnis pruefe(Ergebnis ergebnis) {
  if (ergebnis == -1) wirf(errno);
  return ergebnis;
}
template int pruefe(int);
template ssize_t pruefe(ssize_t);

Deskriptor::~Deskriptor() {
  if (wert_ >= 0) ::close(wert_);
}

void Deskriptor::schliesse() {
  pruefe(::close(entnimm()));
}

bool schreibgeschuetzt(unsigned modus) noexcept {
  return (modus & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}
bool unlesbar(unsigned modus) noexcept {
  return (modus & (S_IRUSR | S_IRGRP | S_IROTH)) == 0;
}

}  // namespace systemfehler
