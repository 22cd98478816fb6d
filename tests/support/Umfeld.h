#pragma once

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

/// Fixed surroundings of a test program: no display, German locale for what a user reads, the zone of the users, one
/// seed, and a cache folder of its own, empty and gone at the end: small pictures that an earlier run kept would hide
/// what this one does. To be called before the application object is made.
inline void richte_Umfeld_ein() {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (!qEnvironmentVariableIsSet("RC_PARAMS")) qputenv("RC_PARAMS", "seed=20260101");
  qputenv("TZ", "Europe/Berlin");
  static const QTemporaryDir Cacheheim;
  qputenv("XDG_CACHE_HOME", QFile::encodeName(Cacheheim.path()));
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}
