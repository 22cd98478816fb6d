#include <gtest/gtest.h>

#include <QGuiApplication>

#include "tests/support/Umfeld.h"

int main(int argc, char** argv) {
  richte_Umfeld_ein();
  ::testing::InitGoogleTest(&argc, argv);
  const QGuiApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
