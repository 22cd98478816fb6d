#pragma once

#include <QtGlobal>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

struct sqlite3;

namespace adodb {

/// Whether the statement that runs on an SQLite connection is to be given up: said by any thread, heard by the one that
/// runs it, in SQLite and in a pause for a lock.
class SqliteAufgabe {
 public:
  SqliteAufgabe() = default;
  ~SqliteAufgabe() { verlasse(); }
  Q_DISABLE_COPY_MOVE(SqliteAufgabe)

  /// Takes an open connection over; it must be closed after `verlasse`.
  void betreue(sqlite3* datenbank);
  void verlasse() noexcept;

  /// A statement, from its preparation to its last row: only while one lives a wish counts, and it ends with it.
  class Lauf {
   public:
    explicit Lauf(SqliteAufgabe& aufgabe) : aufgabe_(aufgabe) { aufgabe_.setze_Lauf(true); }
    ~Lauf() { aufgabe_.setze_Lauf(false); }
    Q_DISABLE_COPY_MOVE(Lauf)

   private:
    SqliteAufgabe& aufgabe_;
  };

  /// From any thread.
  void gib_auf() noexcept;
  bool gewuenscht() const noexcept { return gewuenscht_.load(std::memory_order_relaxed); }
  /// Sleeps for that time; a wish ends it at once.
  void pausiere(std::chrono::milliseconds dauer) noexcept;

 private:
  static int zu_Beginn(unsigned ereignis, void* selbst, void* anweisung, void* text);
  void setze_Lauf(bool laeuft) noexcept;

  std::mutex schutz_;
  std::condition_variable weckruf_;
  sqlite3* datenbank_ = nullptr;
  bool laeuft_ = false;
  std::atomic<bool> gewuenscht_ = false;
};

}  // namespace adodb
