#pragma once

#include "platform/adodb/Connection.h"

namespace adodb {

/// A statement text that runs on a connection.
class Command {
 public:
  const std::shared_ptr<Connection>& ActiveConnection() const noexcept { return verbindung_; }
  /// A connection that is not open raises 3709; the former one then stays. None takes the former one away.
  void ActiveConnection(std::shared_ptr<Connection> verbindung);
  const QString& CommandText() const noexcept { return text_; }
  void CommandText(const QString& wert) { text_ = wert; }
  std::int32_t CommandType() const noexcept { return art_; }
  /// Only adCmdText is known; another kind raises 3001.
  void CommandType(std::int32_t wert);
  /// Seconds; 0 waits without limit, the only value in use.
  std::int32_t CommandTimeout() const noexcept { return zeitgrenze_; }
  void CommandTimeout(std::int32_t wert) noexcept { zeitgrenze_ = wert; }

  /// Runs the text. Raises 3709 without an open connection, otherwise as Connection::Execute.
  std::shared_ptr<Recordset> Execute(std::int32_t options = -1);

 private:
  std::shared_ptr<Connection> verbindung_;
  QString text_;
  std::int32_t art_ = adCmdText;
  std::int32_t zeitgrenze_ = 30;
};

}  // namespace adodb
