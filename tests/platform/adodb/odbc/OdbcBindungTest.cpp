// Columns that are fetched in blocks, against a driver manager of the test's own.
#include <gtest/gtest.h>

#include "platform/adodb/Connection.h"
#include "platform/adodb/odbc/OdbcBindung.h"
#include "platform/adodb/odbc/OdbcTreiber.h"
#include "tests/platform/adodb/odbc/OdbcDoppel.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using Schritt = OdbcDoppel::Schritt;

namespace {

constexpr int Zeilen = 1000;

class OdbcBindungTest : public testing::Test {
 protected:
  OdbcBindungTest() {
    odbc.bindet = true;
    treiber.oeffne(u"Server=SRV;UID=u;PWD=geheim"_s);
  }

  /// Rows of a name, a text that is now NULL, now empty, and a number.
  Schritt tabelle(SQLULEN groesse) const {
    Schritt schritt{.spalten = {{u"a"_s, SQL_WVARCHAR, 50}, {u"b"_s, SQL_CHAR, groesse}, {u"n"_s, SQL_SMALLINT, 5}}};
    for (int i = 0; i < Zeilen; ++i) schritt.zeilen.push_back({u"Größe \U0001F4F7"_s, b(i), QString::number(i - 500)});
    return schritt;
  }
  static OdbcDoppel::Zelle b(int i) {
    return i % 3 == 0 ? OdbcDoppel::Zelle() : OdbcDoppel::Zelle(i % 3 == 1 ? u""_s : u"\uFEFF-%1"_s.arg(i));
  }
  void erwarte_Tabelle() {
    const adodb::Ergebnis ergebnis = treiber.fuehre_aus(u"Select"_s);
    ASSERT_EQ(ergebnis.zeilen(), std::size_t{Zeilen});
    for (int i = 0; i < Zeilen; ++i) {
      const auto erster = static_cast<std::size_t>(i) * 3;
      EXPECT_EQ(ergebnis.werte[erster], adodb::Wert(u"Größe \U0001F4F7"_s));
      EXPECT_EQ(ergebnis.werte[erster + 1], b(i) ? adodb::Wert(*b(i)) : adodb::Wert());
      EXPECT_EQ(ergebnis.werte[erster + 2], adodb::Wert(std::int64_t{i - 500}));
    }
  }
  QString fehler() {
    try {
      treiber.fuehre_aus(u"Select"_s);
    } catch (const adodb::Datenbankfehler& gefangener) {
      EXPECT_EQ(gefangener.Nummer(), -2147217900);
      return gefangener.Beschreibung();
    }
    ADD_FAILURE() << "kein Fehler";
    return {};
  }

  OdbcDoppel odbc;
  adodb::OdbcTreiber treiber{odbc};
};

}  // namespace

TEST_F(OdbcBindungTest, RowsOfBoundedColumnsComeInBlocks) {
  odbc.schritte = {tabelle(10)};
  erwarte_Tabelle();
  EXPECT_EQ(odbc.einzelne_Werte, 0);
  EXPECT_LT(odbc.geholte_Bloecke, Zeilen / 10);
}

TEST_F(OdbcBindungTest, AColumnWithoutABoundIsReadValueByValueAndThoseBeforeItAreBound) {
  for (const SQLULEN groesse : {SQLULEN{0}, adodb::OdbcBindung::Breiteste + 1}) {
    odbc.schritte = {tabelle(groesse)};
    odbc.einzelne_Werte = 0;
    erwarte_Tabelle();
    EXPECT_EQ(odbc.einzelne_Werte, 2 * Zeilen);
  }
}

TEST_F(OdbcBindungTest, ADriverWithoutBlocksGivesRowByRow) {
  for (const SQLINTEGER attribut : {SQL_ATTR_ROW_ARRAY_SIZE, SQL_ATTR_ROW_STATUS_PTR, SQL_ATTR_ROWS_FETCHED_PTR}) {
    odbc.schritte = {tabelle(10)};
    odbc.unbekannte_Attribute = {attribut};
    odbc.geholte_Bloecke = 0;
    erwarte_Tabelle();
    EXPECT_EQ(odbc.geholte_Bloecke, Zeilen + 1);
  }
}

TEST_F(OdbcBindungTest, ADriverWithoutBoundColumnsIsAskedForEachValue) {
  odbc.bindet = false;
  odbc.schritte = {tabelle(10)};
  erwarte_Tabelle();
  EXPECT_EQ(odbc.einzelne_Werte, 3 * Zeilen);
}

TEST_F(OdbcBindungTest, AFailureWithinABlockIsOneOfTheStatement) {
  odbc.schritte = {tabelle(10)};
  odbc.schritte[0].scheitert_bei = 700;
  fehler();
  odbc.schritte[0].scheitert_bei.reset();
  odbc.schlechte_Zeile = 700;
  fehler();
}

TEST_F(OdbcBindungTest, AValueLongerThanItsColumnIsAFailureAndNeverCut) {
  for (const auto angabe : {OdbcDoppel::Laenge::Rest, OdbcDoppel::Laenge::Unbekannt}) {
    odbc.laenge = angabe;
    odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR, 5}}, .zeilen = {{u"12345"_s}, {u"123456"_s}}}};
    EXPECT_TRUE(fehler().contains(u"länger"_s));
  }
}

TEST_F(OdbcBindungTest, AFullColumnIsNotTooLong) {
  odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR, 5}}, .zeilen = {{u"12345"_s}}}};
  EXPECT_EQ(treiber.fuehre_aus(u"Select"_s).werte[0], adodb::Wert(u"12345"_s));
}
