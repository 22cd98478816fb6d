#include "platform/files/Systemfehler.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Nachschlagen.h"

namespace systemfehler {
namespace {

constexpr std::pair<int, std::int32_t> Nummern[] = {
    {EEXIST, fehlernummer::DateiVorhanden},
    {ENOENT, fehlernummer::DateiNichtGefunden},
    {ENOTDIR, fehlernummer::PfadNichtGefunden},
    {ELOOP, fehlernummer::PfadNichtGefunden},
    {EACCES, fehlernummer::ZugriffVerweigert},
    {EPERM, fehlernummer::ZugriffVerweigert},
    {ENOTEMPTY, fehlernummer::ZugriffVerweigert},
    {EBUSY, fehlernummer::ZugriffVerweigert},
    {ETXTBSY, fehlernummer::ZugriffVerweigert},
    {EROFS, fehlernummer::PfadZugriff},
    {EISDIR, fehlernummer::PfadZugriff},
    {ENOSPC, fehlernummer::DatentraegerVoll},
    {EDQUOT, fehlernummer::DatentraegerVoll},
    {EFBIG, fehlernummer::DatentraegerVoll},
    {ENAMETOOLONG, fehlernummer::UngueltigerDateiname},
    {EINVAL, fehlernummer::UngueltigerDateiname},
    {ENOMEM, fehlernummer::SpeicherErschoepft},
};

std::int32_t nummer(int fehler) noexcept {
  return nachgeschlagen(Nummern, fehler, fehlernummer::EinAusgabeFehler);
}

}  // namespace

void wirf(int fehler) {
  throw Laufzeitfehler(nummer(fehler));
}

bool ist_Ausfall(int fehler) noexcept {
  return nummer(fehler) == fehlernummer::EinAusgabeFehler;
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
