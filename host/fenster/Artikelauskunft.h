#pragma once

#include "platform/host/Auskunft.h"

/// The look-up over the program's own article table. It knows the list "Artikel"; any other name raises 5.
class Artikelauskunft final : public clsAuskunft {
 public:
  std::int32_t Anzeige_Auskunft(const QString& pName, const QString& pZusatz, const QString& pAppName,
      const QString& pUser, const QString& pExeDir, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& pConnection, Auskunftsempfaenger& pEmpfaenger,
      const QString& pReportDBTemplateDir, const QString& pDBName) override;
};
