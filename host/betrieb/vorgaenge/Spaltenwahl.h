#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "host/betrieb/vorgaenge/Listenleser.h"
#include "host/betrieb/vorgaenge/Vorgangsspalten.h"

/// What the values of a list's lines mean.
struct Spaltenwahl {
  /// For each place of a line its column, or none for one that is passed over.
  QList<std::optional<Vorgangsspalte>> spalten;
  /// The first line holds headings.
  bool kopfzeile = false;
  /// The kind of all records of a list that has no column for it; else empty.
  QString typ1;
  friend bool operator==(const Spaltenwahl&, const Spaltenwahl&) = default;
};

namespace spaltenwahl {

/// The choice that the list itself suggests: by its headings, where its first line has at least two that are known,
/// else by place, in the order of the columns. Begins the list anew, before and after.
Spaltenwahl vorschlag(Listenleser& liste);
/// The choice by the headings of the first line, or by place. Headings that nobody knows, and a second one for the same
/// column, choose nothing.
Spaltenwahl nach_Kopfzeile(const QList<Listenwert>& kopf);
Spaltenwahl nach_Platz();
/// Why nothing can be taken in that way, without a full stop; empty where it can.
QString pruefe(const Spaltenwahl& wahl);

}  // namespace spaltenwahl
