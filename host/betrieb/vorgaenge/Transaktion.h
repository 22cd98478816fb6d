#pragma once

#include <QString>

#include "host/betrieb/Ausgang.h"
#include "platform/adodb/Connection.h"

/// A transaction of the embedded database that writes. It waits for another desk's at its beginning, not in its middle,
/// and takes everything back at the end of its life unless it was finished.
class Schreibtransaktion {
 public:
  explicit Schreibtransaktion(adodb::Connection& verbindung) : verbindung_(verbindung) {
    verbindung_.Execute(QStringLiteral("BEGIN IMMEDIATE"));
  }
  ~Schreibtransaktion() {
    // A failure may have ended it.
    if (offen_) gelingt([this] { verbindung_.Execute(QStringLiteral("ROLLBACK")); });
  }
  Q_DISABLE_COPY_MOVE(Schreibtransaktion)

  void beende() {
    verbindung_.Execute(QStringLiteral("COMMIT"));
    offen_ = false;
  }

 private:
  adodb::Connection& verbindung_;
  bool offen_ = true;
};
