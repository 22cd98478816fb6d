#include <gtest/gtest.h>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

TEST(Text, TrimCutsBlanksOnly) {
  EXPECT_EQ(text::Trim(u"  a b  "), u"a b"_s);
  EXPECT_EQ(text::Trim(u"\t a\u00A0 "), u"\t a\u00A0"_s);
  EXPECT_EQ(text::Trim(u"   "), QString());
}

TEST(Text, UpperCaseIsOneCharacterToOne) {
  EXPECT_EQ(text::UCase(u"straße äöü ﬁ"), u"STRAßE ÄÖÜ ﬁ"_s);
  EXPECT_EQ(text::LCase(u"ÄÖÜ ABC İ").size(), 9);
}

TEST(Text, LeftCounts16BitCharacters) {
  EXPECT_EQ(text::Left(u"abc"_s, 2), u"ab"_s);
  EXPECT_EQ(text::Left(u"abc"_s, 50), u"abc"_s);
  const QString paar = QString::fromUcs4(U"\U0001F600");
  EXPECT_EQ(text::Left(paar, 1).size(), 1);
  EXPECT_THROW(text::Left(u"abc"_s, -1), Laufzeitfehler);
}
