#pragma once

#include "host/betrieb/vorgang/Vorgang.h"
#include "platform/adodb/Connection.h"

/// What became of a record that the user wants to delete.
enum class Loeschergebnis {
  Geloescht,
  /// The user kept it, or it could not be deleted, which he was told.
  Behalten,
  /// It has pictures, and the user wants to see them.
  Bilder_zeigen,
};

/// Asks and deletes a record. One that has pictures is kept; the message says how many and offers to show them.
Loeschergebnis loesche_Vorgang(adodb::Connection& verbindung, const Vorgang& vorgang);
