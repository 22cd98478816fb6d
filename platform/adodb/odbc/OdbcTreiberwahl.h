#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "platform/adodb/odbc/OdbcSchicht.h"

namespace adodb {

/// What an ODBC driver takes in its connect string: the maker's keywords, FreeTDS's, or those of one that is not known
/// and is taken for the maker's.
enum class OdbcArt { Hersteller, FreeTds, Unbekannt };

struct OdbcInstallierter {
  QString name;
  OdbcArt art = OdbcArt::Unbekannt;
};

struct OdbcDatenquelle {
  QString name;
  QString treiber;
  /// What odbc.ini says of it for FreeTDS: the section of freetds.conf (Servername), and Encryption.
  QString abschnitt = {};
  QString verschluesselung = {};
};

/// The drivers and data sources that unixODBC knows, and what else of the machine decides how FreeTDS connects.
struct OdbcUmgebung {
  QList<OdbcInstallierter> treiber;
  QList<OdbcDatenquelle> datenquellen;
  /// Contents of its own files, see FreetdsDatei.h.
  QList<QByteArray> freetds;
  /// The environment's TDSVER, which goes before every other word about the protocol's version.
  QString tdsver;
};

/// Reads all of it; `umgebung` is an environment of ODBC 3.
OdbcUmgebung lies_Odbc_Umgebung(OdbcSchicht& odbc, SQLHENV umgebung);

/// The kind of a driver by its name and its library.
OdbcArt odbc_Art(const QString& name, const QString& bibliothek);

/// The driver is one of the maker's that encrypts all and checks the certificate where nothing is said.
bool verschluesselt_von_selbst(const OdbcInstallierter& treiber);

/// The data source of this name, or null.
const OdbcDatenquelle* finde_Datenquelle(const OdbcUmgebung& umgebung, const QString& name);

/// The driver for a connect string that names none: the maker's newest, without one FreeTDS. Raises -2147467259 when
/// neither is installed.
OdbcInstallierter waehle_Odbc_Treiber(const OdbcUmgebung& umgebung);

/// The driver of this name, or one by its library's path. Raises -2147467259 when the name is not installed.
OdbcInstallierter finde_Odbc_Treiber(const OdbcUmgebung& umgebung, const QString& name);

/// The driver behind a data source. Raises -2147467259 when there is no such data source.
OdbcInstallierter treiber_der_Datenquelle(const OdbcUmgebung& umgebung, const QString& name);

}  // namespace adodb
