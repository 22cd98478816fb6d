#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

#include "tests/support/Pruefziel.h"
#include "tests/support/Umfeld.h"

// Number and seed of the drawn roads: KVO_WEGE and KVO_WEGE_SAAT.
int main(int argc, char** argv) {
  const QByteArray anzahl = qEnvironmentVariable("KVO_WEGE", QStringLiteral("200")).toLatin1();
  const QByteArray saat = qEnvironmentVariable("KVO_WEGE_SAAT", QStringLiteral("20260304")).toLatin1();
  if (!qEnvironmentVariableIsSet("RC_PARAMS")) qputenv("RC_PARAMS", "seed=" + saat + " max_success=" + anzahl);
  richte_Umfeld_ein();
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication app(argc, argv);
  if (const QString grund = pruefziel_Hindernis(); !grund.isEmpty()) {
    std::printf("skipped: %s\n", qUtf8Printable(grund));
    return Uebersprungen;
  }
  return RUN_ALL_TESTS();
}
