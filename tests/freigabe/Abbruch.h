#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <random>

#include "tests/freigabe/Ablage.h"

/// Number and seed of the kills, from the environment or `sonst`.
int abbrueche(int sonst);
unsigned abbruchsaat(unsigned sonst);

/// Kills `kvobild` at moments drawn from the time that each command takes, and looks at what is left after each.
class Abbruch {
 public:
  /// `baum` is the tree as the desk reaches it. With a neighbour's way to the same tree that one attaches pictures all
  /// the while; which of the two is killed is drawn.
  Abbruch(Ablage& ablage, QString baum, unsigned saat, QString nachbar = {});

  /// One command, killed. False where it had ended before.
  bool erschlage_einen();

  int erschlagene() const noexcept { return erschlagene_; }
  /// The hidden files that the kills left, by command.
  const std::map<QString, QStringList>& reste() const noexcept { return reste_; }
  /// What was wrong; see Ablage::schlechte.
  const QStringList& schlechte() const noexcept { return schlechte_; }

 private:
  struct Auftrag {
    QString befehl;
    QStringList argumente;
  };
  Auftrag ziehe();
  /// Name and extension of one of the record's pictures.
  QString ziehe_Bild();
  Auftrag ziehe_Zuordnen();
  std::unique_ptr<QProcess> beginne_nebenan();
  void warte_auf(QProcess& nebenan);
  void merke_Reste(const QString& befehl);

  Ablage& ablage_;
  QString baum_;
  QString nachbar_;
  bool zweite_Namen_;
  std::mt19937 zufall_;
  std::map<QString, double> dauer_ms_;
  std::map<QString, QStringList> reste_;
  QSet<QString> bekannte_Reste_;
  QStringList schlechte_;
  int erschlagene_ = 0;
  int nummer_ = 0;
};
