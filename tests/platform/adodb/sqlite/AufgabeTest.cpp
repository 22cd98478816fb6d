#include <gtest/gtest.h>
#include <sqlite3.h>

#include <atomic>
#include <future>
#include <thread>

#include "platform/adodb/sqlite/SqliteTreiber.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using adodb::SqliteTreiber;

namespace {

/// Counts up for ever; the function `hier` says that it runs.
const QString Endlos =
    u"with recursive z(n) as (select hier() union all select n + 1 from z) select count(*) from z where n > 0"_s;

/// What SQLite calls in the tests: while a statement runs, and while one is prepared.
struct Haken {
  std::atomic<int> rufe = 0;
  std::function<void()> beim_Vorbereiten;
};

Haken& haken() {
  static Haken einer;
  return einer;
}

void hier(sqlite3_context* kontext, int, sqlite3_value**) {
  ++haken().rufe;
  sqlite3_result_int(kontext, 1);
}

int beim_Vorbereiten(void*, int, const char*, const char*, const char*, const char*) {
  if (haken().beim_Vorbereiten) haken().beim_Vorbereiten();
  return SQLITE_OK;
}

int haenge_ein(sqlite3* datenbank, char** /*fehler*/, const sqlite3_api_routines* /*aufrufe*/) {
  sqlite3_set_authorizer(datenbank, beim_Vorbereiten, nullptr);
  return sqlite3_create_function_v2(datenbank, "hier", 0, SQLITE_UTF8, nullptr, hier, nullptr, nullptr, nullptr);
}

class Aufgabe : public ::testing::Test {
 protected:
  void SetUp() override {
    haken().rufe = 0;
    haken().beim_Vorbereiten = {};
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(haenge_ein));
    treiber = neuer();
    treiber->fuehre_aus(u"create table t (a)"_s);
  }
  void TearDown() override { sqlite3_reset_auto_extension(); }

  std::unique_ptr<SqliteTreiber> neuer() const {
    auto einer = std::make_unique<SqliteTreiber>();
    einer->oeffne(u"Mode=ReadWriteCreate;Data Source="_s + ordner.pfad(u"a.db"_s));
    return einer;
  }
  /// What a statement fails with in a thread of its own.
  auto fehler_daneben(const QString& text, const std::vector<adodb::Wert>& werte = {}) {
    return std::async(std::launch::async, [this, text, werte] { return fehler(text, werte); });
  }
  adodb::Datenbankfehler fehler(const QString& text, const std::vector<adodb::Wert>& werte = {}) {
    try {
      treiber->fuehre_aus(text, werte);
    } catch (const adodb::Datenbankfehler& gefangener) {
      return gefangener;
    }
    return {0, u"kein Fehler"_s, {}, 0};
  }
  static void erwarte_aufgegeben(const adodb::Datenbankfehler& gefangener) {
    EXPECT_EQ(gefangener.Nummer(), fehlernummer::Anweisung);
    EXPECT_EQ(gefangener.Sqlstate(), u"HY008"_s);
    EXPECT_EQ(gefangener.Beschreibung(), u"Die Anweisung ist fehlgeschlagen: sie wurde aufgegeben"_s);
  }
  static void warte_auf_Beginn() {
    while (haken().rufe == 0) std::this_thread::yield();
  }
  std::int64_t anzahl() { return std::get<std::int64_t>(treiber->fuehre_aus(u"select count(*) from t"_s).werte.at(0)); }

  Testordner ordner;
  std::unique_ptr<SqliteTreiber> treiber;
};

}  // namespace

TEST_F(Aufgabe, AStatementThatRunsIsGivenUpByOneCallOfAnotherThread) {
  auto ergebnis = fehler_daneben(Endlos);
  warte_auf_Beginn();
  treiber->gib_auf();
  erwarte_aufgegeben(ergebnis.get());
  EXPECT_EQ(anzahl(), 0) << "the connection goes on";
}

TEST_F(Aufgabe, AStatementWithValuesIsGivenUpAndItsTextRunsAgain) {
  const QString text = Endlos + u" and n <> ?"_s;
  for (int i = 0; i < 2; ++i) {
    haken().rufe = 0;
    auto ergebnis = fehler_daneben(text, {std::int64_t{-1}});
    warte_auf_Beginn();
    treiber->gib_auf();
    erwarte_aufgegeben(ergebnis.get());
  }
}

