#include "store/BasZuordnungen.h"

#include <deque>
#include <mutex>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/host/Meldeweg.h"

namespace BasZuordnungen {
namespace {

constexpr QStringView Modul = u"basZuordnungen";

/// What one thread writes through.
struct Schreibzugang {
  std::shared_ptr<adodb::Connection> verbindung;
  std::shared_ptr<adodb::Command> befehl;
};

/// Every thread's access stays in this list, which nobody takes down: the end of a thread or of the process closes
/// nothing.
Schreibzugang* neuer_Zugang() {
  static std::mutex schutz;
  static auto* const Alle = new std::deque<Schreibzugang>;
  const std::lock_guard halten(schutz);
  return &Alle->emplace_back();
}

Schreibzugang& zugang() {
  thread_local Schreibzugang* const Dieser = neuer_Zugang();
  return *Dieser;
}

}  // namespace

std::shared_ptr<adodb::Connection>& gConnection() {
  return zugang().verbindung;
}

std::shared_ptr<adodb::Command>& gCommand() {
  return zugang().befehl;
}

std::shared_ptr<adodb::Connection> oeffne_Verbindung(const QString& pConnectstring) {
  auto verbindung = std::make_shared<adodb::Connection>();
  fehler::still_enden([&] {
    verbindung->ConnectionString(pConnectstring);
    verbindung->CursorLocation(adodb::adUseClient);
    verbindung->Open({}, {}, {}, -1);
  });
  return verbindung;
}

bool Prüfe_Connection(const QString& pConnectstring) {
  return fehler::gemeldet(Modul, u"Prüfe_Connection", [&] {
    if (!gConnection()) gConnection() = oeffne_Verbindung(pConnectstring);
    if (!gCommand()) gCommand() = std::make_shared<adodb::Command>();
    return true;
  });
}

void verwirf_Verbindung() noexcept {
  fehler::Weiter weiter;
  const std::shared_ptr<adodb::Connection> alte = std::exchange(gConnection(), nullptr);
  gCommand().reset();
  if (alte) weiter([&] { alte->Close(); });
}

bool CmdSql(const QString& pSql, const QString& pConnectstring, bool MitMeldung) {
  const auto melden = [&](const Laufzeitfehler& f) {
    if (MitMeldung) fehler::melde(Modul, u"CmdSql", f);
  };
  return fehler::melden_und_enden(melden, [&] {
    if (!Prüfe_Connection(pConnectstring)) return false;
    adodb::Command& befehl = *gCommand();
    befehl.ActiveConnection(gConnection());
    befehl.CommandText(pSql);
    befehl.CommandType(adodb::adCmdText);
    befehl.CommandTimeout(0);
    befehl.Execute(-1);
    return true;
  });
}

}  // namespace BasZuordnungen
