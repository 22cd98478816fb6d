#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <cmath>
#include <limits>

#include "platform/adodb/sqlite/SqliteTreiber.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;

namespace {

/// SQLite's own handle of the connection that was opened last.
sqlite3*& zuletzt_geoeffnete() {
  static sqlite3* eine = nullptr;
  return eine;
}

int merke(sqlite3* datenbank, char** /*fehler*/, const sqlite3_api_routines* /*aufrufe*/) {
  zuletzt_geoeffnete() = datenbank;
  return SQLITE_OK;
}

/// SQLite asks once for each statement that it prepares.
int zaehle(void* zaehler, int vorgang, const char*, const char*, const char*, const char*) {
  if (vorgang == SQLITE_INSERT || vorgang == SQLITE_SELECT) ++*static_cast<int*>(zaehler);
  return SQLITE_OK;
}

class SqliteParameter : public ::testing::Test {
 protected:
  void SetUp() override {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(merke));
    treiber.oeffne(zeichenfolge());
    datenbank = zuletzt_geoeffnete();
    treiber.fuehre_aus(u"create table t (a)"_s);
  }
  void TearDown() override { sqlite3_reset_auto_extension(); }
  QString zeichenfolge() const { return u"Mode=ReadWriteCreate;Data Source="_s + ordner.pfad(u"a.db"_s); }

  std::int64_t anzahl() { return std::get<std::int64_t>(treiber.fuehre_aus(u"select count(*) from t"_s).werte.at(0)); }
  /// The words of a failure that ran nothing.
  QString worte(const QString& text, const std::vector<Wert>& werte) {
    const std::int64_t vorher = anzahl();
    try {
      treiber.fuehre_aus(text, werte);
      ADD_FAILURE() << text.toStdString();
    } catch (const adodb::Datenbankfehler& fehler) {
      EXPECT_EQ(fehler.Nummer(), fehlernummer::Anweisung);
      EXPECT_EQ(anzahl(), vorher);
      return fehler.Beschreibung();
    }
    return {};
  }

  Testordner ordner;
  adodb::SqliteTreiber treiber;
  sqlite3* datenbank = nullptr;
};

const QString Einfuegen = u"insert into t values (?)"_s;

}  // namespace

TEST_F(SqliteParameter, EveryKindOfValueArrivesUnchangedAndKeepsItsKind) {
  const std::vector<std::pair<Wert, QString>> faelle = {{Wert(), u"null"_s}, {u""_s, u"text"_s}, {QString(), u"text"_s},
      {u"12"_s, u"text"_s}, {u"Größe ÄÖÜß € \U0001F4F7"_s, u"text"_s}, {u"O'Neil \"x\" [y] `z`"_s, u"text"_s},
      {u"100 % _ [a-z] \\ {fn now()} ?"_s, u"text"_s}, {u"'); drop table t; --"_s, u"text"_s},
      {u"Select Top 1 Key1 from T"_s, u"text"_s}, {u"Zeile\r\n\tzwei  "_s, u"text"_s}, {u"\ufeffx"_s, u"text"_s},
      {QString(4001, u'ä'), u"text"_s}, {QString(1'000'000, u'x'), u"text"_s}, {std::int64_t{0}, u"integer"_s},
      {std::numeric_limits<std::int64_t>::min(), u"integer"_s},
      {std::numeric_limits<std::int64_t>::max(), u"integer"_s}, {1.5, u"real"_s}, {-1e300, u"real"_s},
      {2.0, u"real"_s}};
  for (const auto& [wert, art] : faelle) {
    treiber.fuehre_aus(u"delete from t"_s);
    treiber.fuehre_aus(Einfuegen, {wert});
    const auto gelesen = treiber.fuehre_aus(u"select a, typeof(a), ? is a from t where a is ?"_s, {wert, wert});
    ASSERT_EQ(gelesen.zeilen(), 1U) << art.toStdString();
    EXPECT_EQ(gelesen.werte.at(0), wert);
    EXPECT_EQ(gelesen.werte.at(1), Wert(art));
    EXPECT_EQ(gelesen.werte.at(2), Wert(std::int64_t{1}));
  }
}

TEST_F(SqliteParameter, ValuesGoToTheMarkersInTheirOrder) {
  const auto zeile = treiber.fuehre_aus(u"select ?, ?, ?"_s, {u"a"_s, std::int64_t{2}, 3.5});
  EXPECT_EQ(zeile.werte.at(0), Wert(u"a"_s));
  EXPECT_EQ(zeile.werte.at(1), Wert(std::int64_t{2}));
  EXPECT_EQ(zeile.werte.at(2), Wert(3.5));
}

