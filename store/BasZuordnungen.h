#pragma once

#include <QString>
#include <memory>

#include "platform/adodb/Command.h"
#include "platform/adodb/Connection.h"

/// The store's own writing connection. It is opened once for each thread, from the connect string of the first use, and
/// stays open to the end of the process, unless it is given up after a failure.
namespace BasZuordnungen {

/// The thread's writing connection and its command; none before the first use. Never destroyed: a connection that is
/// closed while the process ends would meet libraries that are gone already.
std::shared_ptr<adodb::Connection>& gConnection();
std::shared_ptr<adodb::Command>& gCommand();

/// A new connection on the client-side cursor, opened from the connect string. A failure to open is passed over: the
/// connection then stays closed, and its use tells. None when not even the object could be made.
std::shared_ptr<adodb::Connection> oeffne_Verbindung(const QString& pConnectstring);

/// Makes sure that the two exist. One that is there is neither tested nor opened anew; a failure is reported.
bool Prüfe_Connection(const QString& pConnectstring);

/// Gives the thread's writing connection up, with its command, and closes it where it still can be closed: the next
/// statement opens one anew. Never raises.
void verwirf_Verbindung() noexcept;

/// Runs one statement that returns no rows on the writing connection. True on success; a failure is reported when
/// `MitMeldung` is True, and never raised.
bool CmdSql(const QString& pSql, const QString& pConnectstring, bool MitMeldung);

}  // namespace BasZuordnungen
