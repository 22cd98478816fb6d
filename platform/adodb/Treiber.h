#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>

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

/// One database behind a Connection. A driver belongs to one connection and is used by one thread.
/// Every failure is a Laufzeitfehler, a Datenbankfehler where the database spoke.
class KVO_EXPORT Treiber {
 public:
  virtual ~Treiber();

  /// Opens the database that the connect string names.
  virtual void oeffne(const QString& verbindungszeichenfolge) = 0;
  /// Closes it; harmless when it is closed.
  virtual void schliesse() noexcept = 0;
  virtual bool ist_offen() const noexcept = 0;
  /// Runs one statement text to its end and reads all its rows.
  virtual Ergebnis fuehre_aus(const QString& text) = 0;
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
