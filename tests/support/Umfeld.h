#pragma once

#include <QLocale>

/// Fixed surroundings of a test program: no display, German locale for what a user reads, the zone of the users, one
/// seed. To be called before the application object is made.
inline void richte_Umfeld_ein() {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (!qEnvironmentVariableIsSet("RC_PARAMS")) qputenv("RC_PARAMS", "seed=20260101");
  qputenv("TZ", "Europe/Berlin");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}
