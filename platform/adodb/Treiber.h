#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/adodb/Leitungsschutz.h"
#include "platform/adodb/Werte.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/kvo_export.h"

namespace adodb {

/// A result that was read whole. `werte` holds the rows one behind the other, `spalten.size()` values each.
/// A statement that returns no rows leaves `spalten` empty.
struct Ergebnis {
  QStringList spalten;
  Werte werte;
  std::size_t zeilen() const noexcept {
    return spalten.isEmpty() ? 0 : werte.size() / static_cast<std::size_t>(spalten.size());
  }
};

/// What a database says of a failure. `Nummer()` is ADO's number (-2147217900 for a statement, -2147467259 for a
/// connection); SQLSTATE and the database's own number stand beside it. Passwords never get into the words.
class KVO_EXPORT Datenbankfehler : public Laufzeitfehler {
 public:
  Datenbankfehler(std::int32_t nummer, QString beschreibung, QString sqlstate, std::int32_t native_Nummer);
  ~Datenbankfehler() override;
  const QString& Sqlstate() const noexcept { return sqlstate_; }
  std::int32_t NativeNummer() const noexcept { return native_Nummer_; }

 private:
  QString sqlstate_;
  std::int32_t native_Nummer_;
};

/// One database behind a Connection. A driver belongs to one connection and is used by one thread; only `gib_auf` may
/// come from others. Every failure is a Laufzeitfehler, a Datenbankfehler where the database spoke.
class KVO_EXPORT Treiber {
 public:
  virtual ~Treiber();

  /// Opens the database that the connect string names.
  virtual void oeffne(const QString& verbindungszeichenfolge) = 0;
  /// Closes it; harmless when it is closed.
  virtual void schliesse() noexcept = 0;
  virtual bool ist_offen() const noexcept = 0;
  /// What is known of the open connection's encryption without asking the database. A driver that does not override it
  /// knows nothing.
  virtual Leitungsschutz leitungsschutz() const noexcept { return {}; }
  /// Runs one statement text to its end and reads all its rows.
  virtual Ergebnis fuehre_aus(const QString& text) = 0;
  /// The same with a value for each of the text's markers "?", in their order; no value ever becomes a part of the
  /// text. Texts, whole numbers and numbers arrive as such and unchanged, but for half of a surrogate pair that stands
  /// alone, which may become "?". Raises -2147217900, before anything ran, for another number of values than markers,
  /// for a text with a zero character and for a number that is infinite or none. Without values it is
  /// `fuehre_aus(text)`. A driver that does not override it has no parameters and raises 3251.
  virtual Ergebnis fuehre_aus(const QString& text, const std::vector<Wert>& werte);

  /// Gives up the statement that runs, also while it waits for a lock. May be called from any thread while another one
  /// is in `fuehre_aus`, not while one opens or closes; harmless when nothing runs, also for the next statement. Comes
  /// back at once, and does not wait for the end. The statement then fails with a Datenbankfehler of SQLSTATE "HY008",
  /// unless it has ended by itself meanwhile; on a server it may have written all the same. An open transaction may be
  /// taken back by it. What comes in the instant in which a statement is just being sent may be lost: whoever waits for
  /// the end says it again. A driver that does not override it can't give up.
  virtual void gib_auf() noexcept;
};

using Treiberfabrik = std::function<std::unique_ptr<Treiber>()>;

/// Enters a driver under a provider's name, which is compared without regard to case. A later entry replaces an
/// earlier one. "SQLite" is there from the start, and for Microsoft SQL Server "MSDASQL", "SQLOLEDB", "SQLNCLI" and
/// "MSOLEDBSQL" with their numbers ("SQLNCLI11", "SQLOLEDB.1").
KVO_EXPORT void registriere_treiber(const QString& provider, Treiberfabrik fabrik);

/// The driver that a connect string asks for: by its `Provider`; one in ODBC form has none and means "MSDASQL". Raises
/// 3706 when no driver fits.
KVO_EXPORT std::unique_ptr<Treiber> treiber_fuer(const QString& verbindungszeichenfolge);

}  // namespace adodb
