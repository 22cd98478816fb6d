#pragma once

#include <QList>
#include <QString>
#include <cstdint>

#include "platform/adodb/Treiber.h"
#include "platform/adodb/odbc/OdbcSchicht.h"

namespace adodb {

/// One record of ODBC's diagnostics. `worte` come without the names of the components in square brackets before them.
struct OdbcMeldung {
  QString sqlstate;
  std::int32_t nummer = 0;
  QString worte;
};

/// All records that the last call left at a handle, at most 64.
QList<OdbcMeldung> odbc_Meldungen(OdbcSchicht& odbc, SQLSMALLINT art, SQLHANDLE griff);

/// A connect string that cannot be honoured, -2147467259.
[[noreturn]] void odbc_unerfuellbar(const QString& worte);

/// The failure of a statement, -2147217900, with the words of all records that are no warnings. SQLSTATE and the
/// server's number are those of the first such record that has a number. `abgerissen`: the link to the server is gone.
Datenbankfehler odbc_Anweisungsfehler(const QList<OdbcMeldung>& meldungen, bool abgerissen);

/// What was tried when a connection failed; the password is wiped from all words.
struct OdbcVersuch {
  QString ziel;
  QString kennwort;
  std::uint32_t zeitgrenze = 0;
  /// No connection was to be made but an encrypted one.
  bool verschluesselt = false;
};

/// The failure to connect, -2147467259.
Datenbankfehler odbc_Verbindungsfehler(const QList<OdbcMeldung>& meldungen, const OdbcVersuch& versuch);

}  // namespace adodb
