#pragma once

#include <QString>
#include <memory>

#include "platform/adodb/Connection.h"
#include "platform/basic/kvo_export.h"

/// The host's application object, which the dialogs hand on to the host's own components.
class KVO_EXPORT Anwendungsobjekt {
 public:
  virtual ~Anwendungsobjekt();
  virtual QString ConnectStringDB() const = 0;
  virtual std::shared_ptr<adodb::Connection> ConnectionDB() const = 0;
};
