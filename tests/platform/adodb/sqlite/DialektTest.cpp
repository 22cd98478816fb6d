#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/sqlite/SqliteDialekt.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::sqlite_Dialekt;

namespace {

struct Fall {
  const char16_t* text;
  const char16_t* erwartet;
};

void pruefe(std::initializer_list<Fall> faelle) {
  for (const Fall& fall : faelle)
    EXPECT_EQ(sqlite_Dialekt(QString::fromUtf16(fall.text)), QString::fromUtf16(fall.erwartet));
}

}  // namespace

TEST(Dialekt, TopBecomesAClosingLimit) {
  pruefe({{u"Select Top 1 Key1 from Bild_Zuordnungen ", u"Select Key1 from Bild_Zuordnungen LIMIT 1 "},
      {u"select top 25 * from t where a = 'b'order by c", u"select * from t where a = 'b'order by c LIMIT 25"},
      {u"SELECT DISTINCT TOP 3 a FROM t", u"SELECT DISTINCT a FROM t LIMIT 3"},
      {u"SELECT TOP (3) a FROM t", u"SELECT a FROM t LIMIT 3"}, {u"SELECT TOP 1a FROM t", u"SELECT  a FROM t LIMIT 1"},
      {u"INSERT INTO x SELECT TOP 1 a FROM t", u"INSERT INTO x SELECT a FROM t LIMIT 1"}});
}

TEST(Dialekt, TheLimitStandsBeforeSemicolonsAndClosingComments) {
  pruefe({{u"Select Top 1 a from t; ", u"Select a from t LIMIT 1; "},
      {u"Select Top 1 a from t -- 'Ende", u"Select a from t LIMIT 1 -- 'Ende"},
      {u"Select Top 1 a from t /* ; */", u"Select a from t LIMIT 1 /* ; */"},
      {u"Select Top 1 a from t; Delete from t", u"Select a from t LIMIT 1; Delete from t"}});
}

TEST(Dialekt, TopHundredPercentFallsOut) {
  pruefe(
      {{u"SELECT TOP 100 PERCENT dbo.t.a FROM dbo.t GROUP BY dbo.t.a", u"SELECT dbo.t.a FROM dbo.t GROUP BY dbo.t.a"},
          {u"select top(100) percent a from t", u"select a from t"}});
}

TEST(Dialekt, ANestedSelectKeepsItsLimitInItsBrackets) {
  pruefe({{u"select a from t where b in (select top 1 b from u) and c = 1",
              u"select a from t where b in (select b from u LIMIT 1) and c = 1"},
      {u"select top 2 a from (select top 5 a from t order by b) x",
          u"select a from (select a from t order by b LIMIT 5) x LIMIT 2"},
      {u"select a from (select top 100 percent a from t) x", u"select a from (select a from t) x"}});
}

TEST(Dialekt, WhatWouldMeanSomethingElseStaysAndFails) {
  pruefe({{u"select top 1 a from t union select a from u", u"select top 1 a from t union select a from u"},
      {u"select a from t union select top 1 a from u", u"select a from t union select top 1 a from u"},
      {u"select top 10 percent a from t", u"select top 10 percent a from t"},
      {u"select top 1 with ties a from t order by a", u"select top 1 with ties a from t order by a"}});
}

TEST(Dialekt, LiteralsNamesAndCommentsAreLeftAlone) {
  pruefe({{u"select 'select top 1 a' from t", u"select 'select top 1 a' from t"},
      {u"select [top 1x], \"select top 1\" from t", u"select [top 1x], \"select top 1\" from t"},
      {u"select /* top 1 */ a from t", u"select /* top 1 */ a from t"},
      {u"select a -- 0order\n from t", u"select a -- 0order\n from t"}, {u"select top from t", u"select top from t"},
      {u"select t.top, 1 from t", u"select t.top, 1 from t"},
      {u"select 'it''s 0order' from t", u"select 'it''s 0order' from t"},
      {u"update Top1 set a = 'x'", u"update Top1 set a = 'x'"}});
}

