#include "store/BasZuordnungen.h"

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/host/KVOCore.h"

using namespace Qt::Literals::StringLiterals;

namespace BasZuordnungen {
namespace {

void melde(const QString& prozedur, const Laufzeitfehler& fehler) {
  KVOCore::aktuell().FehlerMelden(u"basZuordnungen"_s, prozedur, fehler.Nummer(), fehler.Beschreibung(), true);
}

}  // namespace

std::shared_ptr<adodb::Connection>& gConnection() {
  thread_local auto* verbindung = new std::shared_ptr<adodb::Connection>;
  return *verbindung;
}

std::shared_ptr<adodb::Command>& gCommand() {
  thread_local auto* befehl = new std::shared_ptr<adodb::Command>;
  return *befehl;
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
  return fehler::melden_und_enden([](const Laufzeitfehler& f) { melde(u"Prüfe_Connection"_s, f); },
                                  [&] {
                                    if (!gConnection()) gConnection() = oeffne_Verbindung(pConnectstring);
                                    if (!gCommand()) gCommand() = std::make_shared<adodb::Command>();
                                    return true;
                                  });
}

bool CmdSql(const QString& pSql, const QString& pConnectstring, bool MitMeldung) {
  const auto melden = [&](const Laufzeitfehler& f) {
    if (MitMeldung) melde(u"CmdSql"_s, f);
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
