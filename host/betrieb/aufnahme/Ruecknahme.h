#pragma once

#include <QString>
#include <QStringList>

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/aufnahme/Aufnahmeergebnis.h"

/// Takes back what was taken in: the rows, and the copies that no other row of the table names and that nobody has
/// changed since.
namespace ruecknahme {

struct Ergebnis {
  /// Rows that are gone.
  int entfernte = 0;
  /// German sentences about rows and copies that stay.
  QStringList geblieben;

  QString text() const;
};

/// Nothing flies; what fails stands in the result.
Ergebnis nimm_zurueck(
    const Arbeitsplatz& platz, const Zuordnungsweg::Vorgang& vorgang, const Aufnahmeergebnis& aufnahme);

}  // namespace ruecknahme
