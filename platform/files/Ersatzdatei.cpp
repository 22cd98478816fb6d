#include "platform/files/Ersatzdatei.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"

namespace {

QByteArray ohne_Verweise(const QByteArray& ort) {
  const std::unique_ptr<char, void (*)(void*)> wahrer(::realpath(ort.constData(), nullptr), &::free);
  if (!wahrer) systemfehler::wirf(errno);
  return {wahrer.get()};
}

}  // namespace

Ersatzdatei::Ersatzdatei(const QString& pfad) {
  const stand::Stand s = stand::von(pfad);
  if (!s.vorhanden()) systemfehler::wirf(s.fehler);
  if (!S_ISREG(s.info.st_mode)) throw Laufzeitfehler(fehlernummer::PfadZugriff);
  ort_ = ohne_Verweise(s.ort);
}

void Ersatzdatei::schreibe(const QByteArray& bytes, Zeit zeit) {
  struct stat info {};
  systemfehler::pruefe(::stat(ort_.constData(), &info));
  neue_.emplace(ort_);
  neue_->schreibe(bytes);
  if (zeit == Zeit::Behalten) neue_->setze_Zeit(info);
  neue_->sichere();
}

void Ersatzdatei::tausche(bool auch_schreibgeschuetzte) {
  if (!neue_) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  struct stat info {};
  systemfehler::pruefe(::stat(ort_.constData(), &info));
  if (!auch_schreibgeschuetzte && systemfehler::schreibgeschuetzt(info.st_mode))
    throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  neue_->benenne(true);
}
