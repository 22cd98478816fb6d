#pragma once

#include <QString>
#include <memory>

#include "platform/host/Oberflaeche.h"

/// Stands in front of the program's message boxes for as long as it lives and keeps what the last one said.
class Mitschrift {
 public:
  Mitschrift();
  ~Mitschrift();
  Q_DISABLE_COPY_MOVE(Mitschrift)

  /// In one line; empty until a box was shown.
  QString letzte() const;
  /// The last box reported a failure that nothing can be done about.
  bool kritisch() const;

 private:
  class Fenster;
  std::shared_ptr<Fenster> fenster_;
  std::shared_ptr<oberflaeche::Meldungsfenster> vorher_;
};
