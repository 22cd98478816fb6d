#pragma once

#include "host/betrieb/befehl/Befehlszeile.h"

/// The commands of the program, each with its help.
namespace befehle {

Befehl lesen();
Befehl zuordnen();
Befehl aendern();
Befehl entfernen();
Befehl umbenennen();
Befehl anlegen();
Befehl datenbank_anlegen();
Befehl datenbank_pruefen();
Befehl aufraeumen();
Befehl ausgeben();
Befehl bericht();
Befehl exif();
Befehl drehen();
Befehl protokoll();
Befehl thumbnail();
Befehl beispieldaten();
Befehl vorgaenge_einlesen();
Befehl vorgaenge_liste();

/// The program, and all of its commands in the order in which its help names them.
const Befehlsprogramm& programm();
QList<Befehl> alle();
/// Runs the program on its arguments, its own name left out. What fails is told on standard error, and nothing flies.
Ausgang laufe(const QStringList& argumente);

}  // namespace befehle
