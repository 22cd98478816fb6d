#pragma once

#include <QString>
#include <vector>

#include "component/weg/Posten.h"

/// The words in which a save speaks to the user.
namespace weg::meldung {

/// Title of all boxes.
QString titel();
/// "„a.jpg“, „b.jpg“ und 3 weitere".
QString aufzaehlung(const QStringList& namen);
/// Which pictures wait, each with its reason, and whether to try again.
QString frage(const std::vector<Posten>& posten);
/// What the user has to know of a save that is over, without what the question said; empty where there is nothing.
QString abschluss(const std::vector<Posten>& posten);
void warne(const QString& text);
bool bejaht(const QString& frage, bool als_Warnung);

}  // namespace weg::meldung
