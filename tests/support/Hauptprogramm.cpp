#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QLocale>

int main(int argc, char** argv) {
  // Fixed surroundings: no display, German locale for what a user reads, the zone of the users.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (!qEnvironmentVariableIsSet("RC_PARAMS")) qputenv("RC_PARAMS", "seed=20260101");
  qputenv("TZ", "Europe/Berlin");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  ::testing::InitGoogleTest(&argc, argv);
  const QGuiApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
