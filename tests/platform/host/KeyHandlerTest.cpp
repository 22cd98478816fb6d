#include <gtest/gtest.h>

#include <QStringList>

#include "platform/host/KVOCore.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A key handler that notes what it raises.
class KeyHandlerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    handler->bei_KeyDown = [this](std::int16_t taste, std::int16_t shift) {
      ereignisse += u"ab %1 %2"_s.arg(taste).arg(shift);
    };
    handler->bei_KeyPress = [this](std::int16_t zeichen) { ereignisse += u"zeichen %1"_s.arg(zeichen); };
    handler->bei_KeyUp = [this](std::int16_t taste, std::int16_t shift) {
      ereignisse += u"auf %1 %2"_s.arg(taste).arg(shift);
    };
  }
  void druecke() {
    handler->KeyDown(33, 1);
    handler->KeyPress(65);
    handler->KeyUp(119, 4);
  }

  std::shared_ptr<KeyHandler> handler = KVOCore::aktuell().NeuerKeyHandler();
  QStringList ereignisse;
};

}  // namespace

TEST_F(KeyHandlerTest, ANewOneIsSwitchedOffAndLetsNothingPass) {
  EXPECT_FALSE(handler->Eingeschaltet());
  druecke();
  EXPECT_EQ(ereignisse, QStringList());
}

TEST_F(KeyHandlerTest, SwitchedOnEveryKeyComesOutWithItsArguments) {
  handler->Eingeschaltet(true);
  druecke();
  EXPECT_EQ(ereignisse, (QStringList{u"ab 33 1"_s, u"zeichen 65"_s, u"auf 119 4"_s}));
}

TEST_F(KeyHandlerTest, SwitchedOffAgainItIsSilent) {
  handler->Eingeschaltet(true);
  handler->Eingeschaltet(false);
  druecke();
  EXPECT_EQ(ereignisse, QStringList());
}

TEST_F(KeyHandlerTest, EventsThatNobodyHandlesAreHarmless) {
  KeyHandler& still = *handler;
  still.bei_KeyDown = nullptr;
  still.bei_KeyPress = nullptr;
  still.bei_KeyUp = nullptr;
  still.Eingeschaltet(true);
  EXPECT_NO_THROW(druecke());
  EXPECT_EQ(ereignisse, QStringList());
}

TEST_F(KeyHandlerTest, EachWindowGetsOneOfItsOwn) {
  const auto anderer = KVOCore::aktuell().NeuerKeyHandler();
  handler->Eingeschaltet(true);
  EXPECT_NE(anderer, handler);
  EXPECT_FALSE(anderer->Eingeschaltet());
}
