#pragma once

#include <QString>
#include <cstdint>

#include "host/betrieb/vorgaenge/Listenleser.h"
#include "host/betrieb/vorgaenge/Spaltenwahl.h"
#include "host/betrieb/vorgaenge/Vorgangsspalten.h"

/// A line of a list as the table will hold it. The reasons are clauses without a full stop.
struct Einlesezeile {
  qint64 nummer = 0;
  Vorgangswerte werte;
  /// The columns that the line names, a bit each by their place.
  std::int64_t genannte = 0;
  /// The record's number in one text; records of the same number have the same to the collation SERVERTEXT.
  QString kennung;
  /// The line is wrong whatever stands in the table.
  QString fehler;
  /// It is wrong where it would make a new record. What is there already may come in as it went out.
  QString fehler_neu;
  /// It is wrong where it would make or change a record.
  QString fehler_anders;
};

/// Bit of a column in `genannte`.
constexpr std::int64_t bit(Vorgangsspalte spalte) {
  return std::int64_t{1} << vorgangsspalten::platz(spalte);
}

Einlesezeile als_Einlesezeile(const Listenzeile& zeile, const Spaltenwahl& wahl);
