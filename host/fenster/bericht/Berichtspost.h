#pragma once

#include <QString>

/// Hands a report to the user's mail program, through the desktop's own `xdg-email`.
namespace berichtspost {

/// There is such a program.
bool moeglich();
/// A new folder below the temporary one that its user alone can read: the mail program reads the file when it likes,
/// so it must stay. Ends with Abbruch, Ausgang::Datei, where there is none to be had.
QString ordner();
/// Deletes a folder of `ordner` that nothing was sent from.
void raeume_weg(const QString& ordner);
/// Opens a mail of that subject with the file attached and does not wait for it. Ends with Abbruch where it can't.
void sende(const QString& betreff, const QString& datei);

}  // namespace berichtspost
