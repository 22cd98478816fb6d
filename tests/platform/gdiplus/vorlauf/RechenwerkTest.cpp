#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <latch>
#include <thread>

#include "platform/gdiplus/vorlauf/Rechenwerk.h"

namespace {

Rechenwerk& werk() {
  return Rechenwerk::aktuell();
}

}  // namespace

TEST(RechenwerkTest, WhatIsDoneAsideWaitsUntilNothingIsToBeReadOrDecoded) {
  std::latch darf_enden(1);
  std::atomic<bool> entpackt = false;
  std::atomic<bool> vor_der_Zeit = false;
  std::atomic<bool> nebenbei = false;
  werk().lies([&] {
    werk().rechne([&] {
      darf_enden.wait();
      entpackt = true;
    });
  });
  werk().nebenbei([&] {
    vor_der_Zeit = !entpackt;
    nebenbei = true;
  });
  darf_enden.count_down();
  werk().warte();
  EXPECT_TRUE(nebenbei);
  EXPECT_FALSE(vor_der_Zeit);
}

TEST(RechenwerkTest, TheTaskOfAReaderIsLetGoOfBeforeTheNextKindOfWorkBegins) {
  auto gehalten = std::make_shared<int>(1);
  std::atomic<long> halter = -1;
  werk().nebenbei([] {});
  werk().warte();
  werk().lies([kopie = gehalten] {});
  werk().nebenbei([&halter, schwach = std::weak_ptr(gehalten)] { halter = schwach.use_count(); });
  werk().warte();
  EXPECT_EQ(halter, 1);
}

// A share on which each entry takes long must not keep the program from ending.
TEST(RechenwerkTest, AtTheEndWhatTakesTooLongIsLeftOut) {
  std::atomic<int> getan = 0;
  const auto langsam = [&] {
    const auto beginn = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - beginn < std::chrono::milliseconds(600)) std::this_thread::yield();
    ++getan;
  };
  for (int i = 0; i < 5; ++i) werk().nebenbei(langsam);
  werk().beende();
  EXPECT_LE(getan, 2);
  werk().nebenbei([&] { getan = 100; });
  werk().warte();
  EXPECT_EQ(getan, 100) << "another application object finds it as ever";
}

TEST(RechenwerkTest, ABufferIsHandedOnWhileThereIsWorkAndForgottenAfterwards) {
  const char* speicher = nullptr;
  const char* wieder = nullptr;
  QByteArray fremder(5000, 'x');
  const QByteArray haelt_noch_jemand = fremder;
  werk().lies([&] {
    QByteArray erster(10000, 'y');
    speicher = erster.constData();
    werk().gib_Puffer(std::move(erster));
    wieder = werk().nimm_Puffer().constData();
    werk().gib_Puffer(fremder);
    EXPECT_TRUE(werk().nimm_Puffer().isNull()) << "its content belongs to somebody else too";
    werk().gib_Puffer(QByteArray(10000, 'z'));
  });
  werk().warte();
  EXPECT_EQ(wieder, speicher);
  EXPECT_TRUE(werk().nimm_Puffer().isNull());
}
