// Statements with values, and statements that are given up, over unixODBC and FreeTDS against the TDS server of
// tests/tds.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <chrono>
#include <future>
#include <limits>

#include "platform/adodb/odbc/OdbcTreiber.h"
#include "tests/platform/adodb/odbc/OdbcTdsFall.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;

namespace {

class OdbcTdsParameter : public OdbcTds {
 protected:
  void SetUp() override {
    OdbcTds::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    treiber.oeffne(zeichenfolge());
    server().steuere(u"protokoll-leeren"_s);
  }
  /// Runs a text beside this thread and gives up until it has ended.
  adodb::Datenbankfehler gib_auf(const QString& text, const std::vector<Wert>& werte) {
    auto ergebnis = std::async(std::launch::async, [&] { return fehler([&] { treiber.fuehre_aus(text, werte); }); });
    while (ergebnis.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) treiber.gib_auf();
    return ergebnis.get();
  }

  adodb::OdbcTreiber treiber;
};

const QString Einfuegen =
    u"insert into Bild_Zuordnungen (Key1, Key2, Beschreibung, SortIndex) Values (?, '?', ?, ?) -- ?"_s;

}  // namespace

TEST_F(OdbcTdsParameter, AStatementArrivesAsItIsAndItsValuesBesideIt) {
  const QString lang(4001, u'ä');
  treiber.fuehre_aus(u"Select ? as a, '{fn now()} ?' as b, ? as c, ? as d, ? as [?], ? as f /* ? */"_s,
      {u"O'Neil"_s, std::numeric_limits<std::int64_t>::max(), -1.25, Wert(), lang});
  EXPECT_EQ(server().angekommen(),
      QStringList(u"Select ? as a, '{fn now()} ?' as b, ? as c, ? as d, ? as [?], ? as f /* ? */"_s));
  ASSERT_EQ(server().gebundene().size(), 1);
  const QJsonArray werte = server().gebundene().constFirst();
  ASSERT_EQ(werte.size(), 5);
  EXPECT_EQ(werte[0].toString(), u"O'Neil"_s);
  EXPECT_EQ(werte[1].toInteger(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(werte[2].toDouble(), -1.25);
  EXPECT_TRUE(werte[3].isNull());
  EXPECT_EQ(werte[4].toString(), lang) << "FreeTDS would cut it to 4000 characters as a text with a bound";
}

TEST_F(OdbcTdsParameter, EveryKindOfValueComesBackAsItWas) {
  const std::vector<Wert> faelle = {Wert(), u""_s, u"12"_s, u"Größe ÄÖÜß € \U0001F4F7"_s, u"O'Neil \"x\" [y] `z`"_s,
      u"100 % _ [a-z] \\ {fn now()} ?"_s, u"'); Delete from Bild_Zuordnungen; --"_s, u"Select Top 1 Key1 from T"_s,
      u"@P1 @P2"_s, QString(4000, u'ä'), QString(4001, u'\u20ac'), QString(100'000, u'x'), std::int64_t{-5},
      std::numeric_limits<std::int64_t>::min(), 1.5, -1e300};
  for (const Wert& wert : faelle) {
    const auto gelesen = treiber.fuehre_aus(u"Select ? as a, 1 as b"_s, {wert});
    ASSERT_EQ(gelesen.zeilen(), 1U);
    EXPECT_EQ(gelesen.werte.at(0), wert);
  }
}

TEST_F(OdbcTdsParameter, WhatIsWrittenWithValuesIsFoundWithThem) {
  const QString boese = u"'); Delete from Bild_Zuordnungen; --"_s;
  treiber.fuehre_aus(Einfuegen, {boese, u"100 % _ [x] Ä"_s, std::int64_t{-32768}});
  treiber.fuehre_aus(Einfuegen, {u"b"_s, Wert(), Wert()});
  const auto gelesen = treiber.fuehre_aus(
      u"Select Top 1 Key2, Beschreibung, SortIndex from dbo.Bild_Zuordnungen where Key1 = ? and SortIndex < ?"_s,
      {boese, std::int64_t{0}});
  ASSERT_EQ(gelesen.zeilen(), 1U);
  EXPECT_EQ(gelesen.werte.at(0), Wert(u"?"_s));
  EXPECT_EQ(gelesen.werte.at(1), Wert(u"100 % _ [x] Ä"_s));
  EXPECT_EQ(gelesen.werte.at(2), Wert(std::int64_t{-32768}));
  EXPECT_EQ(treiber.fuehre_aus(u"Select Key1 from Bild_Zuordnungen where Beschreibung is null"_s).zeilen(), 1U);
}

TEST_F(OdbcTdsParameter, HalfOfASurrogatePairBecomesAQuestionMarkAndNothingBehindItIsLost) {
  const QString halb = u"a%1b"_s.arg(QChar(char16_t{0xD83D}));
  EXPECT_EQ(treiber.fuehre_aus(u"Select ? as a"_s, {halb}).werte.at(0), Wert(u"a?b"_s));
}

TEST_F(OdbcTdsParameter, AnotherNumberOfValuesThanMarkersIsNeverSent) {
  for (const std::vector<Wert>& werte :
      {std::vector<Wert>(2, u"x"_s), std::vector<Wert>(4, u"x"_s), std::vector<Wert>()})
    EXPECT_EQ(fehler([&] { treiber.fuehre_aus(Einfuegen, werte); }).Nummer(), fehlernummer::Anweisung);
  EXPECT_TRUE(server().angekommen().isEmpty());
}

TEST_F(OdbcTdsParameter, AFailureOfAStatementWithValuesHasTheServersNumber) {
  EXPECT_EQ(
      fehler([&] { treiber.fuehre_aus(u"Select * from Gibt_Es_Nicht where a = ?"_s, {u"x"_s}); }).NativeNummer(), 208);
  EXPECT_EQ(fehler([&] { treiber.fuehre_aus(Einfuegen, {QString(51, u'x'), Wert(), Wert()}); }).NativeNummer(), 8152);
}

TEST_F(OdbcTdsParameter, AStatementThatRunsIsGivenUpAndTheConnectionGoesOn) {
  for (const auto& [text, werte] : std::vector<std::pair<QString, std::vector<Wert>>>{
           {u"Select ? as a"_s, {u"x"_s}}, {u"Select 1 as a"_s, {}}, {u"waitfor delay '1:00:00'"_s, {}}}) {
    SCOPED_TRACE(text.toStdString());
    if (!text.startsWith(u"waitfor"_s)) server().steuere(u"stumm 1"_s);
    const auto gefangener = gib_auf(text, werte);
    EXPECT_EQ(gefangener.Nummer(), fehlernummer::Anweisung);
    EXPECT_EQ(gefangener.Sqlstate(), u"HY008"_s);
    EXPECT_EQ(gefangener.Beschreibung(), u"Die Anweisung ist fehlgeschlagen: sie wurde aufgegeben"_s);
    server().steuere(u"heile"_s);
    EXPECT_EQ(treiber.fuehre_aus(u"Select ? as a"_s, {u"y"_s}).werte.at(0), Wert(u"y"_s));
  }
}

TEST_F(OdbcTdsParameter, RowsOnTheirWayAreGivenUpOrComeWholeAndNeverCut) {
  server().steuere(
      u"sql WITH RECURSIVE b(j) AS (SELECT 0 UNION ALL SELECT j + 1 FROM b WHERE j < 9999) INSERT INTO "
      "Bild_Zuordnungen (Key1, Bildname, SortIndex) SELECT 'RE', 'Bild ' || j, j FROM b"_s);
  int aufgegebene = 0;
  for (int i = 0; i < 20; ++i) {
    auto ergebnis = std::async(std::launch::async,
        [&] { return treiber.fuehre_aus(u"Select * from Bild_Zuordnungen where Key1 = ?"_s, {u"RE"_s}).zeilen(); });
    // A little later each time, so that it is met at the start, among its rows and behind them.
    ergebnis.wait_for(std::chrono::milliseconds(10 * i));
    treiber.gib_auf();
    try {
      EXPECT_EQ(ergebnis.get(), 10'000U);
    } catch (const adodb::Datenbankfehler& gefangener) {
      EXPECT_EQ(gefangener.Sqlstate(), u"HY008"_s);
      ++aufgegebene;
    }
    ASSERT_EQ(treiber.fuehre_aus(u"Select 1 as a"_s).zeilen(), 1U);
  }
  EXPECT_GT(aufgegebene, 0);
}

TEST_F(OdbcTdsParameter, GivingUpWhenNothingRunsEndsNoLaterStatement) {
  for (int i = 0; i < 3; ++i) {
    treiber.gib_auf();
    EXPECT_EQ(treiber.fuehre_aus(u"Select 1 as a"_s).zeilen(), 1U);
  }
}

TEST_F(OdbcTdsParameter, AStatementThatHangsHindersNoOtherConnection) {
  adodb::OdbcTreiber anderer;
  anderer.oeffne(zeichenfolge());
  auto haengt =
      std::async(std::launch::async, [&] { return fehler([&] { treiber.fuehre_aus(u"waitfor delay '1:00:00'"_s); }); });
  while (!server().angekommen().contains(u"waitfor delay '1:00:00'"_s))
    EXPECT_EQ(anderer.fuehre_aus(u"Select 2 as a"_s).zeilen(), 1U);
  EXPECT_EQ(anderer.fuehre_aus(u"Select 2 as a"_s).zeilen(), 1U);
  while (haengt.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) treiber.gib_auf();
  EXPECT_EQ(haengt.get().Sqlstate(), u"HY008"_s);
}
