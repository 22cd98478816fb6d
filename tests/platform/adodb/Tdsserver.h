#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// The TDS server of tests/tds as a process of its own, with SQLite behind it. Ends with the object.
class Tdsserver {
 public:
  /// Why FreeTDS cannot be used through unixODBC here; empty where it can.
  static QString hindernis();

  Tdsserver(const QString& benutzer, const QString& kennwort);
  ~Tdsserver();
  Tdsserver(const Tdsserver&) = delete;
  Tdsserver& operator=(const Tdsserver&) = delete;

  bool laeuft() const { return port_ > 0; }
  int port() const { return port_; }
  /// One line of the control channel; gives what stands behind "ok" and fails the test without it.
  QString steuere(const QString& zeile);
  /// The batches that arrived since `steuere("protokoll-leeren")`, letter by letter.
  QStringList stapel();

 private:
  QProcess prozess_;
  int port_ = 0;
  int leitung_ = -1;
};
