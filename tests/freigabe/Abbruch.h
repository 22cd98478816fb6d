#pragma once

#include <QString>
#include <map>
#include <random>

#include "tests/freigabe/Ablage.h"

/// Kills `kvobild` at moments drawn from the time that each command takes, and looks at what is left after each.
class Abbruch {
 public:
  /// `baum` is the tree as the desk reaches it.
  Abbruch(Ablage& ablage, QString baum, unsigned saat);

  /// One command, killed. False where it had ended before.
  bool erschlage_einen();

  int erschlagene() const noexcept { return erschlagene_; }
  /// Hidden files that were there after a kill, added up, by command.
  const std::map<QString, int>& reste() const noexcept { return reste_; }
  /// What was wrong; see Ablage::schlechte.
  const QStringList& schlechte() const noexcept { return schlechte_; }

 private:
  struct Auftrag {
    QString befehl;
    QStringList argumente;
  };
  Auftrag ziehe();

  Ablage& ablage_;
  QString baum_;
  std::mt19937 zufall_;
  std::map<QString, double> dauer_ms_;
  std::map<QString, int> reste_;
  QStringList schlechte_;
  int erschlagene_ = 0;
  int nummer_ = 0;
};
