#pragma once

#include <QStringView>
#include <memory>

#include "platform/host/Meldeweg.h"

/// How the entry points open a form.
namespace dialogaufruf {

/// Makes a form, lets `zeige` fill and show it, `danach` read its result, and unloads it. A failure of the first two
/// goes to the host as one of the entry point `prozedur`; the form is then not unloaded, only let go. False after it.
template <class Fenster, class Zeige, class Danach>
bool rufe(QStringView prozedur, Zeige&& zeige, Danach&& danach) {
  std::unique_ptr<Fenster> form;
  const bool gelaufen = fehler::gemeldet(u"clsDialoge", prozedur, [&] {
    form = std::make_unique<Fenster>();
    zeige(*form);
    return true;
  });
  if (!gelaufen) return false;
  danach(*form);
  form->Unload();
  return true;
}

template <class Fenster, class Zeige>
bool rufe(QStringView prozedur, Zeige&& zeige) {
  return rufe<Fenster>(prozedur, zeige, [](const Fenster&) {});
}

}  // namespace dialogaufruf