TEST(Dialekt, AWordDirectlyBehindANumberIsSplitOff) {
  pruefe({{u"Select * from t  where a = 0order by SortIndex", u"Select * from t  where a = 0 order by SortIndex"},
      {u"select 1.5order", u"select 1.5 order"}, {u"select .5order", u"select .5 order"},
      {u"select 1e5order", u"select 1e5 order"}, {u"select 1e-5order", u"select 1e-5 order"},
      {u"select 0x1Forder", u"select 0x1F order"},
      {u"select case when 1then 2else 3end", u"select case when 1 then 2 else 3 end"},
      {u"select 1e5, 0xAF, 1.5, a1b, Key1, 1e+3", u"select 1e5, 0xAF, 1.5, a1b, Key1, 1e+3"}});
}

TEST(Dialekt, OtherTextsComeBackAsTheyAre) {
  const QString text = u"Select * from Bild_Zuordnungen  where Key1 = 'A'order by SortIndex"_s;
  EXPECT_EQ(sqlite_Dialekt(text).constData(), text.constData());
}

RC_GTEST_PROP(Dialekt, ALiteralIsNeverChanged, ()) {
  const auto zeichen = rc::gen::element<char16_t>(u'T', u'O', u'P', u' ', u'1', u'o', u'"', u'[', u'-', u'(', u';');
  const auto innen = QString::fromStdU16String(*rc::gen::container<std::u16string>(zeichen));
  const QString literal = u"'select top 1 0order "_s + innen + u"'"_s;
  RC_ASSERT(sqlite_Dialekt(u"Select Top 1 a from t where b = "_s + literal) ==
      u"Select a from t where b = "_s + literal + u" LIMIT 1"_s);
}

RC_GTEST_PROP(Dialekt, PiecesFollowEachOtherWithoutAGap, ()) {
  const auto zeichen = rc::gen::element<char16_t>(u'a', u'1', u'.', u'e', u'\'', u'"', u'[', u']', u'-', u'/', u'*',
      u' ', u'\n', u';', u'x', u'0', u'ä', u'(', u')', u'+');
  const auto text = QString::fromStdU16String(*rc::gen::container<std::u16string>(zeichen));
  adodb::SqlZerleger zerleger(text);
  qsizetype bis = 0;
  while (const auto stueck = zerleger.naechstes()) {
    RC_ASSERT(stueck->beginn == bis);
    RC_ASSERT(stueck->ende > bis);
    bis = stueck->ende;
  }
  RC_ASSERT(bis == text.size());
  sqlite_Dialekt(text);
}

TEST(Skript, IsCutAtSemicolonsAndGoLines) {
  EXPECT_EQ(adodb::zerlege_skript(u"create table a (b);\n-- nichts;\n insert into a values (';GO');;\n/* ; */"_s),
      QStringList({u"create table a (b)"_s, u"-- nichts;\n insert into a values (';GO')"_s}));
  EXPECT_EQ(adodb::zerlege_skript(u"select 1\nGO\r\n  go  \nselect 'x\nGO\n', go from [a;b]\n"_s),
      QStringList({u"select 1"_s, u"select 'x\nGO\n', go from [a;b]"_s}));
  EXPECT_TRUE(adodb::zerlege_skript(u" -- leer\n"_s).isEmpty());
}

TEST(Skript, NothingButBlanksCommentsAndSemicolonsIsEmpty) {
  EXPECT_TRUE(adodb::ist_leere_Anweisung(u" ;; -- a\n /* b ; */ ;\t\r\n"));
  EXPECT_FALSE(adodb::ist_leere_Anweisung(u"; Delete"));
  EXPECT_FALSE(adodb::ist_leere_Anweisung(u"'"));
  EXPECT_FALSE(adodb::ist_leere_Anweisung(u"-- a\n)"));
}
