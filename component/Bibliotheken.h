#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "platform/basic/kvo_export.h"

/// What this process runs on, for a host's words about itself and for whoever looks for a failure.
namespace bibliotheken {

struct Bibliothek {
  QString name;
  /// As the library tells it now; of one that can't be asked, what it was built with.
  QString fassung;
};

/// The libraries that the component uses.
KVO_EXPORT QList<Bibliothek> benutzte();

/// The names of the ODBC drivers that are installed, as unixODBC knows them.
KVO_EXPORT QStringList odbc_Treiber();

}  // namespace bibliotheken
