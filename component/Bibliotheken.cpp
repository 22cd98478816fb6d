#include "component/Bibliotheken.h"

#include <sqlite3.h>

// Its own header wants this one first.
#include <jpeglib.h>

#include <cstdio>

#include "platform/adodb/odbc/OdbcSchicht.h"
#include "platform/adodb/odbc/OdbcTreiberwahl.h"

using namespace Qt::Literals::StringLiterals;

namespace {

#define KVO_ALS_TEXT(wert) #wert
#define KVO_TEXT(wert) KVO_ALS_TEXT(wert)

}  // namespace

QList<bibliotheken::Bibliothek> bibliotheken::benutzte() {
  return {{u"Qt"_s, QString::fromLatin1(qVersion())}, {u"SQLite"_s, QString::fromLatin1(sqlite3_libversion())},
      {u"libjpeg-turbo"_s, QStringLiteral(KVO_TEXT(LIBJPEG_TURBO_VERSION))}};
}

QStringList bibliotheken::odbc_Treiber() {
  adodb::OdbcSchicht& odbc = adodb::odbc_der_Maschine();
  SQLHENV umgebung = SQL_NULL_HENV;
  QStringList namen;
  if (!SQL_SUCCEEDED(odbc.AllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &umgebung))) return namen;
  if (SQL_SUCCEEDED(odbc.SetEnvAttr(umgebung, SQL_ATTR_ODBC_VERSION, SQL_OV_ODBC3)))
    for (const adodb::OdbcInstallierter& treiber : adodb::lies_Odbc_Umgebung(odbc, umgebung).treiber)
      namen.append(treiber.name);
  odbc.FreeHandle(SQL_HANDLE_ENV, umgebung);
  return namen;
}
