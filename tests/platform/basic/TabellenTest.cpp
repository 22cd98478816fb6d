#include <gtest/gtest.h>

#include "platform/basic/Dienstplatz.h"
#include "platform/basic/Nachschlagen.h"

namespace {

constexpr std::pair<int, const char*> Tabelle[] = {{1, "eins"}, {2, "zwei"}, {1, "noch eins"}};

struct Dienst {
  virtual ~Dienst() = default;
  virtual int nummer() const { return 1; }
};
struct Anderer final : Dienst {
  int nummer() const override { return 2; }
};
using Platz = Dienstplatz<Dienst, Dienst>;

}  // namespace

TEST(Nachschlagen, TheFirstRowOfAKeyCountsAndAMissingKeyGivesTheOtherValue) {
  EXPECT_STREQ(nachgeschlagen(Tabelle, 1, "sonst"), "eins");
  EXPECT_STREQ(nachgeschlagen(Tabelle, 2, "sonst"), "zwei");
  EXPECT_STREQ(nachgeschlagen(Tabelle, 3, "sonst"), "sonst");
}

TEST(Dienstplatz, AnotherServiceIsInForceUntilNoneIsSet) {
  const auto vorgabe = Platz::setze(std::make_shared<Anderer>());
  EXPECT_EQ(vorgabe->nummer(), 1);
  EXPECT_EQ(Platz::in_Kraft()->nummer(), 2);
  EXPECT_EQ(Platz::setze(nullptr)->nummer(), 2);
  EXPECT_EQ(Platz::in_Kraft()->nummer(), 1);
}
