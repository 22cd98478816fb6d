#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "host/kvobild/pruefung/Befund.h"

/// What is known of the rows of Bild_Zuordnungen.
struct Datenlage {
  qint64 zeilen = 0;
  QList<Befund> befunde;
};

/// Looks for rows with an empty part of their identity, for rows that share their identity and, where a picture root is
/// given (a path of the table without a closing backslash), for rows whose file is missing. One query for each; a table
/// of many rows is read once. Raises what the connection raises.
Datenlage pruefe_Daten(adodb::Connection& verbindung, const std::optional<QString>& wurzel);
