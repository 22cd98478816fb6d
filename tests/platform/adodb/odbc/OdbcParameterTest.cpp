#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

#include "platform/adodb/Parameter.h"
#include "platform/adodb/odbc/OdbcTreiber.h"
#include "tests/platform/adodb/odbc/OdbcDoppel.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;
using Parameter = OdbcDoppel::Parameter;
using Schritt = OdbcDoppel::Schritt;

namespace {

struct OdbcParameterTest : testing::Test {
  OdbcDoppel odbc;
  adodb::OdbcTreiber treiber{odbc};

  void oeffne() { treiber.oeffne(u"Server=SRV;UID=u;PWD=p"_s); }
  void oeffne_mit_Hersteller() {
    odbc.treiber = {{u"ODBC Driver 18 for SQL Server"_s, u"Driver=libmsodbcsql-18.so"_s}};
    oeffne();
  }
  Parameter gebunden(const Wert& wert) {
    treiber.fuehre_aus(u"Select ?"_s, {wert});
    return odbc.parameter.size() == 1 ? odbc.parameter.front() : Parameter{};
  }
  adodb::Datenbankfehler fehler(const QString& text, const std::vector<Wert>& werte) {
    try {
      treiber.fuehre_aus(text, werte);
    } catch (const adodb::Datenbankfehler& gefangener) {
      return gefangener;
    }
    return {0, u"kein Fehler"_s, {}, 0};
  }
  /// Has another thread give up, and waits for its call to come back.
  void gib_daneben_auf() {
    std::thread([this] { treiber.gib_auf(); }).join();
  }
  /// The same, and stays in its own call until the driver has been asked to stop so many times.
  void gib_auf_bis(int abbrueche) {
    while (odbc.abbrueche < abbrueche) {
      gib_daneben_auf();
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
};

using OdbcAufgabeTest = OdbcParameterTest;

}  // namespace

TEST_F(OdbcParameterTest, EveryKindOfValueIsBoundAsItsTypeOfTheServer) {
  const QString lang(4001, u'ä');
  const QString gerade_noch(4000, u'x');
  const std::vector<std::pair<Wert, Parameter>> faelle = {
      {u"O'Neil Größe \U0001F4F7 '); drop"_s, {SQL_C_WCHAR, SQL_WVARCHAR, 4000, u"O'Neil Größe \U0001F4F7 '); drop"_s}},
      {QString(), {SQL_C_WCHAR, SQL_WVARCHAR, 4000, QString()}},
      {gerade_noch, {SQL_C_WCHAR, SQL_WVARCHAR, 4000, gerade_noch}},
      {lang, {SQL_C_WCHAR, SQL_WLONGVARCHAR, 4001, lang}},
      {std::numeric_limits<std::int64_t>::min(), {SQL_C_SBIGINT, SQL_BIGINT, 19, u"-9223372036854775808"_s}},
      {std::int64_t{7}, {SQL_C_SBIGINT, SQL_BIGINT, 19, u"7"_s}},
      {0.1, {SQL_C_DOUBLE, SQL_DOUBLE, 15, u"0.10000000000000001"_s}},
      {Wert(), {SQL_C_WCHAR, SQL_WVARCHAR, 1, std::nullopt}}};
  oeffne();
  for (const auto& [wert, erwartet] : faelle) {
    const Parameter gelesener = gebunden(wert);
    EXPECT_EQ(gelesener.art, erwartet.art);
    EXPECT_EQ(gelesener.typ, erwartet.typ);
    EXPECT_EQ(gelesener.groesse, erwartet.groesse);
    EXPECT_EQ(gelesener.wert, erwartet.wert);
  }
  EXPECT_EQ(odbc.texte.removeDuplicates(), faelle.size() - 1);
}

TEST_F(OdbcParameterTest, ALongTextHasNoBoundWithTheMakersDriver) {
  oeffne_mit_Hersteller();
  const QString lang(9000, u'x');
  EXPECT_EQ(gebunden(lang), (Parameter{SQL_C_WCHAR, SQL_WVARCHAR, 0, lang}));
  EXPECT_EQ(gebunden(u"kurz"_s), (Parameter{SQL_C_WCHAR, SQL_WVARCHAR, 4000, u"kurz"_s}));
}

TEST_F(OdbcParameterTest, HalfOfASurrogatePairGoesOutAsItIsWithTheMakersDriverAlone) {
  const QString halb = u"a%1b"_s.arg(QChar(char16_t{0xD83D}));
  oeffne();
  EXPECT_EQ(gebunden(halb).wert, u"a?b"_s);
  treiber.schliesse();
  oeffne_mit_Hersteller();
  EXPECT_EQ(gebunden(halb).wert, halb);
}

TEST_F(OdbcParameterTest, ManyValuesKeepTheirOrderAndATextWithoutAnyHasNone) {
  oeffne();
  treiber.fuehre_aus(u"insert into T values (?, ?, '?', ?)"_s, {u"a"_s, Wert(), std::int64_t{3}});
  ASSERT_EQ(odbc.parameter.size(), 3U);
  EXPECT_EQ(odbc.parameter[0].wert, u"a"_s);
  EXPECT_EQ(odbc.parameter[1].wert, std::nullopt);
  EXPECT_EQ(odbc.parameter[2].wert, u"3"_s);
  EXPECT_EQ(odbc.attribute.at(SQL_ATTR_NOSCAN), SQLULEN{SQL_NOSCAN_ON});
  treiber.fuehre_aus(u"Select 1"_s);
  treiber.fuehre_aus(u"Select 1"_s, {});
  EXPECT_TRUE(odbc.parameter.empty());
  EXPECT_EQ(odbc.offene_Griffe, 2);
}

TEST_F(OdbcParameterTest, WhatCannotGoOutWholeIsRefusedBeforeItIsSent) {
  oeffne();
  const std::vector<std::pair<QString, std::vector<Wert>>> faelle = {{u"Select ?"_s, {u"a"_s, u"b"_s}},
      {u"Select ?, ?"_s, {u"a"_s}}, {u"Select '?', [?], \"?\" -- ?"_s, {u"a"_s}}, {u"Select ?"_s, {QString(u"a\0b"_s)}},
      {u"Select ?"_s, {std::nan("")}}, {u"Select ?"_s, {HUGE_VAL}}, {u"Select\0?"_s, {u"a"_s}}, {u" "_s, {u"a"_s}},
      {u"Select "_s + QString(2099, u'?'), std::vector<Wert>(2099, u"a"_s)}};
  for (const auto& [text, werte] : faelle) {
    EXPECT_EQ(fehler(text, werte).Nummer(), fehlernummer::Anweisung) << text.left(40).toStdString();
    EXPECT_EQ(odbc.offene_Griffe, 2);
  }
  EXPECT_TRUE(odbc.texte.isEmpty());
  EXPECT_EQ(fehler(u"Select ?"_s, {u"a"_s, u"b"_s}).Sqlstate(), u"07002"_s);
  treiber.fuehre_aus(u"Select "_s + QString(2098, u'?'), std::vector<Wert>(2098, u"a"_s));
  EXPECT_EQ(odbc.parameter.size(), 2098U);
}

TEST_F(OdbcParameterTest, AValueThatTheDriverRefusesFailsTheStatementBeforeItIsSent) {
  oeffne();
  odbc.schlechter_Parameter = 2;
  EXPECT_EQ(fehler(u"Select ?, ?"_s, {u"a"_s, u"b"_s}).Nummer(), fehlernummer::Anweisung);
  EXPECT_TRUE(odbc.texte.isEmpty());
  EXPECT_EQ(odbc.offene_Griffe, 2);
}

TEST(OdbcMarken, AreCountedOutsideOfLiteralsNamesAndComments) {
  const std::vector<std::pair<QString, std::size_t>> faelle = {{u""_s, 0}, {u"?"_s, 1}, {u"?,?order by ?"_s, 3},
      {u"'?' = ? and 'it''s ?' = ?"_s, 2}, {u"[?] = ?"_s, 1}, {u"[a]]b?] = ?"_s, 1},
      {u"[a]]] = ? and [b]]?]]] = ?"_s, 2}, {u"\"a\"\"?\" = ?"_s, 1}, {u"/* ? */ ? -- ?\n, ?"_s, 2}, {u"'offen ?"_s, 0},
      {u"[offen]] ?"_s, 0}, {u"N'?' like ?"_s, 1}};
  for (const auto& [text, anzahl] : faelle) EXPECT_EQ(adodb::zaehle_Marken(text), anzahl) << text.toStdString();
}

TEST_F(OdbcAufgabeTest, TheStatementThatRunsIsCancelledAndFailsInOurWords) {
  oeffne();
  odbc.waehrend_Ausfuehrung = [this] { gib_auf_bis(1); };
  odbc.schritte = {Schritt{
      .ergebnis = SQL_ERROR, .meldungen = {{u"HY000"_s, 0, u"[FreeTDS][SQL Server]Operation was cancelled"_s}}}};
  const auto gefangener = fehler(u"Select ?"_s, {u"a"_s});
  EXPECT_EQ(odbc.abbrueche, 1);
  EXPECT_EQ(gefangener.Nummer(), fehlernummer::Anweisung);
  EXPECT_EQ(gefangener.Sqlstate(), u"HY008"_s);
  EXPECT_EQ(gefangener.Beschreibung(), u"Die Anweisung ist fehlgeschlagen: sie wurde aufgegeben"_s);
  EXPECT_EQ(odbc.offene_Griffe, 2);
}

// With rows on their way FreeTDS may miss that they came, once another thread has asked it to stop.
TEST_F(OdbcAufgabeTest, ACallThatHasJustBegunIsNotCancelledAndItsStatementFailsAllTheSame) {
  oeffne();
  odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR}}, .zeilen = {{u"x"_s}, {u"y"_s}}}};
  odbc.waehrend_Holen = [this] { gib_daneben_auf(); };
  EXPECT_EQ(fehler(u"Select a from T"_s, {}).Sqlstate(), u"HY008"_s);
  EXPECT_EQ(odbc.abbrueche, 0);
  EXPECT_EQ(odbc.geholte_Bloecke, 1);
}

