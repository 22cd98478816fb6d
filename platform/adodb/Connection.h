#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/adodb/Recordset.h"
#include "platform/adodb/Treiber.h"
#include "platform/basic/kvo_export.h"

namespace adodb {

/// Cursor kinds; only the client-side cursor is in use: a recordset is read whole and stands alone.
enum CursorLocationEnum : std::int32_t { adUseServer = 2, adUseClient = 3 };
enum CommandTypeEnum : std::int32_t { adCmdText = 1 };
/// States of a connection or a recordset.
enum ObjectStateEnum : std::int32_t { adStateClosed = 0, adStateOpen = 1 };

/// A connection to a database. Shared as `std::shared_ptr<Connection>`; used by one thread at a time,
/// but for `Cancel`.
class KVO_EXPORT Connection {
 public:
  Connection();
  /// A connection over a driver of the caller's own; Open then passes the connect string to it.
  explicit Connection(std::unique_ptr<Treiber> treiber);
  ~Connection();
  Q_DISABLE_COPY_MOVE(Connection)

  const QString& ConnectionString() const noexcept { return verbindungszeichenfolge_; }
  /// An open connection refuses a new connect string with 3705.
  void ConnectionString(const QString& wert);
  std::int32_t CursorLocation() const noexcept { return cursor_Ort_; }
  void CursorLocation(std::int32_t wert) noexcept { cursor_Ort_ = wert; }
  /// adStateOpen or adStateClosed.
  std::int32_t State() const noexcept;
  /// What the driver knows of the open connection's encryption; nothing is known of a closed one.
  Leitungsschutz Schutz() const noexcept;

  /// Opens the database of the connect string. A non-empty first argument replaces ConnectionString; user and password
  /// that are not empty replace those of the connect string. `options` is accepted and not looked at.
  /// Raises 3705 when open, 3706 when no driver fits, -2147467259 when the database can't be reached.
  void Open(const QString& verbindungszeichenfolge = {}, const QString& benutzer = {}, const QString& kennwort = {},
      std::int32_t options = -1);
  /// Raises 3704 when closed.
  void Close();
  /// Runs one statement. A statement that returns no rows gives a closed recordset. Raises 3704 when the connection is
  /// closed, -2147217900 for a statement that fails.
  std::shared_ptr<Recordset> Execute(const QString& text, std::int32_t options = -1);
  /// The same with a value for each marker "?" of the text, as Treiber::fuehre_aus says. Raises 3251 for a driver that
  /// has no parameters.
  std::shared_ptr<Recordset> Execute(const QString& text, const std::vector<Wert>& werte);
  /// Gives up the statement that another thread has in Execute, as Treiber::gib_auf says. From any thread, as long as
  /// the connection is neither opened nor closed meanwhile.
  void Cancel() noexcept;

 private:
  QString verbindungszeichenfolge_;
  std::int32_t cursor_Ort_ = adUseServer;
  std::unique_ptr<Treiber> treiber_;
  bool eigener_Treiber_ = false;
};

}  // namespace adodb
