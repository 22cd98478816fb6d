#include <gtest/gtest.h>

#include <QApplication>

#include "tests/support/Umfeld.h"

// The main of test programs with widgets, in place of the shared one.
int main(int argc, char** argv) {
  richte_Umfeld_ein();
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
