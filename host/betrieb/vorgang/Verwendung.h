#pragma once

#include <QString>
#include <QStringList>

#include "platform/adodb/Connection.h"
#include "store/clsBildZuordnungen.h"

/// By how many other records a picture is used that is to be taken out of one.
namespace verwendung {

/// A German sentence for each row of one record that is marked for removal and whose picture other records use too; the
/// table is asked once for all of them. A table that can't be asked says nothing: the removal itself tells it.
QStringList saetze(adodb::Connection& verbindung, clsBildZuordnungen& bilder);

}  // namespace verwendung