TEST_F(SqliteParameter, HalfOfASurrogatePairBecomesAQuestionMarkAsInATextAndNothingBehindItIsLost) {
  const QString halb = u"a%1b"_s.arg(QChar(char16_t{0xD83D}));
  EXPECT_EQ(treiber.fuehre_aus(u"select ?"_s, {halb}).werte.at(0), Wert(u"a?b"_s));
  EXPECT_EQ(treiber.fuehre_aus(u"select '%1'"_s.arg(halb)).werte.at(0), Wert(u"a?b"_s));
}

TEST_F(SqliteParameter, WhatNoTextOfTheDatabaseCanHoldIsRefusedBeforeAnythingRan) {
  EXPECT_TRUE(worte(Einfuegen, {QString(u"a\0b"_s)}).contains(u"Nullzeichen"_s));
  EXPECT_TRUE(worte(u"insert into t values ('x\0' || ?)"_s, {u"a"_s}).contains(u"Nullzeichen"_s));
  EXPECT_TRUE(worte(Einfuegen, {std::nan("")}).contains(u"keine Zahl"_s));
  EXPECT_TRUE(worte(Einfuegen, {-HUGE_VAL}).contains(u"keine Zahl"_s));
}

TEST_F(SqliteParameter, AnotherNumberOfValuesThanMarkersFailsBeforeAnythingRan) {
  EXPECT_TRUE(worte(Einfuegen, {}).contains(u"Parameter ohne Wert"_s));
  EXPECT_TRUE(worte(Einfuegen, {u"a"_s, u"b"_s}).contains(u"1 Parameter, dazu gibt es 2 Werte"_s));
  EXPECT_TRUE(
      worte(u"insert into t select ? where ? = 1"_s, {u"a"_s}).contains(u"2 Parameter, dazu gibt es 1 Werte"_s));
  EXPECT_TRUE(worte(u"insert into t values ('?') /* ? */ -- ?"_s, {u"a"_s}).contains(u"0 Parameter"_s));
  treiber.fuehre_aus(Einfuegen, {u"a"_s});
  EXPECT_FALSE(worte(Einfuegen, {u"a"_s, u"b"_s}).isEmpty()) << "a kept statement too";
}

TEST_F(SqliteParameter, MarkersWithNamesOrNumbersAreRefused) {
  for (const QString& marke : {u"?1"_s, u"?2"_s, u":a"_s, u"@a"_s, u"$a"_s})
    for (const std::size_t werte : {1U, 2U})
      EXPECT_TRUE(
          worte(u"insert into t values (%1)"_s.arg(marke), std::vector<Wert>(werte, u"x"_s)).contains(u"nur „?“"_s))
          << marke.toStdString();
}

TEST_F(SqliteParameter, MarkersLiveBesideTheServersWordsAndAreNoneInLiteralsNamesAndComments) {
  for (int i = 1; i <= 5; ++i) treiber.fuehre_aus(Einfuegen, {std::int64_t{i}});
  const auto oberste = treiber.fuehre_aus(
      u"Select Top 2 a as [?], '?' as b from dbo.t /* ? */ where a > ? and 0 <> ?order by a desc -- ?"_s,
      {std::int64_t{1}, std::int64_t{7}});
  ASSERT_EQ(oberste.zeilen(), 2U);
  EXPECT_EQ(oberste.spalten, QStringList({u"?"_s, u"b"_s}));
  EXPECT_EQ(oberste.werte.at(0), Wert(std::int64_t{5}));
  EXPECT_EQ(oberste.werte.at(1), Wert(u"?"_s));
}

TEST_F(SqliteParameter, ALoadPreparesItsStatementsOnce) {
  int vorbereitete = 0;
  sqlite3_set_authorizer(datenbank, zaehle, &vorbereitete);
  for (int i = 0; i < 1000; ++i) {
    treiber.fuehre_aus(Einfuegen, {std::int64_t{i}});
    EXPECT_EQ(treiber.fuehre_aus(u"select a from t where a = ?"_s, {std::int64_t{i}}).zeilen(), 1U);
  }
  EXPECT_EQ(vorbereitete, 2);
  sqlite3_set_authorizer(datenbank, nullptr, nullptr);
}

TEST_F(SqliteParameter, ManyTextsInTurnEachGetTheirOwnStatement) {
  for (int i = 0; i < 30; ++i) {
    const auto zeile = treiber.fuehre_aus(u"select ? + %1, ?"_s.arg(i % 7), {std::int64_t{i}, u"x"_s});
    EXPECT_EQ(zeile.werte.at(0), Wert(std::int64_t{i + i % 7}));
  }
  int behaltene = 0;
  for (auto* s = sqlite3_next_stmt(datenbank, nullptr); s; s = sqlite3_next_stmt(datenbank, s)) ++behaltene;
  EXPECT_EQ(behaltene, 4);
}

