#pragma once

#include <chrono>
#include <vector>

#include "platform/adodb/Treiber.h"
#include "platform/adodb/sqlite/SqliteAnweisung.h"
#include "platform/adodb/sqlite/SqliteAufgabe.h"
#include "platform/adodb/sqlite/SqliteSperre.h"

struct sqlite3;
struct sqlite3_stmt;

namespace adodb {

/// The embedded database, over SQLite's C interface.
///
/// Connect string: `Data Source` is a path of this machine, or a path of the table ("P:\…", "\\server\share\…");
/// `Mode` is ReadWrite (without it as well), ReadOnly or ReadWriteCreate. Only the last one makes a missing file; with
/// ReadWrite a file without the right to write opens too, and a statement that writes then fails. SQLite has no
/// login, so a `User ID` or `Password` that is not empty is refused, and so is every other keyword.
///
/// The main database carries the schema name "dbo". Comparing and measuring text follow the server (see
/// SqliteKollation.h). The file is kept in write-ahead mode with full synchronisation. Texts pass sqlite_Dialekt.
///
/// Values: INTEGER as whole number, REAL as number, TEXT as text, NULL; a BLOB as Windows-1252 text. So are those of
/// markers; half of a surrogate pair in one becomes "?", as it does in a text.
///
/// A statement that writes and is given up inside a transaction takes the whole transaction back.
class SqliteTreiber final : public Treiber {
 public:
  /// Longest wait for a transaction that another connection of the waiting thread holds; any other wait has no end.
  static constexpr std::chrono::milliseconds Wartegrenze = std::chrono::seconds(30);

  explicit SqliteTreiber(std::chrono::milliseconds wartegrenze = Wartegrenze);
  ~SqliteTreiber() override { schliesse(); }
  Q_DISABLE_COPY_MOVE(SqliteTreiber)

  /// Raises -2147467259: missing or unreadable file, no database, unknown keyword or mode.
  void oeffne(const QString& verbindungszeichenfolge) override;
  void schliesse() noexcept override;
  bool ist_offen() const noexcept override { return datenbank_ != nullptr; }
  /// Raises -2147217900 for a statement that fails, and, before anything ran, for an empty text, for one with anything
  /// behind its first statement, and for one with markers. 3704 when closed.
  Ergebnis fuehre_aus(const QString& text) override;
  /// Also refused before anything ran: markers with a name or a number ("?1", ":a", "@a", "$a"). The statement of a
  /// text that has markers is kept and used again when the same text comes next.
  Ergebnis fuehre_aus(const QString& text, const std::vector<Wert>& werte) override;
  /// Harmless while another thread closes, too, as long as this object lives.
  void gib_auf() noexcept override;
  /// How often it has paused for a lock of another connection since it was made; may be asked from any thread.
  unsigned pausen() const noexcept { return sperre_.pausen(); }

 private:
  void oeffne_Datei(const QByteArray& pfad, int art);
  void richte_ein();
  void pruefe_Text(const QString& text) const;
  SqliteAnweisung bereite_vor(const QString& text);
  Ergebnis lies(sqlite3_stmt* anweisung);
  int fuehre_Schritt(sqlite3_stmt* anweisung);
  [[noreturn]] void wirf_Anweisung(int ergebnis) const;
  [[noreturn]] void wirf_Verbindung(int ergebnis) const;

  std::chrono::milliseconds wartegrenze_;
  SqliteAufgabe aufgabe_;
  SqliteSperre sperre_;
  SqliteVorrat vorrat_;
  sqlite3* datenbank_ = nullptr;
};

}  // namespace adodb
