#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/adodb/Treiber.h"
#include "platform/adodb/odbc/OdbcFehler.h"
#include "platform/adodb/odbc/OdbcSchicht.h"
#include "platform/adodb/odbc/OdbcTreiberwahl.h"
#include "platform/adodb/odbc/OdbcWerte.h"

namespace adodb {

/// Microsoft SQL Server, over unixODBC and a driver of ODBC 3 (the maker's or FreeTDS).
///
/// Connect string: see OdbcVerbindung.h and docs/DATENBANK.md. A text goes to the server as it stands, as one batch,
/// or with the values of its markers as one call of sp_executesql: nothing is prepared or scanned for escapes, and no
/// call beside it costs a round trip. Of a batch with several results the first one with columns is read; messages, row
/// counts and warnings before and behind it are passed over, a failure anywhere in it is one of the whole text. Every
/// result is read to its end before `fuehre_aus` returns. Half of a surrogate pair, which a cut to 50 or 250 characters
/// may leave, passes through the maker's driver only. FreeTDS would send what stands before it and drop the rest, so
/// there it becomes "?", as on SQLite, in values too.
///
/// Where all is to be encrypted and FreeTDS could be talked out of it, opening sends one text of its own, see
/// `pruefe_Draht`.
///
/// Once the link is gone, the statement that meets it fails, and so do all later ones. Nothing is opened anew; the
/// connection counts as open until it is closed.
class OdbcTreiber final : public Treiber {
 public:
  explicit OdbcTreiber(OdbcSchicht& odbc = odbc_der_Maschine()) : odbc_(odbc) {}
  ~OdbcTreiber() override { schliesse(); }
  Q_DISABLE_COPY_MOVE(OdbcTreiber)

  /// Raises -2147467259: a connect string that can't be honoured, no driver, no server, no login, or no answer within
  /// the login time-out; 3705 when open.
  void oeffne(const QString& verbindungszeichenfolge) override;
  void schliesse() noexcept override;
  bool ist_offen() const noexcept override { return offen_; }
  Leitungsschutz leitungsschutz() const noexcept override { return schutz_der_Leitung_; }
  /// Raises -2147217900 for a statement that fails, also for one that meets a dead link; for an empty text and one with
  /// a zero character, before anything is sent; 3704 when closed.
  Ergebnis fuehre_aus(const QString& text) override { return fuehre_aus(text, {}); }
  Ergebnis fuehre_aus(const QString& text, const std::vector<Wert>& werte) override;
  /// Asks the server to stop. A statement that was asked so fails in every case: whether it wrote before is not known.
  /// The connection goes on.
  void gib_auf() noexcept override;

 private:
  class Anweisung;
  class Lauf;
  void lege_Griffe_an();
  void verbinde(const QString& zeichenfolge, const OdbcVersuch& versuch);
  SQLRETURN rufe(SQLHSTMT anweisung, const OdbcWerte::Ruf& ruf);
  Ergebnis lies_Ergebnisse(SQLHSTMT anweisung, SQLRETURN ergebnis);
  void sende_Aufgabe();
  void pruefe_Aufgabe() const;
  void pruefe_Leitung();
  bool ist_tot();
  void pruefe_Draht(const OdbcVersuch& versuch);
  [[noreturn]] void wirf_Anweisung(SQLHSTMT anweisung);

  OdbcSchicht& odbc_;
  SQLHENV umgebung_ = SQL_NULL_HENV;
  SQLHDBC verbindung_ = SQL_NULL_HDBC;
  bool offen_ = false;
  OdbcArt art_ = OdbcArt::Unbekannt;
  Leitungsschutz schutz_der_Leitung_;
  std::mutex schutz_;
  bool laeuft_ = false;
  /// The statement in a call that waits for the server. Asked to stop between two calls, FreeTDS would have the asking
  /// thread wait for the server's answer; and a handle that has gone must not be reached.
  SQLHSTMT wartende_ = SQL_NULL_HSTMT;
  /// When that call began and in which thread; and that it has ended.
  std::chrono::steady_clock::time_point begonnen_;
  pid_t faden_ = 0;
  std::condition_variable beendet_;
  /// Asks the call to stop; ends with the statement.
  std::thread bote_;
  std::atomic<bool> aufgegeben_ = false;
};

}  // namespace adodb
