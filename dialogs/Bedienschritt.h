#pragma once

#include <QStringView>
#include <utility>

#include "platform/host/Meldeweg.h"
#include "platform/host/Oberflaeche.h"

/// Report and end of what the user started: as fehler::gemeldet, with the pointer set back before the message shows.
template <class Rumpf>
void bedienschritt(QStringView klasse, QStringView prozedur, Rumpf&& rumpf) {
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& fehler) {
    oberflaeche::mauszeiger().form(oberflaeche::Zeigerform::Standard);
    fehler::melde(klasse, prozedur, fehler);
      },
      std::forward<Rumpf>(rumpf));
}
