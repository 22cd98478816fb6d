#pragma once

#include "platform/host/Komponenten.h"

/// The file functions of the core component for a program whose host brings none. To be used on the GUI thread.
class Ordnerwahl final : public KVFileFunctions {
 public:
  /// Shows the folders of this machine, those that the path map knows beside them, modally to the active window.
  QString SelectFolder(const QString& Titel) override;
};