TEST_F(OdbcAufgabeTest, ACallThatWorksIsNotCancelledHoweverLongItTakes) {
  oeffne();
  odbc.schritte = {Schritt{}};
  odbc.waehrend_Ausfuehrung = [this] {
    gib_daneben_auf();
    const auto ende = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
    while (std::chrono::steady_clock::now() < ende) continue;
  };
  EXPECT_EQ(fehler(u"Delete from T"_s, {}).Sqlstate(), u"HY008"_s);
  EXPECT_EQ(odbc.abbrueche, 0);
}

TEST_F(OdbcAufgabeTest, AWishThatWasPassedOverIsSaidAgainAfterASecondAndNotSooner) {
  oeffne();
  odbc.schritte = {Schritt{}};
  const auto beginn = std::chrono::steady_clock::now();
  odbc.waehrend_Ausfuehrung = [this] { gib_auf_bis(2); };
  EXPECT_EQ(fehler(u"Delete from T"_s, {}).Sqlstate(), u"HY008"_s);
  EXPECT_EQ(odbc.abbrueche, 2);
  EXPECT_GE(std::chrono::steady_clock::now() - beginn, std::chrono::seconds(1));
}

TEST_F(OdbcAufgabeTest, NothingIsCancelledWhereNothingRunsAndTheNextStatementIsWhole) {
  treiber.gib_auf();
  oeffne();
  treiber.gib_auf();
  treiber.fuehre_aus(u"Select 1"_s);
  treiber.gib_auf();
  EXPECT_EQ(fehler(u"Select ?"_s, {u"a"_s}).Nummer(), 0);
  treiber.schliesse();
  treiber.gib_auf();
  EXPECT_EQ(odbc.abbrueche, 0);
}