TEST_F(Aufgabe, RowsThatComeOneByOneAreGivenUpToo) {
  auto ergebnis =
      fehler_daneben(u"with recursive z(n) as (select hier() union all select n + 1 from z) select n from z"_s);
  warte_auf_Beginn();
  treiber->gib_auf();
  erwarte_aufgegeben(ergebnis.get());
}

TEST_F(Aufgabe, AWishThatComesWhileTheStatementIsPreparedIsNotLost) {
  haken().beim_Vorbereiten = [this] { treiber->gib_auf(); };
  erwarte_aufgegeben(fehler(Endlos));
  haken().beim_Vorbereiten = {};
  EXPECT_EQ(anzahl(), 0);
}

TEST_F(Aufgabe, AWishThatMeetsNoStatementEndsNoLaterOne) {
  treiber->fuehre_aus(u"insert into t with recursive z(n) as (select 1 union all select n + 1 from z limit 20000) "_s +
      u"select n from z"_s);
  for (int i = 0; i < 3; ++i) {
    treiber->gib_auf();
    treiber->gib_auf();
    EXPECT_EQ(anzahl(), 20000);
    treiber->gib_auf();
    EXPECT_EQ(treiber->fuehre_aus(u"select a from t where a > ?"_s, {std::int64_t{0}}).zeilen(), 20000U);
  }
  treiber->schliesse();
  treiber->gib_auf();
}

TEST_F(Aufgabe, WaitingForALockEndsAtOnceWhileTheLockIsStillHeld) {
  const auto halter = neuer();
  halter->fuehre_aus(u"begin immediate"_s);
  for (const bool in_Transaktion : {false, true}) {
    if (in_Transaktion) {
      treiber->fuehre_aus(u"begin"_s);
      EXPECT_EQ(anzahl(), 0);
    }
    const unsigned vorher = treiber->pausen();
    auto ergebnis = fehler_daneben(u"insert into t values (?)"_s, {u"x"_s});
    while (treiber->pausen() == vorher) std::this_thread::yield();
    treiber->gib_auf();
    erwarte_aufgegeben(ergebnis.get());
  }
  treiber->fuehre_aus(u"rollback"_s);
  halter->fuehre_aus(u"commit"_s);
  treiber->fuehre_aus(u"insert into t values (?)"_s, {u"y"_s});
  EXPECT_EQ(anzahl(), 1);
}

TEST_F(Aufgabe, AWriteThatIsGivenUpLeavesNothingHalfDone) {
  const QString fuelle =
      u"insert into t with recursive z(n) as (select hier() union all select n + 1 from z) select n from z"_s;
  for (const bool in_Transaktion : {false, true}) {
    haken().rufe = 0;
    if (in_Transaktion) {
      treiber->fuehre_aus(u"begin"_s);
      treiber->fuehre_aus(u"insert into t values ('davor')"_s);
    }
    auto ergebnis = fehler_daneben(fuelle);
    warte_auf_Beginn();
    treiber->gib_auf();
    erwarte_aufgegeben(ergebnis.get());
    EXPECT_EQ(anzahl(), 0);
  }
  EXPECT_EQ(fehler(u"rollback"_s).Nummer(), fehlernummer::Anweisung) << "the transaction has gone with it";
}

TEST_F(Aufgabe, GivingUpAllTheTimeBesideManyShortStatementsAndTheClosingIsHarmless) {
  std::atomic<bool> schluss = false;
  std::thread daneben([&] {
    while (!schluss) treiber->gib_auf();
  });
  int gelungene = 0;
  for (int i = 0; i < 500; ++i) {
    const adodb::Datenbankfehler gefangener = fehler(u"insert into t values (?)"_s, {std::int64_t{i}});
    if (gefangener.Nummer() != 0) erwarte_aufgegeben(gefangener);
    gelungene += gefangener.Nummer() == 0 ? 1 : 0;
  }
  treiber->schliesse();
  schluss = true;
  daneben.join();
  treiber = neuer();
  EXPECT_EQ(anzahl(), gelungene) << "what was given up wrote nothing, and what was not has written";
}
