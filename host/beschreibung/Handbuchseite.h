#pragma once

#include <QList>
#include <QString>

#include "host/betrieb/befehl/Befehlszeile.h"

/// A page of the manual (man(7), section 1), made of what a program's help says, so that the two can't differ.
struct Handbuchseite {
  /// Without folder, as "kvobild-zuordnen.1".
  QString datei;
  QString text;
};

namespace handbuchseiten {

/// The page of a program and one for each of its commands; the latter are named by both, as "kvobild-zuordnen".
/// `fassung` is the program's version.
QList<Handbuchseite> mit_Befehlen(
    const Befehlsprogramm& programm, const QList<Befehl>& befehle, const QString& fassung);
/// The page of a program with options of its own, and with the commands of `dialog` on it.
Handbuchseite mit_Dialogen(
    const Befehl& programm, const Befehlsprogramm& dialog, const QList<Befehl>& dialoge, const QString& fassung);

}  // namespace handbuchseiten
