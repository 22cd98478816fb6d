#include "platform/basic/Fehlerbehandlung.h"

#include <new>

namespace fehler {

Laufzeitfehler aktueller_Fehler() noexcept {
  try {
    throw;
  } catch (const Laufzeitfehler& fehler) {
    return fehler;
  } catch (const std::bad_alloc&) {
    return Laufzeitfehler(fehlernummer::SpeicherErschoepft);
  } catch (const std::exception& fremd) {
    return Laufzeitfehler(fehlernummer::Intern, QString::fromUtf8(fremd.what()));
  } catch (...) {
    return Laufzeitfehler(fehlernummer::Intern);
  }
}

}  // namespace fehler
