#pragma once

#include <QtGlobal>
#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

#include "platform/adodb/sqlite/SqliteAufgabe.h"

struct sqlite3;

namespace adodb {

/// How one SQLite connection waits while another one holds the database. Waiting is no failure and has no end, with one
/// exception: a transaction that another connection of the same thread holds open on the same file can't end meanwhile,
/// so that wait is bounded. A wish to give up ends every wait. All open connections stand in one list of the process,
/// which outlives every thread.
class SqliteSperre {
 public:
  /// `grenze` bounds the wait for a transaction of the waiting thread itself.
  SqliteSperre(std::chrono::milliseconds grenze, SqliteAufgabe& aufgabe) : grenze_(grenze), aufgabe_(aufgabe) {}
  ~SqliteSperre() { verlasse(); }
  Q_DISABLE_COPY_MOVE(SqliteSperre)

  /// Takes over the waiting of an open connection; the connection must be closed after `verlasse`.
  void betreue(sqlite3* datenbank);
  void verlasse() noexcept;

  /// To be called before each statement, on the thread that runs it.
  void beginne_Anweisung() noexcept;
  /// Waits a moment after `ergebnis`, a busy or locked code for which SQLite did not call the handler. False when
  /// waiting further is of no use: the statement is to be given up, the bound has passed, or the connection's own
  /// transaction reads an outdated state.
  bool warte_nach(int ergebnis) noexcept;
  /// The wait was ended because the bound had passed.
  bool Grenze_erreicht() const noexcept { return Grenze_erreicht_; }
  /// Number of pauses since the beginning; may be asked from any thread.
  unsigned pausen() const noexcept { return pausen_.load(std::memory_order_relaxed); }

 private:
  static int bei_Sperre(void* selbst, int versuch);
  bool warte(bool begrenzt) noexcept;
  bool eigener_Thread_haelt() const noexcept;

  std::chrono::milliseconds grenze_;
  SqliteAufgabe& aufgabe_;
  sqlite3* datenbank_ = nullptr;
  std::atomic<std::thread::id> thread_;
  std::optional<std::chrono::steady_clock::time_point> beginn_;
  std::chrono::milliseconds pause_{1};
  std::atomic<unsigned> pausen_ = 0;
  bool begrenzt_ = false;
  bool Grenze_erreicht_ = false;
};

}  // namespace adodb
