#pragma once

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <QString>
#include <cstdint>
#include <optional>

namespace adodb {

/// The calls of ODBC 3 that the driver makes, each under its own name and with its own return value, so that a test can
/// answer them without a server. Texts are UTF-16; handles, numbers and lengths are those of ODBC.
class OdbcSchicht {
 public:
  virtual ~OdbcSchicht();

  virtual SQLRETURN AllocHandle(SQLSMALLINT art, SQLHANDLE eltern, SQLHANDLE* neu) = 0;
  virtual SQLRETURN FreeHandle(SQLSMALLINT art, SQLHANDLE griff) = 0;
  virtual SQLRETURN SetEnvAttr(SQLHENV umgebung, SQLINTEGER attribut, SQLULEN wert) = 0;
  /// Attributes whose value is a number.
  virtual SQLRETURN SetConnectAttr(SQLHDBC verbindung, SQLINTEGER attribut, SQLULEN wert) = 0;
  virtual SQLRETURN GetConnectAttr(SQLHDBC verbindung, SQLINTEGER attribut, SQLUINTEGER* wert) = 0;
  virtual SQLRETURN SetStmtAttr(SQLHSTMT anweisung, SQLINTEGER attribut, SQLULEN wert) = 0;
  /// Attributes whose value is a place that the driver writes to.
  virtual SQLRETURN SetStmtZeiger(SQLHSTMT anweisung, SQLINTEGER attribut, void* ziel) = 0;
  /// SQLDriverConnectW without any prompt.
  virtual SQLRETURN DriverConnect(SQLHDBC verbindung, const QString& zeichenfolge) = 0;
  virtual SQLRETURN Disconnect(SQLHDBC verbindung) = 0;
  /// Binds the value of a marker, counted from 1, as input of the SQL type `typ`; `groesse` is the type's width in
  /// characters or digits. `bytes` and `laenge` count bytes, a closing zero is in neither; `laenge` may be
  /// SQL_NULL_DATA. Both places must live until the statement has run.
  virtual SQLRETURN BindParameter(SQLHSTMT anweisung, SQLUSMALLINT nummer, SQLSMALLINT art, SQLSMALLINT typ,
      SQLULEN groesse, const void* wert, SQLLEN bytes, SQLLEN* laenge) = 0;
  /// The one call that may come while another thread is in a call on the same statement.
  virtual SQLRETURN Cancel(SQLHSTMT anweisung) = 0;
  virtual SQLRETURN ExecDirect(SQLHSTMT anweisung, const QString& text) = 0;
  virtual SQLRETURN NumResultCols(SQLHSTMT anweisung, SQLSMALLINT* spalten) = 0;
  /// `platz` and `laenge` count characters; `laenge` is the whole name's. `groesse` is the column's width, 0 where it
  /// has no bound. Columns are counted from 1.
  virtual SQLRETURN DescribeCol(SQLHSTMT anweisung, SQLUSMALLINT spalte, char16_t* name, SQLSMALLINT platz,
      SQLSMALLINT* laenge, SQLSMALLINT* typ, SQLULEN* groesse) = 0;
  /// `platz` counts the bytes of one row's value. The driver writes to both places at every Fetch.
  virtual SQLRETURN BindCol(
      SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laengen) = 0;
  virtual SQLRETURN Fetch(SQLHSTMT anweisung) = 0;
  /// `platz` and `laenge` count bytes, the closing zero is in `platz` and not in `laenge`.
  virtual SQLRETURN GetData(
      SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laenge) = 0;
  virtual SQLRETURN MoreResults(SQLHSTMT anweisung) = 0;
  /// `sqlstate` has room for six characters; `platz` and `laenge` count characters, `laenge` is the whole text's.
  virtual SQLRETURN GetDiagRec(SQLSMALLINT art, SQLHANDLE griff, SQLSMALLINT satz, char16_t* sqlstate,
      SQLINTEGER* nummer, char16_t* text, SQLSMALLINT platz, SQLSMALLINT* laenge) = 0;
  /// The next installed driver and its attributes ("Driver=libtdsodbc.so", one behind the other, parted by zeros), or
  /// SQL_NO_DATA. `richtung` is SQL_FETCH_FIRST or SQL_FETCH_NEXT, here and below.
  virtual SQLRETURN Drivers(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* attribute) = 0;
  /// The next data source and the name of its driver.
  virtual SQLRETURN DataSources(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* treiber) = 0;
  /// A value of a data source in odbc.ini; empty where there is none.
  virtual QString Quellenwert(const QString& quelle, const QString& name) = 0;
  /// How many bytes of an open connection of FreeTDS's the other side has taken, none of them counted twice. None where
  /// driver or system do not tell.
  virtual std::optional<std::uint64_t> bestaetigte_Bytes(SQLHDBC verbindung) = 0;
};

/// The machine's own driver manager. Lives as long as the process.
OdbcSchicht& odbc_der_Maschine();

}  // namespace adodb
