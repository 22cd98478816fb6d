#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/forms/gitter/Zeilenauswahl.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

namespace {

std::vector<std::int32_t> inhalt(const Zeilenauswahl& auswahl) {
  std::vector<std::int32_t> alle;
  alle.reserve(static_cast<std::size_t>(auswahl.Count()));
  for (std::int32_t i = 0; i < auswahl.Count(); ++i) alle.push_back(auswahl.Item(i));
  return alle;
}

}  // namespace

TEST(ZeilenauswahlTest, RowsStandInTheOrderInWhichTheyWereSelectedAndOnce) {
  Zeilenauswahl auswahl;
  for (const int zeile : {7, 3, 7, 5}) auswahl.Add(zeile);
  EXPECT_EQ(inhalt(auswahl), (std::vector<std::int32_t>{7, 3, 5}));
  EXPECT_TRUE(auswahl.Contains(3));
  EXPECT_FALSE(auswahl.Contains(0));
}

TEST(ZeilenauswahlTest, RemoveTakesOutAPositionAndNotARow) {
  Zeilenauswahl auswahl;
  for (const int zeile : {2, 1, 0}) auswahl.Add(zeile);
  auswahl.Remove(0);
  EXPECT_EQ(inhalt(auswahl), (std::vector<std::int32_t>{1, 0}));
  EXPECT_FALSE(auswahl.Contains(2));
  auswahl.Clear();
  EXPECT_EQ(auswahl.Count(), 0);
  EXPECT_FALSE(auswahl.Contains(1));
}

TEST(ZeilenauswahlTest, APositionOutsideRaises9) {
  Zeilenauswahl auswahl;
  auswahl.Add(4);
  for (const int stelle : {-1, 1}) {
    EXPECT_EQ(Fehlernummer_von([&] { static_cast<void>(auswahl.Item(stelle)); }), 9) << stelle;
    EXPECT_EQ(Fehlernummer_von([&] { auswahl.Remove(stelle); }), 9) << stelle;
  }
  EXPECT_EQ(auswahl.Count(), 1);
}

RC_GTEST_PROP(ZeilenauswahlTest, BehavesAsAListWithoutDoubles, (const std::vector<std::uint8_t>& schritte)) {
  Zeilenauswahl auswahl;
  std::vector<std::int32_t> modell;
  for (const std::uint8_t schritt : schritte) {
    const int wert = schritt / 4;
    if (schritt % 4 != 0) {
      auswahl.Add(wert);
      if (std::find(modell.begin(), modell.end(), wert) == modell.end()) modell.push_back(wert);
    } else if (!modell.empty()) {
      const auto stelle = wert % static_cast<int>(modell.size());
      auswahl.Remove(stelle);
      modell.erase(modell.begin() + stelle);
    }
    RC_ASSERT(inhalt(auswahl) == modell);
    RC_ASSERT(auswahl.Contains(wert) == (std::find(modell.begin(), modell.end(), wert) != modell.end()));
  }
}
