#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "platform/gdiplus/vorlauf/Speicherplatz.h"

namespace {

const std::atomic<bool> Nie = false;

}  // namespace

TEST(Speicherplatz, GivesNoMoreThanThereIs) {
  Speicherplatz platz(100);
  {
    const auto erster = platz.versuche(60);
    EXPECT_TRUE(erster);
    EXPECT_FALSE(platz.versuche(41));
    EXPECT_TRUE(platz.versuche(40));
  }
  EXPECT_TRUE(platz.versuche(100));
  EXPECT_FALSE(platz.warte(101, Nie));
}

TEST(Speicherplatz, ALargeShareIsGivenWhereItIsTheOnlyOne) {
  Speicherplatz platz(100, 200);
  auto klein = platz.versuche(1);
  EXPECT_FALSE(platz.versuche(200));
  klein.reset();
  const auto gross = platz.versuche(200);
  EXPECT_TRUE(gross);
  EXPECT_FALSE(platz.versuche(1));
  EXPECT_FALSE(platz.warte(201, Nie));
}

TEST(Speicherplatz, AMovedShareIsGivenBackOnce) {
  Speicherplatz platz(100);
  {
    auto erster = platz.versuche(100);
    const Speicherplatz::Anteil zweiter(std::move(*erster));
    erster.reset();
    EXPECT_FALSE(platz.versuche(1));
  }
  EXPECT_TRUE(platz.versuche(100));
  EXPECT_FALSE(platz.versuche(101));
}

TEST(Speicherplatz, WhoeverWaitsGetsRoomWhenItComesFree) {
  Speicherplatz platz(100);
  auto belegt = platz.versuche(80);
  bool bekommen = false;
  std::thread wartender([&] { bekommen = platz.warte(50, Nie).has_value(); });
  belegt.reset();
  wartender.join();
  EXPECT_TRUE(bekommen);
}

TEST(Speicherplatz, WhoeverWaitsAndIsGivenUpGetsNone) {
  Speicherplatz platz(100);
  const auto belegt = platz.versuche(80);
  std::atomic<bool> aufgegeben = false;
  bool bekommen = true;
  std::thread wartender([&] { bekommen = platz.warte(50, aufgegeben).has_value(); });
  aufgegeben = true;
  platz.wecke();
  wartender.join();
  EXPECT_FALSE(bekommen);
}
