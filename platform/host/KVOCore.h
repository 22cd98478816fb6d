#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/basic/kvo_export.h"

/// The host's core component, as far as the parts without windows need it. One instance serves the whole process.
class KVO_EXPORT KVOCore {
 public:
  virtual ~KVOCore();

  /// The central error report: class or form name, procedure name, the failure's number and words, and whether the
  /// user is to be told.
  virtual void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer,
                            const QString& beschreibung, bool mitMeldung) = 0;

  /// The instance in force. Until a host sets one, reports go to standard error, one line each.
  static KVOCore& aktuell();
  /// Puts another instance in force and hands back the one before; none puts the default back.
  static std::shared_ptr<KVOCore> setze(std::shared_ptr<KVOCore> core);
};
