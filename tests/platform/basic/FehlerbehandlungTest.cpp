#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "platform/basic/Fehlerbehandlung.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

TEST(Fehlerbehandlung, ReportAndEndTellsNumberAndWordsOnceAndGivesTheEmptyResult) {
  int berichte = 0;
  const bool ergebnis = fehler::melden_und_enden(
      [&](const Laufzeitfehler& f) {
    ++berichte;
    EXPECT_EQ(f.Nummer(), 9);
    EXPECT_EQ(f.Beschreibung(), u"Index außerhalb des gültigen Bereichs"_s);
      },
      []() -> bool { throw Laufzeitfehler(9); });
  EXPECT_FALSE(ergebnis);
  EXPECT_EQ(berichte, 1);
}

TEST(Fehlerbehandlung, NothingIsReportedWhenNothingFails) {
  EXPECT_TRUE(fehler::melden_und_enden([](const Laufzeitfehler&) { FAIL(); }, [] { return true; }));
}

TEST(Fehlerbehandlung, EndSilentlyGivesTheEmptyResult) {
  EXPECT_EQ(fehler::still_enden([]() -> int { throw Laufzeitfehler(5); }), 0);
  EXPECT_EQ(fehler::still_enden([] { return 3; }), 3);
}

TEST(Fehlerbehandlung, PassOverGoesOnAndTellsWhetherTheLastStatementFailed) {
  fehler::Weiter weiter;
  EXPECT_FALSE(weiter([] { throw Laufzeitfehler(53); }));
  EXPECT_TRUE(weiter.fehlgeschlagen());
  EXPECT_EQ(weiter.Nummer(), 53);
  bool gelaufen = false;
  EXPECT_TRUE(weiter([&] { gelaufen = true; }));
  EXPECT_TRUE(gelaufen);
  EXPECT_FALSE(weiter.fehlgeschlagen());
}

TEST(Fehlerbehandlung, ForeignExceptionsBecomeFailures) {
  fehler::Weiter weiter;
  weiter([] { throw std::bad_alloc(); });
  EXPECT_EQ(weiter.Nummer(), fehlernummer::SpeicherErschoepft);
  weiter([] { throw std::runtime_error("x"); });
  EXPECT_EQ(weiter.Nummer(), fehlernummer::Intern);
  weiter([] { throw 3; });
  EXPECT_EQ(weiter.Nummer(), fehlernummer::Intern);
}
