#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>

#include "host/bericht/Seitenplan.h"

/// Letters and lines of a report; all measures are twips, the same on every output.
namespace textsatz {

QFont schrift(Schrift art);
QColor farbe(Schrift art);
/// From one baseline to the next.
double zeilenhoehe(Schrift art);
/// From the upper edge of a line to its baseline.
double oberlaenge(Schrift art);
double breite(const QString& text, Schrift art);

/// The text in lines of at most that width, parted at blanks, inside a word where one alone is too long. What is no
/// letter (tabs, control characters) becomes a blank; empty lines at the end are left out.
QStringList umbruch(const QString& text, Schrift art, double breite);
/// One line of at most that width, with "…" where the text is longer.
QString gekuerzt(const QString& text, Schrift art, double breite);

}  // namespace textsatz
