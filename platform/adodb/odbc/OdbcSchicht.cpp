#include "platform/adodb/odbc/OdbcSchicht.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <odbcinst.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace adodb {

OdbcSchicht::~OdbcSchicht() = default;

namespace {

// The driver manager's characters are the 16-bit units of a QString.
static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

/// ODBC takes texts as writable and does not write to them.
SQLWCHAR* zeichen(const QString& text) {
  return const_cast<SQLWCHAR*>(reinterpret_cast<const SQLWCHAR*>(text.utf16()));
}

SQLWCHAR* zeichen(char16_t* text) {
  return reinterpret_cast<SQLWCHAR*>(text);
}

/// Attributes that are numbers travel in the pointer itself.
SQLPOINTER als_Zeiger(SQLULEN wert) {
  return reinterpret_cast<SQLPOINTER>(wert);
}

using Listenaufruf = SQLRETURN (*)(
    SQLHENV, SQLUSMALLINT, SQLWCHAR*, SQLSMALLINT, SQLSMALLINT*, SQLWCHAR*, SQLSMALLINT, SQLSMALLINT*);

SQLRETURN naechster(Listenaufruf aufruf, SQLHENV umgebung, SQLUSMALLINT richtung, QString* erster, QString* zweiter) {
  std::array<char16_t, 512> a{};
  std::array<char16_t, 4096> b{};
  SQLSMALLINT laenge_a = 0;
  SQLSMALLINT laenge_b = 0;
  const SQLRETURN ergebnis = aufruf(umgebung, richtung, zeichen(a.data()), SQLSMALLINT{a.size()}, &laenge_a,
      zeichen(b.data()), SQLSMALLINT{b.size()}, &laenge_b);
  if (!SQL_SUCCEEDED(ergebnis)) return ergebnis;
  *erster = QString::fromUtf16(a.data(), std::clamp<qsizetype>(laenge_a, 0, a.size() - 1));
  *zweiter = QString::fromUtf16(b.data(), std::clamp<qsizetype>(laenge_b, 0, b.size() - 1));
  return ergebnis;
}

/// FreeTDS's own question for the handle of its socket.
constexpr SQLUSMALLINT FreetdsBuchse = 1301;

class Treiberverwaltung final : public OdbcSchicht {
 public:
  SQLRETURN AllocHandle(SQLSMALLINT art, SQLHANDLE eltern, SQLHANDLE* neu) override {
    return SQLAllocHandle(art, eltern, neu);
  }
  SQLRETURN FreeHandle(SQLSMALLINT art, SQLHANDLE griff) override { return SQLFreeHandle(art, griff); }
  SQLRETURN SetEnvAttr(SQLHENV umgebung, SQLINTEGER attribut, SQLULEN wert) override {
    return SQLSetEnvAttr(umgebung, attribut, als_Zeiger(wert), SQL_IS_UINTEGER);
  }
  SQLRETURN SetConnectAttr(SQLHDBC verbindung, SQLINTEGER attribut, SQLULEN wert) override {
    return SQLSetConnectAttrW(verbindung, attribut, als_Zeiger(wert), SQL_IS_UINTEGER);
  }
  SQLRETURN GetConnectAttr(SQLHDBC verbindung, SQLINTEGER attribut, SQLUINTEGER* wert) override {
    return SQLGetConnectAttrW(verbindung, attribut, wert, SQL_IS_UINTEGER, nullptr);
  }
  SQLRETURN SetStmtAttr(SQLHSTMT anweisung, SQLINTEGER attribut, SQLULEN wert) override {
    return SQLSetStmtAttrW(anweisung, attribut, als_Zeiger(wert), SQL_IS_UINTEGER);
  }
  SQLRETURN SetStmtZeiger(SQLHSTMT anweisung, SQLINTEGER attribut, void* ziel) override {
    return SQLSetStmtAttrW(anweisung, attribut, ziel, SQL_IS_POINTER);
  }
  SQLRETURN DriverConnect(SQLHDBC verbindung, const QString& zeichenfolge) override {
    return SQLDriverConnectW(verbindung, nullptr, zeichen(zeichenfolge), static_cast<SQLSMALLINT>(zeichenfolge.size()),
        nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  }
  SQLRETURN Disconnect(SQLHDBC verbindung) override { return SQLDisconnect(verbindung); }
  SQLRETURN BindParameter(SQLHSTMT anweisung, SQLUSMALLINT nummer, SQLSMALLINT art, SQLSMALLINT typ, SQLULEN groesse,
      const void* wert, SQLLEN bytes, SQLLEN* laenge) override {
    // The value of an input is only read.
    return SQLBindParameter(
        anweisung, nummer, SQL_PARAM_INPUT, art, typ, groesse, 0, const_cast<SQLPOINTER>(wert), bytes, laenge);
  }
  SQLRETURN Cancel(SQLHSTMT anweisung) override { return SQLCancel(anweisung); }
  SQLRETURN ExecDirect(SQLHSTMT anweisung, const QString& text) override {
    return SQLExecDirectW(anweisung, zeichen(text), static_cast<SQLINTEGER>(text.size()));
  }
  SQLRETURN NumResultCols(SQLHSTMT anweisung, SQLSMALLINT* spalten) override {
    return SQLNumResultCols(anweisung, spalten);
  }
  SQLRETURN DescribeCol(SQLHSTMT anweisung, SQLUSMALLINT spalte, char16_t* name, SQLSMALLINT platz, SQLSMALLINT* laenge,
      SQLSMALLINT* typ, SQLULEN* groesse) override {
    return SQLDescribeColW(anweisung, spalte, zeichen(name), platz, laenge, typ, groesse, nullptr, nullptr);
  }
  SQLRETURN BindCol(
      SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laengen) override {
    return SQLBindCol(anweisung, spalte, art, ziel, platz, laengen);
  }
  SQLRETURN Fetch(SQLHSTMT anweisung) override { return SQLFetch(anweisung); }
  SQLRETURN GetData(
      SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laenge) override {
    return SQLGetData(anweisung, spalte, art, ziel, platz, laenge);
  }
  SQLRETURN MoreResults(SQLHSTMT anweisung) override { return SQLMoreResults(anweisung); }
  SQLRETURN GetDiagRec(SQLSMALLINT art, SQLHANDLE griff, SQLSMALLINT satz, char16_t* sqlstate, SQLINTEGER* nummer,
      char16_t* text, SQLSMALLINT platz, SQLSMALLINT* laenge) override {
    return SQLGetDiagRecW(art, griff, satz, zeichen(sqlstate), nummer, zeichen(text), platz, laenge);
  }
  SQLRETURN Drivers(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* attribute) override {
    return naechster(SQLDriversW, umgebung, richtung, name, attribute);
  }
  SQLRETURN DataSources(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* treiber) override {
    return naechster(SQLDataSourcesW, umgebung, richtung, name, treiber);
  }
  QString Quellenwert(const QString& quelle, const QString& name) override {
    std::array<char, 512> wert{};
    SQLGetPrivateProfileString(quelle.toUtf8().constData(), name.toLatin1().constData(), "", wert.data(),
        static_cast<int>(wert.size()), "odbc.ini");
    return QString::fromUtf8(wert.data()).trimmed();
  }
  std::optional<std::uint64_t> bestaetigte_Bytes(SQLHDBC verbindung) override {
    std::uint64_t buchse = 0;
    SQLSMALLINT laenge = 0;
    if (SQLGetInfoW(verbindung, FreetdsBuchse, &buchse, sizeof buchse, &laenge) != SQL_SUCCESS) return std::nullopt;
    tcp_info lage{};
    socklen_t groesse = sizeof lage;
    if (getsockopt(static_cast<int>(buchse), IPPROTO_TCP, TCP_INFO, &lage, &groesse) != 0) return std::nullopt;
    // An older system fills less of it.
    if (groesse < offsetof(tcp_info, tcpi_bytes_acked) + sizeof lage.tcpi_bytes_acked) return std::nullopt;
    return lage.tcpi_bytes_acked;
  }
};

}  // namespace

OdbcSchicht& odbc_der_Maschine() {
  // Never destroyed: a thread's writing connection may outlive the static objects.
  static OdbcSchicht* const Eine = new Treiberverwaltung;
  return *Eine;
}

}  // namespace adodb
