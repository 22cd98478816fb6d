#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "platform/adodb/Leitungsschutz.h"
#include "platform/adodb/odbc/OdbcTreiberwahl.h"

namespace adodb {

/// How much of a connection a connect string wants encrypted.
enum class Verschluesselung : std::uint8_t { KeineAngabe, Aus, NurAnmeldung, Ganz, Streng };

/// What a connect string says about the encryption, and which files of the machine say the rest.
struct Schutzwunsch {
  Verschluesselung stufe = Verschluesselung::KeineAngabe;
  /// The certificate is to be taken as it is; none where the connect string does not say.
  std::optional<bool> traut;
  /// All is to be encrypted and the certificate checked.
  bool verlangt_Pruefung = false;
  /// Names as in the connect string; empty where it names none.
  QString abschnitt;
  QString datenquelle;
};

/// What FreeTDS will do for a wish. Raises -2147467259 where it would do less than is wished, or could be brought to an
/// older form of the protocol that knows no encryption. `version` is the connect string's own.
Leitungsschutz schutz_bei_Freetds(const Schutzwunsch& wunsch, const OdbcUmgebung& umgebung, const QString& version);

/// What the maker's driver will do; `name` tells which one it is.
Leitungsschutz schutz_beim_Hersteller(const Schutzwunsch& wunsch, const OdbcInstallierter& treiber);

}  // namespace adodb
