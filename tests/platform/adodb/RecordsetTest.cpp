#include <gtest/gtest.h>

#include <limits>

#include "platform/adodb/Connection.h"
#include "platform/adodb/Recordset.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Ergebnis;
using adodb::Recordset;

namespace {

Ergebnis zwei_Zeilen() {
  return {{u"Key1"_s, u"SortIndex"_s}, {u"A"_s, std::int64_t{1}, std::monostate(), 2.5}};
}

}  // namespace

TEST(Werte, KeepEveryKindOfValueAsItWas) {
  const std::vector<adodb::Wert> soll{std::monostate(), std::int64_t{INT64_MIN}, std::int64_t{INT64_MAX}, -0.5, u""_s,
      u"-"_s, u"\uFEFFß \U0001F4F7"_s, QString(5000, u'x')};
  adodb::Werte werte;
  for (const adodb::Wert& wert : soll) werte.push_back(wert);
  ASSERT_EQ(werte.size(), soll.size());
  for (std::size_t i = 0; i < soll.size(); ++i) EXPECT_EQ(werte[i], soll[i]);
  EXPECT_EQ(Fehlernummer_von([&] { werte.at(soll.size()); }), 9);
}

TEST(Werte, ATextThatEqualsTheOneAboveLiesThereOnce) {
  adodb::Werte werte;
  for (const QString& text : {u"Bild 1"_s, u"jpg"_s, u"Bild 2"_s, u"jpg"_s, u"Bild 2"_s, u"JPG"_s})
    werte.haenge_text_an(text, 2);
  for (const char* text : {"Bild 2", "JPG",
           "Gr\xC3\xB6\xC3\x9F"
           "e",
           "JPG"})
    werte.haenge_utf8_an(text, strlen(text), 2);
  EXPECT_EQ(werte.ort(3), werte.ort(1));
  EXPECT_EQ(werte.ort(4), werte.ort(2));
  EXPECT_NE(werte.ort(5), werte.ort(3));
  EXPECT_EQ(werte.ort(6), werte.ort(4));
  EXPECT_EQ(werte.ort(9), werte.ort(5));
  EXPECT_EQ(werte[2], adodb::Wert(u"Bild 2"_s));
  EXPECT_EQ(werte[5], adodb::Wert(u"JPG"_s));
  EXPECT_EQ(werte[8], adodb::Wert(u"Größe"_s));
}

TEST(Recordset, GoesForwardFromTheFirstRecordToTheEnd) {
  Recordset satz(zwei_Zeilen());
  EXPECT_EQ(satz.State(), adodb::adStateOpen);
  EXPECT_FALSE(satz.Eof());
  EXPECT_EQ(satz.Fields(u"Key1"_s).Text(), u"A"_s);
  satz.MoveNext();
  EXPECT_EQ(satz.Fields(u"Key1"_s).Text(), QString());
  satz.MoveNext();
  EXPECT_TRUE(satz.Eof());
  EXPECT_EQ(Fehlernummer_von([&] { satz.MoveNext(); }), 3021);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Fields(u"Key1"_s).Value(); }), 3021);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Text(0); }), 3021);
}

TEST(Recordset, ColumnsAreFoundInAnyCase) {
  const Recordset satz(zwei_Zeilen());
  EXPECT_EQ(satz.Spalte(u"key1"_s), 0);
  EXPECT_EQ(satz.Spalte(u"SORTINDEX"_s), 1);
  EXPECT_EQ(satz.Fields(u"KEY1"_s).Name(), u"Key1"_s);
  EXPECT_EQ(satz.Spalten(), QStringList({u"Key1"_s, u"SortIndex"_s}));
  EXPECT_EQ(Fehlernummer_von([&] { satz.Fields(u"Key2"_s); }), 3265);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Text(2); }), 3265);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Text(-1); }), 3265);
}

TEST(Recordset, NullIsVisibleAndItsTextIsEmpty) {
  Recordset satz(zwei_Zeilen());
  satz.MoveNext();
  EXPECT_TRUE(std::holds_alternative<Null>(satz.Fields(u"Key1"_s).Value()));
  EXPECT_EQ(satz.Text(0), QString());
}

TEST(Recordset, ATextBehindEmptyOnesOfItsColumnIsItself) {
  Ergebnis ergebnis{{u"Key3"_s}, {}};
  const QStringList texte{u""_s, u""_s, u""_s, u"1"_s, u""_s, u"22"_s, u"22"_s, u"3"_s};
  for (const QString& text : texte) ergebnis.werte.haenge_text_an(text, 1);
  QStringList gelesene;
  for (Recordset satz(std::move(ergebnis)); !satz.Eof(); satz.MoveNext()) gelesene.append(satz.Text(0));
  EXPECT_EQ(gelesene, texte);
}

TEST(Recordset, NumbersComeIn32BitsOrAsDouble) {
  constexpr std::int64_t Gross = std::int64_t{1} << 31;
  const Recordset satz(Ergebnis{{u"a"_s, u"b"_s, u"c"_s, u"d"_s}, {Gross - 1, -Gross, Gross, 2.5}});
  EXPECT_EQ(satz.Value(0), Variant(std::numeric_limits<std::int32_t>::max()));
  EXPECT_EQ(satz.Value(1), Variant(std::numeric_limits<std::int32_t>::min()));
  EXPECT_EQ(satz.Value(2), Variant(2147483648.0));
  EXPECT_EQ(satz.Value(3), Variant(2.5));
  EXPECT_EQ(satz.Text(0), u"2147483647"_s);
  EXPECT_EQ(satz.Text(2), u"2147483648"_s);
  EXPECT_EQ(satz.Text(3), u"2.5"_s);
}

TEST(Recordset, AClosedOneRefusesEverything) {
  Recordset satz(zwei_Zeilen());
  satz.Close();
  EXPECT_EQ(satz.State(), adodb::adStateClosed);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Eof(); }), 3704);
  EXPECT_EQ(Fehlernummer_von([&] { satz.MoveNext(); }), 3704);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Fields(u"Key1"_s); }), 3704);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Text(0); }), 3704);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Spalten(); }), 3704);
  EXPECT_EQ(Fehlernummer_von([&] { satz.Close(); }), 3704);
  EXPECT_EQ(Recordset().State(), adodb::adStateClosed);
}
