#pragma once

#include <QString>

#include "tests/support/Tdsserver.h"

/// The database that a program's tests run on. One choice holds for the whole program: the environment variable
/// KVO_PRUEFDATENBANK, "sqlite" (also without it), "tds-sqlite" or "tds-h2".
enum class Pruefziel {
  Sqlite,     ///< the embedded database
  TdsSqlite,  ///< the server of tests/tds through unixODBC, SQLite behind it
  TdsH2       ///< the same with H2 behind it
};
Pruefziel pruefziel();

/// Why that database can't be used on this machine; empty where it can.
QString pruefziel_Hindernis();

/// The one server of the program. Started at its first use; it ends with the application object. Not on Sqlite.
Tdsserver& pruefserver();
/// Ends that server: the next use starts a new one. For tests that change more than rows.
void verwirf_Pruefserver();
/// "Data Source=…;User ID=…;Password=…;…" for that server, without a provider.
QString pruefserver_Angaben();
/// The password in it. No text of the system may hold it.
QString pruefserver_Kennwort();

/// Exit code of a test program that can't run here; ctest then counts it as skipped.
inline constexpr int Uebersprungen = 77;
