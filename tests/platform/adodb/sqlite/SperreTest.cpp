#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <atomic>
#include <future>
#include <thread>

#include "platform/adodb/sqlite/SqliteTreiber.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using adodb::SqliteTreiber;

namespace {

class Sperre : public ::testing::Test {
 protected:
  void SetUp() override {
    SqliteTreiber erster;
    erster.oeffne(zeichenfolge(u"a.db"_s));
    erster.fuehre_aus(u"create table t (a)"_s);
  }
  QString zeichenfolge(const QString& name) const { return u"Mode=ReadWriteCreate;Data Source="_s + ordner.pfad(name); }
  std::unique_ptr<SqliteTreiber> treiber(
      std::chrono::milliseconds grenze = SqliteTreiber::Wartegrenze, const QString& name = u"a.db"_s) const {
    auto neuer = std::make_unique<SqliteTreiber>(grenze);
    neuer->oeffne(zeichenfolge(name));
    return neuer;
  }
  static std::size_t anzahl(SqliteTreiber& t) { return t.fuehre_aus(u"select a from t"_s).zeilen(); }

  Testordner ordner;
};

/// Another thread that holds the write lock until somebody pauses for it, at the latest until this object goes.
class Halter {
 public:
  Halter(std::unique_ptr<SqliteTreiber> eigener, const SqliteTreiber& wartender) {
    std::promise<void> haelt;
    auto bereit = haelt.get_future();
    thread_ = std::thread([this, &wartender, &haelt, eigener = std::move(eigener)] {
      eigener->fuehre_aus(u"BEGIN IMMEDIATE"_s);
      eigener->fuehre_aus(u"insert into t values ('anderer')"_s);
      haelt.set_value();
      while (wartender.pausen() == 0 && !schluss_) std::this_thread::yield();
      eigener->fuehre_aus(u"COMMIT"_s);
    });
    bereit.wait();
  }
  ~Halter() {
    schluss_ = true;
    thread_.join();
  }
  Halter(const Halter&) = delete;
  Halter& operator=(const Halter&) = delete;

 private:
  std::atomic<bool> schluss_ = false;
  std::thread thread_;
};

Laufzeitfehler fehler_von(SqliteTreiber& treiber, const QString& text) {
  try {
    treiber.fuehre_aus(text);
  } catch (const adodb::Datenbankfehler& fehler) {
    EXPECT_EQ(fehler.Nummer(), fehlernummer::Anweisung);
    return Laufzeitfehler(fehler.NativeNummer(), fehler.Beschreibung());
  }
  ADD_FAILURE() << text.toStdString();
  return Laufzeitfehler(0);
}

}  // namespace

TEST_F(Sperre, AStatementWaitsForAnotherThreadWithoutABound) {
  // A bound of nothing would end every wait at once; it does not count here.
  const auto wartender = treiber(0ms);
  {
    const Halter halter(treiber(), *wartender);
    EXPECT_NO_THROW(wartender->fuehre_aus(u"insert into t values ('ich')"_s));
  }
  EXPECT_GT(wartender->pausen(), 0U);
  EXPECT_EQ(anzahl(*wartender), 2U);
}

TEST_F(Sperre, AStatementWaitsForAnotherProcess) {
  int haelt[2];
  int ende[2];
  ASSERT_EQ(pipe(haelt), 0);
  ASSERT_EQ(pipe(ende), 0);
  const pid_t kind = fork();
  if (kind == 0) {
    const auto eigener = treiber();
    eigener->fuehre_aus(u"BEGIN IMMEDIATE"_s);
    char zeichen = 1;
    bool gut = write(haelt[1], &zeichen, 1) == 1 && read(ende[0], &zeichen, 1) == 1;
    eigener->fuehre_aus(u"COMMIT"_s);
    _exit(gut ? 0 : 1);
  }
  char zeichen = 0;
  ASSERT_EQ(read(haelt[0], &zeichen, 1), 1);
  const auto wartender = treiber(0ms);
  std::atomic<bool> schluss = false;
  std::thread melder([&] {
    while (wartender->pausen() == 0 && !schluss) std::this_thread::yield();
    EXPECT_EQ(write(ende[1], &zeichen, 1), 1);
  });
  EXPECT_NO_THROW(wartender->fuehre_aus(u"insert into t values ('ich')"_s));
  schluss = true;
  melder.join();
  EXPECT_GT(wartender->pausen(), 0U);
  int ergebnis = 0;
  waitpid(kind, &ergebnis, 0);
  EXPECT_EQ(ergebnis, 0);
  for (const int ende_des_Rohrs : {haelt[0], haelt[1], ende[0], ende[1]}) close(ende_des_Rohrs);
}

