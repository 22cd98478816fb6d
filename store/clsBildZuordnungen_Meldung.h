#pragma once

#include <utility>

#include "platform/host/Meldeweg.h"
#include "store/clsBildZuordnungen.h"

// How the collection reports and ends. Apart from its class, since hosts do not get the road of reports.

template <class Rumpf>
std::invoke_result_t<Rumpf> clsBildZuordnungen::gemeldet(QStringView prozedur, Rumpf&& rumpf) const {
  const auto melde = [&](const Laufzeitfehler& f) {
    if (!ohneMeldungen) fehler::melde(u"clsBildZuordnungen", prozedur, f);
  };
  return fehler::melden_und_enden(melde, std::forward<Rumpf>(rumpf));
}
