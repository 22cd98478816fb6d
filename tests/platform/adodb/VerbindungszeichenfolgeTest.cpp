#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/basic/Text.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Verbindungszeichenfolge;

namespace {

QString wert(const QString& text, const QString& wort) {
  return Verbindungszeichenfolge(text).wert(wort).value_or(u"<keiner>"_s);
}

}  // namespace

TEST(Verbindungszeichenfolge, FindsKeywordsInAnyCaseWithBlanksAround) {
  const QString text = u" Provider = SQLite ;; DATA source=/tmp/a b.db ; "_s;
  EXPECT_EQ(wert(text, u"provider"_s), u"SQLite"_s);
  EXPECT_EQ(wert(text, u"Data Source"_s), u"/tmp/a b.db"_s);
  EXPECT_EQ(wert(text, u"Mode"_s), u"<keiner>"_s);
  EXPECT_EQ(Verbindungszeichenfolge(text).schluesselworte(), QStringList({u"Provider"_s, u"DATA source"_s}));
}

TEST(Verbindungszeichenfolge, ValuesStandInQuotesOrBraces) {
  EXPECT_EQ(wert(u"a=\"x;y\";b=1"_s, u"a"_s), u"x;y"_s);
  EXPECT_EQ(wert(u"a=\"x\"\"y\""_s, u"a"_s), u"x\"y"_s);
  EXPECT_EQ(wert(u"a='it''s' ;b=1"_s, u"a"_s), u"it's"_s);
  EXPECT_EQ(wert(u"a={x}}y;}"_s, u"a"_s), u"x}y;"_s);
  EXPECT_EQ(wert(u"a= \" x \" "_s, u"a"_s), u" x "_s);
  EXPECT_EQ(wert(u"a=x'y\"z"_s, u"a"_s), u"x'y\"z"_s);
  EXPECT_EQ(wert(u"a=;b=1"_s, u"a"_s), QString());
  EXPECT_EQ(wert(u"a=x=y"_s, u"a"_s), u"x=y"_s);
}

TEST(Verbindungszeichenfolge, TheLastOfTwoValuesCounts) {
  EXPECT_EQ(wert(u"User ID=a;user id=b"_s, u"User ID"_s), u"b"_s);
  EXPECT_EQ(Verbindungszeichenfolge(u"User ID=a;user id=b"_s).schluesselworte().size(), 1);
}

TEST(Verbindungszeichenfolge, AKeywordMeansTheSameInAllItsWaysToWrite) {
  using adodb::Wortsinn;
  for (const QString& wort : {u"User ID"_s, u"user_id"_s, u"UID"_s, u"Username"_s})
    EXPECT_EQ(Verbindungszeichenfolge::sinn(wort), Wortsinn::Benutzer) << wort.toStdString();
  EXPECT_EQ(Verbindungszeichenfolge::sinn(u"Pass word"_s), Wortsinn::Kennwort);
  for (const QString& wort : {u"Kennwort"_s, u"user|uid"_s, QString()})
    EXPECT_EQ(Verbindungszeichenfolge::sinn(wort), Wortsinn::Unbekannt) << wort.toStdString();
  const Verbindungszeichenfolge folge(u"Server=a;DSN=b;Data Source=;UID=c"_s);
  EXPECT_EQ(folge.wert_zu({Wortsinn::Server}), u"a"_s);
  EXPECT_EQ(folge.wert_zu({Wortsinn::Server, Wortsinn::Datenquelle}), u"b"_s);
  EXPECT_EQ(folge.wert_zu({Wortsinn::Datenbank}), QString());
}

TEST(Verbindungszeichenfolge, AValueThatMayHoldAPasswordIsNotShown) {
  EXPECT_EQ(Verbindungszeichenfolge::zeigbar(u"SRV01"_s), u"SRV01"_s);
  EXPECT_EQ(Verbindungszeichenfolge::zeigbar(u"SRV01 PWD=geheim"_s), QString());
  EXPECT_EQ(Verbindungszeichenfolge::genannt(u"SRV01"_s), u" „SRV01“"_s);
  for (const QString& wert : {u"SRV01 PWD=geheim"_s, QString()})
    EXPECT_EQ(Verbindungszeichenfolge::genannt(wert), QString());
}

TEST(Verbindungszeichenfolge, AnEmptyTextHasNoPairs) {
  EXPECT_TRUE(Verbindungszeichenfolge(QString()).schluesselworte().isEmpty());
  EXPECT_TRUE(Verbindungszeichenfolge(u" ; ;"_s).schluesselworte().isEmpty());
}

TEST(Verbindungszeichenfolge, WhatIsNoListOfPairsIsRefusedWithoutRepeatingIt) {
  for (const QString& text : {u"geheim"_s, u"a=1;geheim"_s, u"=geheim"_s, u"a=\"geheim"_s, u"a='x'geheim"_s,
           u"a={geheim"_s, u"Password=\"x\"geheim;b=1"_s}) {
    try {
      const Verbindungszeichenfolge folge(text);
      ADD_FAILURE() << text.toStdString();
    } catch (const Laufzeitfehler& fehler) {
      EXPECT_EQ(fehler.Nummer(), fehlernummer::Verbindung);
      EXPECT_FALSE(fehler.Beschreibung().contains(u"geheim"_s));
    }
  }
}

namespace {

/// Characters that matter to the parser come often.
rc::Gen<QString> texte() {
  const auto zeichen =
      rc::gen::weightedOneOf<char16_t>({{3, rc::gen::element<char16_t>(u'"', u'\'', u'{', u'}', u';', u'=', u' ')},
          {2, rc::gen::inRange<char16_t>(u'a', u'{')}, {1, rc::gen::inRange<char16_t>(1, 0xD800)}});
  return rc::gen::map(rc::gen::container<std::u16string>(zeichen),
      [](const std::u16string& s) { return QString::fromStdU16String(s); });
}

QString verdoppelt(QString wert, QChar marke) {
  return wert.replace(QString(marke), QString(2, marke));
}

}  // namespace

RC_GTEST_PROP(Verbindungszeichenfolge, EveryValueSurvivesQuoting, ()) {
  const QString a = *texte();
  const QString b = *texte();
  const QString c = *texte();
  const QString text = u"A = "_s + Verbindungszeichenfolge::als_wert(a) + u" ;B='"_s + verdoppelt(b, u'\'') +
      u"';c={"_s + verdoppelt(c, u'}') + u"}"_s;
  const Verbindungszeichenfolge folge(text);
  RC_ASSERT(folge.wert(u"a"_s) == a);
  RC_ASSERT(folge.wert(u"b"_s) == b);
  RC_ASSERT(folge.wert(u"C"_s) == c);
}

RC_GTEST_PROP(Verbindungszeichenfolge, AnyTextIsReadOrRefused, ()) {
  const QString text = *texte();
  const auto nummer = Fehlernummer_von([&] { Verbindungszeichenfolge{text}; });
  RC_ASSERT(nummer == 0 || nummer == fehlernummer::Verbindung);
}