TEST_F(Sperre, ATransactionOfTheSameThreadBoundsTheWait) {
  const auto halter = treiber();
  const auto wartender = treiber(20ms);
  halter->fuehre_aus(u"BEGIN IMMEDIATE"_s);
  const Laufzeitfehler fehler = fehler_von(*wartender, u"insert into t values (1)"_s);
  EXPECT_EQ(fehler.Nummer() & 0xFF, SQLITE_BUSY);
  EXPECT_TRUE(fehler.Beschreibung().contains(u"gesperrt"_s));
  EXPECT_GT(wartender->pausen(), 0U);
  halter->fuehre_aus(u"COMMIT"_s);
  EXPECT_NO_THROW(wartender->fuehre_aus(u"insert into t values (1)"_s));
}

TEST_F(Sperre, TheSameFileUnderAnotherNameBoundsTheWaitToo) {
  ASSERT_TRUE(QFile::link(ordner.pfad(u"a.db"_s), ordner.pfad(u"b.db"_s)));
  const auto halter = treiber();
  const auto wartender = treiber(5ms, u"b.db"_s);
  halter->fuehre_aus(u"BEGIN IMMEDIATE"_s);
  EXPECT_TRUE(fehler_von(*wartender, u"insert into t values (1)"_s).Beschreibung().contains(u"gesperrt"_s));
}

TEST_F(Sperre, ATransactionOfTheSameThreadOnAnotherFileDoesNotBoundTheWait) {
  const auto fremde = treiber(SqliteTreiber::Wartegrenze, u"fremd.db"_s);
  fremde->fuehre_aus(u"create table t (a)"_s);
  fremde->fuehre_aus(u"BEGIN IMMEDIATE"_s);
  const auto wartender = treiber(0ms);
  const Halter halter(treiber(), *wartender);
  EXPECT_NO_THROW(wartender->fuehre_aus(u"insert into t values ('ich')"_s));
  EXPECT_GT(wartender->pausen(), 0U);
}

TEST_F(Sperre, AnIdleConnectionOfTheSameThreadDoesNotBoundTheWait) {
  const auto ruhende = treiber();
  EXPECT_EQ(anzahl(*ruhende), 0U);
  const auto wartender = treiber(0ms);
  const Halter halter(treiber(), *wartender);
  EXPECT_NO_THROW(wartender->fuehre_aus(u"insert into t values ('ich')"_s));
  EXPECT_GT(wartender->pausen(), 0U);
}

TEST_F(Sperre, ReadingAndWritingConnectionsLiveSideBySide) {
  const auto leser = treiber(0ms);
  const auto schreiber = treiber(0ms);
  leser->fuehre_aus(u"BEGIN"_s);
  EXPECT_EQ(anzahl(*leser), 0U);
  schreiber->fuehre_aus(u"insert into t values (1)"_s);
  EXPECT_EQ(anzahl(*leser), 0U);
  leser->fuehre_aus(u"COMMIT"_s);
  EXPECT_EQ(anzahl(*leser), 1U);
  schreiber->fuehre_aus(u"BEGIN IMMEDIATE"_s);
  schreiber->fuehre_aus(u"insert into t values (2)"_s);
  EXPECT_EQ(anzahl(*leser), 1U);
  schreiber->fuehre_aus(u"COMMIT"_s);
  EXPECT_EQ(anzahl(*leser), 2U);
}

TEST_F(Sperre, ATransactionThatReadsAnOutdatedStateFailsAtOnce) {
  const auto leser = treiber();
  const auto schreiber = treiber();
  leser->fuehre_aus(u"BEGIN"_s);
  EXPECT_EQ(anzahl(*leser), 0U);
  schreiber->fuehre_aus(u"insert into t values (1)"_s);
  EXPECT_EQ(fehler_von(*leser, u"insert into t values (2)"_s).Nummer(), SQLITE_BUSY_SNAPSHOT);
  EXPECT_EQ(leser->pausen(), 0U);
}

TEST_F(Sperre, ATransactionsOwnWriteWaitsWithABound) {
  const auto leser = treiber(5ms);
  leser->fuehre_aus(u"BEGIN"_s);
  EXPECT_EQ(anzahl(*leser), 0U);
  const Halter halter(treiber(), *leser);
  // The other one commits meanwhile, so this one's state is outdated, or its bound passes first.
  EXPECT_EQ(fehler_von(*leser, u"insert into t values (2)"_s).Nummer() & 0xFF, SQLITE_BUSY);
  EXPECT_GT(leser->pausen(), 0U);
}

TEST_F(Sperre, ManyThreadsWriteAndNoStatementIsLost) {
  constexpr int Threads = 4;
  constexpr int Texte = 25;
  std::vector<std::thread> threads;
  threads.reserve(Threads);
  for (int i = 0; i < Threads; ++i)
    threads.emplace_back([this] {
      const auto eigener = treiber(0ms);
      for (int k = 0; k < Texte; ++k) EXPECT_NO_THROW(eigener->fuehre_aus(u"insert into t values (1)"_s));
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(anzahl(*treiber()), std::size_t{Threads * Texte});
}
