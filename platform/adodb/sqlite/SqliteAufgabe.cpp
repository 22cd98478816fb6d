#include "platform/adodb/sqlite/SqliteAufgabe.h"

#include <sqlite3.h>

namespace adodb {
void SqliteAufgabe::betreue(sqlite3* datenbank) {
  const std::lock_guard sperre(schutz_);
  datenbank_ = datenbank;
  // SQLite forgets an interrupt that comes before a statement's first step, so the wish is asked for there once more. A
  // progress handler would not do: it may stop a statement that has just committed.
  sqlite3_trace_v2(datenbank, SQLITE_TRACE_STMT, zu_Beginn, this);
}

void SqliteAufgabe::verlasse() noexcept {
  const std::lock_guard sperre(schutz_);
  if (datenbank_) sqlite3_trace_v2(datenbank_, 0, nullptr, nullptr);
  datenbank_ = nullptr;
}

void SqliteAufgabe::gib_auf() noexcept {
  const std::lock_guard sperre(schutz_);
  if (!laeuft_ || !datenbank_) return;
  gewuenscht_.store(true, std::memory_order_relaxed);
  sqlite3_interrupt(datenbank_);
  weckruf_.notify_all();
}

void SqliteAufgabe::pausiere(std::chrono::milliseconds dauer) noexcept {
  std::unique_lock sperre(schutz_);
  weckruf_.wait_for(sperre, dauer, [this] { return gewuenscht(); });
}

int SqliteAufgabe::zu_Beginn(unsigned /*ereignis*/, void* selbst, void* /*anweisung*/, void* /*text*/) {
  const auto* aufgabe = static_cast<const SqliteAufgabe*>(selbst);
  if (aufgabe->gewuenscht()) sqlite3_interrupt(aufgabe->datenbank_);
  return 0;
}

void SqliteAufgabe::setze_Lauf(bool laeuft) noexcept {
  const std::lock_guard sperre(schutz_);
  laeuft_ = laeuft;
  gewuenscht_.store(false, std::memory_order_relaxed);
}

}  // namespace adodb
