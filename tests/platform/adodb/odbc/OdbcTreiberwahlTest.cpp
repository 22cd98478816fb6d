#include <gtest/gtest.h>

#include "platform/adodb/odbc/OdbcTreiberwahl.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::OdbcArt;

namespace {

adodb::OdbcUmgebung mit(const QStringList& namen) {
  adodb::OdbcUmgebung umgebung;
  for (const QString& name : namen) umgebung.treiber.append({name, adodb::odbc_Art(name, {})});
  return umgebung;
}

}  // namespace

TEST(OdbcTreiberwahl, TakesTheMakersNewestBeforeFreeTds) {
  EXPECT_EQ(adodb::waehle_Odbc_Treiber(mit({u"PostgreSQL Unicode"_s, u"FreeTDS"_s, u"ODBC Driver 9 for SQL Server"_s,
                                           u"ODBC Driver 18 for SQL Server"_s, u"ODBC Driver 17 for SQL Server"_s}))
                .name,
      u"ODBC Driver 18 for SQL Server"_s);
  EXPECT_EQ(adodb::waehle_Odbc_Treiber(mit({u"SQLite3"_s, u"FreeTDS"_s, u"FreeTDS alt"_s})).name, u"FreeTDS"_s);
}

TEST(OdbcTreiberwahl, DriversOfOtherDatabasesDoNotFit) {
  EXPECT_EQ(Fehlernummer_von([] {
    adodb::waehle_Odbc_Treiber(mit({u"PostgreSQL Unicode"_s, u"SQLite3"_s}));
  }),
      fehlernummer::Verbindung);
  EXPECT_EQ(Fehlernummer_von([] { adodb::waehle_Odbc_Treiber({}); }), fehlernummer::Verbindung);
}

TEST(OdbcTreiberwahl, KnowsADriverByItsLibraryUnderAnyName) {
  EXPECT_EQ(adodb::odbc_Art(u"Firma"_s, u"/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so"_s), OdbcArt::FreeTds);
  EXPECT_EQ(
      adodb::odbc_Art(u"Firma"_s, u"/opt/microsoft/msodbcsql18/lib64/libmsodbcsql-18.3.so.2.1"_s), OdbcArt::Hersteller);
  EXPECT_EQ(adodb::odbc_Art(u"odbc driver 17 for sql server"_s, {}), OdbcArt::Hersteller);
  EXPECT_EQ(adodb::odbc_Art(u"Firma"_s, u"libfirma.so"_s), OdbcArt::Unbekannt);
}

TEST(OdbcTreiberwahl, FindsADriverByNameInAnyCaseOrByPath) {
  const adodb::OdbcUmgebung umgebung = mit({u"FreeTDS"_s});
  EXPECT_EQ(adodb::finde_Odbc_Treiber(umgebung, u"freetds"_s).name, u"FreeTDS"_s);
  EXPECT_EQ(adodb::finde_Odbc_Treiber(umgebung, u"/opt/libtdsodbc.so"_s).art, OdbcArt::FreeTds);
  EXPECT_EQ(Fehlernummer_von([&] { adodb::finde_Odbc_Treiber(umgebung, u"SQL Server"_s); }), fehlernummer::Verbindung);
}

TEST(OdbcTreiberwahl, ADataSourceHasTheKindOfItsDriver) {
  adodb::OdbcUmgebung umgebung = mit({u"FreeTDS"_s});
  umgebung.treiber.append({u"Firma"_s, OdbcArt::FreeTds});
  umgebung.datenquellen = {{u"Eins"_s, u"Firma"_s}, {u"Zwei"_s, u"/opt/libmsodbcsql-18.so"_s},
      {u"Drei"_s, u"ODBC Driver 18 for SQL Server"_s}};
  EXPECT_EQ(adodb::treiber_der_Datenquelle(umgebung, u"eins"_s).art, OdbcArt::FreeTds);
  EXPECT_EQ(adodb::treiber_der_Datenquelle(umgebung, u"Zwei"_s).art, OdbcArt::Hersteller);
  EXPECT_EQ(adodb::treiber_der_Datenquelle(umgebung, u"Drei"_s).art, OdbcArt::Hersteller);
  EXPECT_EQ(Fehlernummer_von([&] { adodb::treiber_der_Datenquelle(umgebung, u"Vier"_s); }), fehlernummer::Verbindung);
}
