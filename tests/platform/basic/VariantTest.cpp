#include <gtest/gtest.h>

#include <functional>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Variant.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {
std::int32_t nummer_von(const std::function<void()>& f) {
  try {
    f();
  } catch (const Laufzeitfehler& fehler) {
    return fehler.Nummer();
  }
  return 0;
}
}  // namespace

TEST(Variant, TextFormsAreTheOnesTheDialogsShow) {
  EXPECT_EQ(CStr(Empty{}), QString());
  EXPECT_EQ(CStr(true), u"True"_s);
  EXPECT_EQ(CStr(false), u"False"_s);
  EXPECT_EQ(CStr(std::int32_t{-7}), u"-7"_s);
  EXPECT_EQ(CStr(1.5), u"1.5"_s);
  EXPECT_EQ(CStr(u"ä"_s), u"ä"_s);
}

TEST(Variant, NullHasNoTextButJoinsAsEmpty) {
  EXPECT_EQ(nummer_von([] { CStr(Null{}); }), 94);
  EXPECT_EQ(mit_Leertext(Null{}), QString());
}

TEST(Variant, AnObjectHasNoText) {
  EXPECT_EQ(nummer_von([] { CStr(Objekt()); }), 13);
}

TEST(Variant, TrueIsMinusOne) {
  EXPECT_TRUE(ist_True(true));
  EXPECT_TRUE(ist_True(std::int32_t{-1}));
  EXPECT_TRUE(ist_True(-1.0));
  EXPECT_TRUE(ist_True(u"True"_s));
  EXPECT_TRUE(ist_True(u"-1"_s));
  EXPECT_FALSE(ist_True(std::int32_t{1}));
  EXPECT_FALSE(ist_True(u"1"_s));
  EXPECT_FALSE(ist_True(u"False"_s));
  EXPECT_FALSE(ist_True(Empty{}));
  EXPECT_FALSE(ist_True(Null{}));
  EXPECT_EQ(nummer_von([] { ist_True(u"ja"_s); }), 13);
}
