#pragma once

#include <QString>
#include <type_traits>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/host/KVOCore.h"

namespace fehler {

/// Tells the host of a failure in `prozedur` of `klasse`, with a message to the user.
inline void melde(QStringView klasse, QStringView prozedur, const Laufzeitfehler& fehler) {
  KVOCore::aktuell().FehlerMelden(klasse.toString(), prozedur.toString(), fehler.Nummer(), fehler.Beschreibung(), true);
}

/// Report and end, the usual way: runs `rumpf` and hands its result on; a failure goes to the host as one of `prozedur`
/// in `klasse`, and the result is `T{}`.
template <class Rumpf>
auto gemeldet(QStringView klasse, QStringView prozedur, Rumpf&& rumpf) -> std::invoke_result_t<Rumpf> {
  return melden_und_enden(
      [&](const Laufzeitfehler& fehler) { melde(klasse, prozedur, fehler); }, std::forward<Rumpf>(rumpf));
}

}  // namespace fehler
