#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "platform/adodb/Leitungsschutz.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/adodb/odbc/OdbcTreiberwahl.h"

namespace adodb {

/// A connect string put into the words of one ODBC driver, and what goes to the driver manager beside it.
struct OdbcAufruf {
  /// Text for SQLDriverConnect; holds the password.
  QString zeichenfolge;
  OdbcArt art = OdbcArt::Unbekannt;
  /// Seconds until a login is given up; 0 waits without limit.
  std::uint32_t anmeldezeit = 15;
  /// Bytes of a packet, if the connect string says so.
  std::optional<std::uint32_t> paketgroesse;
  /// Server or data source, for error texts.
  QString ziel;
  QString kennwort;
  Leitungsschutz schutz;
};

/// Whether a connect string without a `Provider` is one for ODBC: it names a driver, a data source, a server by
/// `Server`, or a database by `Initial Catalog` or `Database`.
bool ist_Odbc_Form(const Verbindungszeichenfolge& folge);

/// Translates a connect string of OLE DB or ODBC form. Keywords are compared without regard to case, blanks and
/// underscores. Of several words for one thing the last counts; an empty value counts as not given. Every keyword is
/// honoured, or refused with -2147467259 and words that never repeat what may be a password. docs/DATENBANK.md has the
/// table.
OdbcAufruf uebersetze_Odbc(const Verbindungszeichenfolge& folge, const OdbcUmgebung& umgebung);

}  // namespace adodb
