#pragma once

#include <QList>

#include "host/betrieb/befehl/Befehlszeile.h"

/// What "bildzuordnung dialog" is called with, each dialog with its help; what a call does is set by whoever runs it.
namespace dialogbefehle {

const Befehlsprogramm& programm();
Befehl zuordnung();
Befehl suche();
Befehl alle_Zuordnungen();
Befehl weitere();
Befehl eigenschaften();
/// All of them, in the order in which the help names them.
QList<Befehl> alle();

}  // namespace dialogbefehle
