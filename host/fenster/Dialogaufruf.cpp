#include "host/fenster/Dialogaufruf.h"

#include "dialogs/assignment/clsDialoge.h"

Zuordnungsdialog dialogaufruf::der_Komponente() {
  return [](const auto&... argumente) { return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(argumente...); };
}