TEST_F(SqliteParameter, AKeptStatementHoldsNoValueNoRowAndNoTransaction) {
  treiber.fuehre_aus(Einfuegen, {u"geheim"_s});
  treiber.fuehre_aus(u"select a from t where a = ?"_s, {u"geheim"_s});
  int behaltene = 0;
  for (auto* s = sqlite3_next_stmt(datenbank, nullptr); s; s = sqlite3_next_stmt(datenbank, s), ++behaltene) {
    EXPECT_EQ(sqlite3_stmt_busy(s), 0);
    char* text = sqlite3_expanded_sql(s);
    EXPECT_TRUE(QByteArray(text).contains("NULL")) << text;
    sqlite3_free(text);
  }
  EXPECT_EQ(behaltene, 2);
  EXPECT_EQ(sqlite3_txn_state(datenbank, nullptr), SQLITE_TXN_NONE);
}

TEST_F(SqliteParameter, AKeptStatementSurvivesAnotherTableOfTheSameName) {
  const QString frage = u"select * from t where a = ?"_s;
  treiber.fuehre_aus(Einfuegen, {u"x"_s});
  EXPECT_EQ(treiber.fuehre_aus(frage, {u"x"_s}).spalten.size(), 1);
  treiber.fuehre_aus(u"drop table t"_s);
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(frage, {u"x"_s}); }), fehlernummer::Anweisung);
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(Einfuegen, {u"x"_s}); }), fehlernummer::Anweisung);
  treiber.fuehre_aus(u"create table t (b integer default 7, a)"_s);
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(Einfuegen, {u"x"_s}); }), fehlernummer::Anweisung);
  treiber.fuehre_aus(u"insert into t (a) values (?)"_s, {u"x"_s});
  const auto gelesen = treiber.fuehre_aus(frage, {u"x"_s});
  EXPECT_EQ(gelesen.spalten, QStringList({u"b"_s, u"a"_s}));
  EXPECT_EQ(gelesen.werte.at(0), Wert(std::int64_t{7}));
}

TEST_F(SqliteParameter, ATableThatChangesUnderAKeptStatementIsReadWithItsNewColumns) {
  const QString frage = u"select * from t where a = ?"_s;
  treiber.fuehre_aus(Einfuegen, {u"x"_s});
  EXPECT_EQ(treiber.fuehre_aus(frage, {u"x"_s}).spalten, QStringList(u"a"_s));
  adodb::SqliteTreiber anderer;
  anderer.oeffne(zeichenfolge());
  anderer.fuehre_aus(u"alter table t add column b default 5"_s);
  const auto gelesen = treiber.fuehre_aus(frage, {u"x"_s});
  EXPECT_EQ(gelesen.spalten, QStringList({u"a"_s, u"b"_s}));
  ASSERT_EQ(gelesen.werte.size(), 2U);
  EXPECT_EQ(gelesen.werte.at(1), Wert(std::int64_t{5}));
}

TEST_F(SqliteParameter, AFailedStatementOfAKeptTextLeavesTheNextOneWhole) {
  treiber.fuehre_aus(u"create unique index i on t (a)"_s);
  treiber.fuehre_aus(Einfuegen, {u"x"_s});
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(Einfuegen, {u"x"_s}); }), fehlernummer::Anweisung);
  treiber.fuehre_aus(Einfuegen, {u"y"_s});
  EXPECT_EQ(anzahl(), 2);
}

TEST_F(SqliteParameter, AKeptStatementGoesWithItsConnection) {
  treiber.fuehre_aus(Einfuegen, {u"x"_s});
  const auto offene = [this] {
    int dateien = 0;
    for (const QFileInfo& eintrag : QDir(u"/proc/self/fd"_s).entryInfoList(QDir::Files | QDir::System))
      dateien += eintrag.symLinkTarget().startsWith(ordner.pfad(u"a.db"_s)) ? 1 : 0;
    return dateien;
  };
  EXPECT_GT(offene(), 0);
  treiber.schliesse();
  EXPECT_EQ(offene(), 0);
  EXPECT_EQ(Fehlernummer_von([&] { treiber.fuehre_aus(Einfuegen, {u"x"_s}); }), 3704);
  treiber.oeffne(zeichenfolge());
  treiber.fuehre_aus(Einfuegen, {u"y"_s});
  EXPECT_EQ(anzahl(), 2);
}
