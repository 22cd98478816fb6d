#pragma once

#include <QHash>
#include <QString>

#include "platform/host/Komponenten.h"

/// Makes the program's look-up and article managers known to the component for as long as it lives.
class Wirtskomponenten {
 public:
  Wirtskomponenten();
  ~Wirtskomponenten();
  Q_DISABLE_COPY_MOVE(Wirtskomponenten)

 private:
  QHash<QString, komponenten::Fabrik> vorige_;
};
