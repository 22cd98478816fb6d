#include <gtest/gtest.h>

#include <vector>

#include "exif/Bytepaar.h"

namespace {

TEST(Bytepaar, IsFoundAtEveryPlace) {
  for (std::size_t stelle = 0; stelle + 1 < 5000; ++stelle) {
    // Either of the two stands everywhere alone.
    std::vector<std::uint8_t> bytes(5000, 0xE1);
    for (std::size_t i = 0; i <= stelle; ++i) bytes[i] = 0xFF;
    EXPECT_EQ(finde_Bytepaar(bytes, 0xFF, 0xE1), stelle);
  }
}

TEST(Bytepaar, TheFirstOfSeveralCounts) {
  std::vector<std::uint8_t> bytes(9000, 0);
  for (const std::size_t i : {8191U, 4095U, 2048U, 2046U, 30U}) {
    bytes[i] = 0xFF;
    bytes[i + 1] = 0xE1;
    EXPECT_EQ(finde_Bytepaar(bytes, 0xFF, 0xE1), i);
  }
}

TEST(Bytepaar, IsNotFoundInTheWrongOrderOrApart) {
  std::vector<std::uint8_t> bytes(5000, 0xE1);
  for (std::size_t i = 3000; i < 5000; ++i) bytes[i] = 0xFF;
  EXPECT_EQ(finde_Bytepaar(bytes, 0xFF, 0xE1), std::nullopt);
  for (std::size_t i = 0; i < 5000; ++i) bytes[i] = i % 3 == 0 ? 0xFF : i % 3 == 2 ? 0xE1 : 0;
  EXPECT_EQ(finde_Bytepaar(bytes, 0xFF, 0xE1), std::nullopt);
}

TEST(Bytepaar, IsNeverFoundBehindTheEnd) {
  const std::vector<std::uint8_t> bytes(6000, 0xFF);
  for (std::size_t laenge = 0; laenge < 5000; laenge += 7) {
    std::vector<std::uint8_t> mehr = bytes;
    mehr[laenge] = 0xE1;
    EXPECT_EQ(finde_Bytepaar(std::span(mehr).first(laenge), 0xFF, 0xE1), std::nullopt) << laenge;
  }
}

}  // namespace
