#pragma once

#include <QList>
#include <QString>
#include <cstdint>

#include "host/betrieb/vorgang/Vorgang.h"
#include "host/betrieb/vorgang/Vorgangsfilter.h"
#include "platform/adodb/Connection.h"

/// Finds business records in the database. What the user typed goes there as values, never as a part of a statement.
/// Everything raises what the connection raises.
namespace vorgangsquelle {

/// Where the records come from: tables of our own with an index for the search, the firm's view Bild_Vorgaenge, or,
/// where there is no view, the records that have pictures.
enum class Herkunft { Eigene, Sicht, Zuordnungen };
Herkunft herkunft(adodb::Connection& verbindung);

struct Frage {
  Vorgangsfilter filter;
  /// So many records at most.
  int hoechstens = 200;
  /// Just these records, as far as they are there, whatever the filter says.
  bool nur_bestimmte = false;
  QList<Datensatz> bestimmte;
};

/// Numbers whose beginning was typed come first, then the newest: by Stand, those without one last, and by number. The
/// pictures of what is given are counted in the same statement.
QList<Vorgang> lies(adodb::Connection& verbindung, Herkunft herkunft, const Frage& frage);

/// A filter's hits are counted so far; `zaehle` gives one more where there are more. Without a filter all are counted.
inline constexpr std::int64_t Zaehlgrenze = 10000;
std::int64_t zaehle(adodb::Connection& verbindung, Herkunft herkunft, const Frage& frage);

}  // namespace vorgangsquelle
