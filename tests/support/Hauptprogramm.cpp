#include <gtest/gtest.h>

#include <QGuiApplication>
#include <cstdio>

#include "tests/support/Pruefziel.h"
#include "tests/support/Umfeld.h"

int main(int argc, char** argv) {
  richte_Umfeld_ein();
  ::testing::InitGoogleTest(&argc, argv);
  const QGuiApplication app(argc, argv);
  if (const QString grund = pruefziel_Hindernis(); !grund.isEmpty()) {
    std::printf("skipped: %s\n", qUtf8Printable(grund));
    return Uebersprungen;
  }
  return RUN_ALL_TESTS();
}
