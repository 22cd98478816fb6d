#include "platform/adodb/Command.h"

#include <utility>

#include "platform/adodb/Adofehler.h"

namespace adodb {

void Command::ActiveConnection(std::shared_ptr<Connection> verbindung) {
  if (verbindung && verbindung->State() != adStateOpen) throw adofehler(adErrInvalidConnection);
  verbindung_ = std::move(verbindung);
}

void Command::CommandType(std::int32_t wert) {
  if (wert != adCmdText) throw adofehler(adErrInvalidArgument);
  art_ = wert;
}

std::shared_ptr<Recordset> Command::Execute(std::int32_t options) {
  if (!verbindung_ || verbindung_->State() != adStateOpen) throw adofehler(adErrInvalidConnection);
  return verbindung_->Execute(text_, options);
}

}  // namespace adodb
