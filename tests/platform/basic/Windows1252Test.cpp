#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/basic/Windows1252.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

TEST(Windows1252, EveryByteSurvivesTheWayThereAndBack) {
  QByteArray alle;
  for (int i = 0; i < 256; ++i) alle.append(static_cast<char>(i));
  const QString text = windows1252::decode(alle);
  EXPECT_EQ(text.size(), 256);
  EXPECT_EQ(windows1252::encode(text), alle);
}

TEST(Windows1252, KnowsTheUpperControlArea) {
  EXPECT_EQ(windows1252::decode("\x80\x8E\x9F\xE4"), u"€ŽŸä"_s);
  EXPECT_EQ(windows1252::encode(u"€ŽŸß"), QByteArray("\x80\x8E\x9F\xDF"));
}

TEST(Windows1252, UndefinedBytesAreTheControlCharacterOfTheSameNumber) {
  for (const int byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
    const QString text = windows1252::decode(QByteArray(1, static_cast<char>(byte)));
    EXPECT_EQ(text.at(0).unicode(), byte);
    EXPECT_EQ(windows1252::encode(text), QByteArray(1, static_cast<char>(byte)));
  }
}

TEST(Windows1252, AnythingOutsideIsAQuestionMarkForEach16BitUnit) {
  EXPECT_EQ(windows1252::encode(u"aЖb"), QByteArray("a?b"));
  EXPECT_EQ(windows1252::encode(QString::fromUcs4(U"\U0001F600")), QByteArray("??"));
  EXPECT_EQ(windows1252::encode(u"\u0080\u0099"), QByteArray("??"));
}

RC_GTEST_PROP(Windows1252, EncodedLengthIsTheTextsLength, (const std::vector<char16_t>& zeichen)) {
  const QString text(reinterpret_cast<const QChar*>(zeichen.data()), static_cast<qsizetype>(zeichen.size()));
  RC_ASSERT(windows1252::encode(text).size() == text.size());
}
