#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/adodb/Connection.h"
#include "platform/basic/kvo_export.h"
#include "platform/host/Komponenten.h"

/// Who opened a look-up and is told what the user picked.
class KVO_EXPORT Auskunftsempfaenger {
 public:
  virtual ~Auskunftsempfaenger();
  /// The user picked a row. `pWert` holds its columns with "|" between them, the key first. Only the part before the
  /// first "|" counts, without the blanks around it. An empty text means that nothing was picked.
  virtual void LA_Doppelclick(const QString& pWert) = 0;
};

/// "KVOListAuskunft.clsAuskunft": the host's look-up, a list from which the user picks a row.
///
/// A new object serves one look-up and is released after it. Whoever opens one lets a failure of creation or of
/// Anzeige_Auskunft go to the central error report; nothing is picked then.
class KVO_EXPORT clsAuskunft : public komponenten::Komponente {
 public:
  ~clsAuskunft() override;
  /// Shows the list modally and returns when it was closed; until then it calls `pEmpfaenger.LA_Doppelclick` when the
  /// user picks a row, as often as that happens. `pEmpfaenger` lives for the length of the call only.
  /// `pName` says which list ("Artikel"); `pZusatz` is always empty. The others are members of the application object,
  /// see there; `pConnection` stays the host's.
  /// The number that it gives means nothing to the caller.
  virtual std::int32_t Anzeige_Auskunft(const QString& pName, const QString& pZusatz, const QString& pAppName,
      const QString& pUser, const QString& pExeDir, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& pConnection, Auskunftsempfaenger& pEmpfaenger,
      const QString& pReportDBTemplateDir, const QString& pDBName) = 0;
};