TEST_F(OdbcAufgabeTest, AWishThatComesBeforeTheTextIsSentKeepsItBack) {
  oeffne();
  odbc.beim_Binden = [this] { gib_daneben_auf(); };
  EXPECT_EQ(fehler(u"Delete from T where a = ?"_s, {u"a"_s}).Sqlstate(), u"HY008"_s);
  EXPECT_TRUE(odbc.texte.isEmpty());
}

TEST_F(OdbcAufgabeTest, AResultThatWasCutOffIsNoShorterResult) {
  oeffne();
  for (const bool bindet : {false, true}) {
    odbc.bindet = bindet;
    // The driver has nothing more to give and does not say why.
    odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR, 10}}, .zeilen = {{u"1"_s}}}};
    odbc.waehrend_Holen = [this] {
      if (odbc.geholte_Bloecke > 1) gib_daneben_auf();
    };
    odbc.geholte_Bloecke = 0;
    EXPECT_EQ(fehler(u"Select a from T"_s, {}).Sqlstate(), u"HY008"_s);
  }
}

TEST_F(OdbcAufgabeTest, RowsThatStillComeAreNotWaitedFor) {
  oeffne();
  Schritt viele{.spalten = {{u"a"_s, SQL_WVARCHAR}}};
  viele.zeilen.assign(100, {u"x"_s});
  odbc.schritte = {viele};
  odbc.waehrend_Holen = [this] {
    if (odbc.geholte_Bloecke == 3) gib_daneben_auf();
  };
  EXPECT_EQ(fehler(u"Select a from T"_s, {}).Sqlstate(), u"HY008"_s);
  EXPECT_EQ(odbc.geholte_Bloecke, 3);
}

