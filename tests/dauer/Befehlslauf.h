#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <map>

/// A desk of its own, where pictures go through the commands of `kvobild` one after the other, all in this process.
class Befehlslauf {
 public:
  /// Table and tree are made in `ordner`.
  explicit Befehlslauf(QString ordner);

  /// Shows, turns, draws and attaches the file of that content; `zug` chooses what the commands leave open. After every
  /// twentieth a report is made, the pictures are handed out, listed and removed again. Gives what was wrong.
  QStringList pruefe(const QString& bild, const QByteArray& inhalt, std::uint64_t zug);

  struct Zaehler {
    int gelaufen = 0;
    int erledigt = 0;
    double laengste_s = 0;
    double zusammen_s = 0;
  };
  /// By command. The time is the processor's, so that other work on the machine makes nothing slow.
  const std::map<QString, Zaehler>& zaehler() const noexcept { return zaehler_; }

 private:
  bool laufe(const QStringList& worte);
  void zeige(const QString& bild, std::uint64_t zug);
  void drehe(const QString& bild, std::uint64_t zug);
  void zeichne(const QString& bild);
  void ordne_zu(const QString& bild, std::uint64_t zug);
  void schliesse_Runde();
  QStringList satz(const QString& befehl) const;
  QString pfad(const QString& name) const { return ordner_ + u'/' + name; }

  QString ordner_;
  std::map<QString, Zaehler> zaehler_;
  QStringList maengel_;
  double erlaubt_s_ = 60;
  double megapixel_der_Runde_ = 0;
  int zugeordnete_ = 0;
  int gepruefte_ = 0;
};
