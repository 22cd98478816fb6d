#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "platform/adodb/sqlite/SqliteKollation.h"

using adodb::vergleiche_Servertext;

namespace {

int vorzeichen(int zahl) {
  return (zahl > 0) - (zahl < 0);
}
int vergleich(const std::string& a, const std::string& b) {
  return vorzeichen(vergleiche_Servertext(a, b));
}

}  // namespace

TEST(Kollation, IgnoresTheCaseOfAllLetters) {
  EXPECT_EQ(vergleich("Artikel", "ARTIKEL"), 0);
  EXPECT_EQ(vergleich("Gebäude Öl", "GEBÄUDE ÖL"), 0);
  EXPECT_EQ(vergleich("ΑΘΉΝΑ", "αθήνα"), 0);
  EXPECT_EQ(vergleich("МОСКВА", "москва"), 0);
  EXPECT_EQ(vergleich("\U00010400", "\U00010428"), 0);
}

TEST(Kollation, FoldsOneCharacterToOne) {
  EXPECT_NE(vergleich("Straße", "Strasse"), 0);
  EXPECT_NE(vergleich("ä", "ae"), 0);
  EXPECT_NE(vergleich("ä", "a"), 0);
}

TEST(Kollation, IgnoresTrailingBlanksOnly) {
  EXPECT_EQ(vergleich("a", "a   "), 0);
  EXPECT_EQ(vergleich("", "   "), 0);
  EXPECT_EQ(vergleich("Ä ", "ä"), 0);
  EXPECT_NE(vergleich("a", " a"), 0);
  EXPECT_NE(vergleich("a", "a\t"), 0);
  EXPECT_NE(vergleich("a", "a\u00A0"), 0);
  EXPECT_NE(vergleich("a b", "a  b"), 0);
}

TEST(Kollation, TheShorterTextCountsAsFilledWithBlanks) {
  EXPECT_LT(vergleich("a", "ab"), 0);
  EXPECT_GT(vergleich("a", "a\t"), 0);
  EXPECT_LT(vergleich("a\t", "a"), 0);
  EXPECT_GT(vergleich("ä!", "Ä"), 0);
}

TEST(Kollation, OrdersByFoldedCharacters) {
  EXPECT_LT(vergleich("a", "B"), 0);
  EXPECT_LT(vergleich("Z", "ä"), 0);
  EXPECT_LT(vergleich("9", "a"), 0);
}

TEST(Kollation, BytesThatAreNoUtf8CompareByThemselves) {
  EXPECT_EQ(vergleich("\xFF", "\xFF"), 0);
  EXPECT_NE(vergleich("\xC3", "\xC3\xA4"), 0);
  EXPECT_NE(vergleich("\xC3"
                      "a",
                "\xC3"
                "b"),
      0);
  EXPECT_EQ(vergleich("\xE4"
                      "A",
                "\xE4"
                "a"),
      0);
  EXPECT_LT(vergleich("\xF4\x8F\xBF\xBF", "\xF5"), 0);
  EXPECT_NE(vergleich("\xC0\xA0", " "), 0);
}

namespace {

/// Texts that are often alike: letters in both cases, blanks, umlauts, broken sequences.
rc::Gen<std::string> texte() {
  const auto stueck = rc::gen::element<std::string>(
      "a", "A", "b", " ", "\t", "ä", "Ä", "ß", "\xC3", "\xA4", "\xFF", "\xF0\x90", "\U00010400", "\U00010428", "\0");
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(stueck), [](const std::vector<std::string>& s) {
    std::string text;
    for (std::size_t i = 0; i < s.size() && i < 5; ++i) text += s[i];
    return text;
  });
}

}  // namespace

RC_GTEST_PROP(Kollation, IsReflexiveAndAntisymmetric, ()) {
  const std::string a = *texte();
  const std::string b = *texte();
  RC_ASSERT(vergleich(a, a) == 0);
  RC_ASSERT(vergleich(a, b) == -vergleich(b, a));
}

RC_GTEST_PROP(Kollation, IsTransitive, ()) {
  const std::string a = *texte();
  const std::string b = *texte();
  const std::string c = *texte();
  if (vergleich(a, b) <= 0 && vergleich(b, c) <= 0) RC_ASSERT(vergleich(a, c) <= 0);
  if (vergleich(a, b) == 0) RC_ASSERT(vergleich(a, c) == vergleich(b, c));
}

RC_GTEST_PROP(Kollation, AnyBytesAreComparedWithoutReadingBehindThem, ()) {
  const auto a = *rc::gen::container<std::vector<char>>(rc::gen::arbitrary<char>());
  const auto b = *rc::gen::container<std::vector<char>>(rc::gen::arbitrary<char>());
  // Copies of exact size, so that the sanitizer sees a read behind their end.
  const std::string_view va(a.data(), a.size());
  const std::string_view vb(b.data(), b.size());
  RC_ASSERT(vorzeichen(vergleiche_Servertext(va, vb)) == -vorzeichen(vergleiche_Servertext(vb, va)));
  RC_ASSERT(vergleiche_Servertext(va, va) == 0);
}