TEST_F(OdbcAufgabeTest, ABatchWhoseRestWasCutOffIsNoSuccess) {
  oeffne();
  odbc.schritte = {Schritt{}};
  odbc.waehrend_MoreResults = [this] { gib_auf_bis(1); };
  EXPECT_EQ(fehler(u"Delete from T Delete from U"_s, {}).Sqlstate(), u"HY008"_s);
  EXPECT_EQ(odbc.abbrueche, 1);
}

TEST_F(OdbcAufgabeTest, BetweenTwoCallsNothingIsCancelledSinceTheCallerWouldWaitForTheServer) {
  oeffne();
  odbc.schritte = {Schritt{.spalten = {{u"a"_s, SQL_WVARCHAR}}, .zeilen = {{u"x"_s}}}};
  odbc.waehrend_GetData = [this] { gib_daneben_auf(); };
  EXPECT_EQ(fehler(u"Select a from T"_s, {}).Sqlstate(), u"HY008"_s);
  EXPECT_EQ(odbc.abbrueche, 0);
  EXPECT_EQ(odbc.geholte_Bloecke, 1);
}

TEST_F(OdbcAufgabeTest, ALinkThatIsCutMeanwhileIsToldAsSuch) {
  oeffne();
  odbc.waehrend_Ausfuehrung = [this] { gib_daneben_auf(); };
  odbc.tot = true;
  odbc.schritte = {Schritt{.ergebnis = SQL_ERROR}};
  EXPECT_EQ(fehler(u"Select 1"_s, {}).Sqlstate(), u"08S01"_s);
}

TEST_F(OdbcAufgabeTest, AnotherFailureAfterAnIdleWishKeepsItsWords) {
  oeffne();
  treiber.gib_auf();
  odbc.schritte = {Schritt{.ergebnis = SQL_ERROR, .meldungen = {{u"42S02"_s, 208, u"[FreeTDS][SQL Server]fehlt"_s}}}};
  EXPECT_EQ(fehler(u"Select 1"_s, {}).Sqlstate(), u"42S02"_s);
}
