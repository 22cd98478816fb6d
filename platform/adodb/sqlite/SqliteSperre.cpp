#include "platform/adodb/sqlite/SqliteSperre.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <vector>

namespace adodb {
namespace {

using namespace std::chrono_literals;

/// Pauses double from a millisecond up to this, so that a short lock costs little and a long one no processor time.
constexpr auto LaengstePause = 50ms;

struct Liste {
  std::mutex schutz;
  std::vector<const SqliteSperre*> offene;
};

/// Never destroyed: a thread's writing connection may outlive the static objects.
Liste& liste() {
  static auto* const Eine = new Liste;
  return *Eine;
}

/// Same device and inode: two names of one file are one database.
bool gleiche_Datei(sqlite3* a, sqlite3* b) {
  const char* datei_a = sqlite3_db_filename(a, nullptr);
  const char* datei_b = sqlite3_db_filename(b, nullptr);
  if (!datei_a || !datei_b) return false;
  std::error_code fehler;
  return std::filesystem::equivalent(datei_a, datei_b, fehler);
}

}  // namespace

void SqliteSperre::betreue(sqlite3* datenbank) {
  Liste& l = liste();
  const std::lock_guard sperre(l.schutz);
  l.offene.push_back(this);
  datenbank_ = datenbank;
  beginne_Anweisung();
  sqlite3_busy_handler(datenbank, bei_Sperre, this);
}

void SqliteSperre::verlasse() noexcept {
  if (!datenbank_) return;
  Liste& l = liste();
  const std::lock_guard sperre(l.schutz);
  std::erase(l.offene, this);
  sqlite3_busy_handler(datenbank_, nullptr, nullptr);
  datenbank_ = nullptr;
}

void SqliteSperre::beginne_Anweisung() noexcept {
  thread_.store(std::this_thread::get_id(), std::memory_order_relaxed);
  beginn_.reset();
  pause_ = 1ms;
  begrenzt_ = false;
  Grenze_erreicht_ = false;
}

bool SqliteSperre::eigener_Thread_haelt() const noexcept {
  Liste& l = liste();
  const std::lock_guard sperre(l.schutz);
  return std::any_of(l.offene.begin(), l.offene.end(), [this](const SqliteSperre* andere) {
    // Only a connection of this thread may be asked for its state.
    return andere != this && andere->thread_.load(std::memory_order_relaxed) == std::this_thread::get_id() &&
        sqlite3_txn_state(andere->datenbank_, nullptr) != SQLITE_TXN_NONE &&
        gleiche_Datei(andere->datenbank_, datenbank_);
  });
}

bool SqliteSperre::warte(bool begrenzt) noexcept {
  if (aufgabe_.gewuenscht()) return false;
  const auto jetzt = std::chrono::steady_clock::now();
  if (!beginn_) {
    beginn_ = jetzt;
    // The waiting thread can't end its own transaction meanwhile, so asking once is enough.
    begrenzt_ = eigener_Thread_haelt();
  }
  begrenzt_ = begrenzt_ || begrenzt;
  const auto vergangen = std::chrono::duration_cast<std::chrono::milliseconds>(jetzt - *beginn_);
  if (begrenzt_ && vergangen >= grenze_) {
    Grenze_erreicht_ = true;
    return false;
  }
  pausen_.fetch_add(1, std::memory_order_relaxed);
  aufgabe_.pausiere(begrenzt_ ? std::min(pause_, grenze_ - vergangen) : pause_);
  pause_ = std::min(2 * pause_, LaengstePause);
  return !aufgabe_.gewuenscht();
}

int SqliteSperre::bei_Sperre(void* selbst, int) {
  return static_cast<SqliteSperre*>(selbst)->warte(false) ? 1 : 0;
}

bool SqliteSperre::warte_nach(int ergebnis) noexcept {
  if (Grenze_erreicht_) return false;
  const bool in_Transaktion = sqlite3_get_autocommit(datenbank_) == 0;
  if (in_Transaktion && ergebnis == SQLITE_BUSY_SNAPSHOT) return false;
  // A lock inside the connection or against its own transaction may never go away by itself.
  return warte(in_Transaktion || (ergebnis & 0xFF) == SQLITE_LOCKED);
}

}  // namespace adodb
