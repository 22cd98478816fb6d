#include "platform/gdiplus/Status.h"

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Nachschlagen.h"

namespace gdiplus {
namespace {

constexpr std::pair<std::int32_t, std::int32_t> Immer[] = {
    {fehlernummer::ZugriffVerweigert, AccessDenied},
    {fehlernummer::SpeicherErschoepft, OutOfMemory},
    {fehlernummer::EinAusgabeFehler, Win32Error},
    {fehlernummer::DateiNichtGefunden, FileNotFound},
    {fehlernummer::UngueltigerDateiname, FileNotFound},
    {fehlernummer::PfadNichtGefunden, FileNotFound},
};

}  // namespace

std::int32_t status_beim_Lesen(std::int32_t nummer) noexcept {
  if (nummer == fehlernummer::PfadZugriff) return FileNotFound;
  return nachgeschlagen<std::int32_t, std::int32_t>(Immer, nummer, GenericError);
}

std::int32_t status_beim_Schreiben(std::int32_t nummer) noexcept {
  if (nummer == fehlernummer::PfadZugriff || nummer == fehlernummer::DateiVorhanden) return AccessDenied;
  return nachgeschlagen<std::int32_t, std::int32_t>(Immer, nummer, Win32Error);
}

}  // namespace gdiplus
