#include "store/Bildereignis.h"

#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "store/Bilddatei.h"

namespace {

bildereignis::Hoerer& hoerer() {
  thread_local bildereignis::Hoerer einer;
  return einer;
}

}  // namespace

Bildereignis Bildereignis::von(const clsBilderSpeicher& satz, Tat tat, bool gelungen) {
  return {tat, gelungen, satz.Bild_Key1, satz.Bild_Key2, satz.Bild_Key3, satz.Bild_Key4, satz.Bild_Typ1, satz.Bild_Typ2,
      Bilddatei{satz.Bild_Bildname, satz.Bild_BildExt, satz.Bild_Pfad}.pfad()};
}

bildereignis::Hoerer bildereignis::setze(Hoerer neuer) {
  return std::exchange(hoerer(), std::move(neuer));
}

void bildereignis::melde(const Bildereignis& ereignis) noexcept {
  fehler::still_enden([&] {
    if (hoerer()) hoerer()(ereignis);
  });
}
