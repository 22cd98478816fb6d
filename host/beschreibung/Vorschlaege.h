#pragma once

#include <QList>
#include <QString>

#include "host/betrieb/befehl/Befehlszeile.h"

/// What a shell proposes while a call is typed, made of what the program's help says.
namespace vorschlaege {

/// A script for bash (bash(1), "Programmable Completion"): it proposes the commands of `programm` and its own options,
/// behind a command that one's, and for each of them the values that can be counted, folders or files. Commands may
/// have two words, as "dialog suche".
QString bash(const QString& programm, const QList<Option>& eigene, const QList<Befehl>& befehle);

}  // namespace vorschlaege
