#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "platform/adodb/Connection.h"
#include "store/clsBildZuordnungen.h"

/// The stored order of assignments, which the store itself reads by but leaves out of its records.
namespace reihenfolge {

/// Reads the stored SortIndex of the rows that the store has read, one for each row, and sets Bild_SortIndex of their
/// records (within its 16 bits): a row that is saved then keeps its place. `bedingung` is " where …" for the same rows
/// that the store was asked for, or empty. Raises what the connection raises.
std::vector<std::int64_t> lies(adodb::Connection& verbindung, clsBildZuordnungen& store, const QString& bedingung);

}  // namespace reihenfolge
