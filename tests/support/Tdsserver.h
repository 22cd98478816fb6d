#pragma once

#include <QJsonArray>
#include <QProcess>
#include <QString>
#include <QStringList>

/// The TDS server of tests/tds as a process of its own. Ends with the object.
class Tdsserver {
 public:
  /// Database behind the server.
  enum class Maschine { Sqlite, H2 };
  /// Why the server or FreeTDS through unixODBC cannot be used here; empty where they can.
  static QString hindernis(Maschine maschine = Maschine::Sqlite);

  Tdsserver(const QString& benutzer, const QString& kennwort, Maschine maschine = Maschine::Sqlite,
      const QStringList& schalter = {});
  ~Tdsserver();
  Tdsserver(const Tdsserver&) = delete;
  Tdsserver& operator=(const Tdsserver&) = delete;

  bool laeuft() const { return port_ > 0; }
  int port() const { return port_; }
  /// One line of the control channel; gives what stands behind "ok" and fails the test without it.
  QString steuere(const QString& zeile);
  /// The batches that arrived since `steuere("protokoll-leeren")`, letter by letter.
  QStringList stapel();
  /// All that clients had the server do since then, but for logins: a batch as its text, a statement with values as its
  /// text with "?" for each, anything else (a procedure's call, a transaction, a cancellation) as its kind and name in
  /// angle brackets.
  QStringList angekommen();
  /// The values of each statement that came with some.
  QList<QJsonArray> gebundene();

  /// Makes the certificates of tests/tds/zertifikate.py in a folder; why not, or nothing.
  static QString mache_Zertifikate(const QString& ordner);
  /// The bytes of all links since `steuere("mitschnitt-leeren")`, as they crossed the wire; the server was begun with
  /// "--mitschnitt".
  struct Mitschnitt {
    QByteArray ein;
    QByteArray aus;
    bool enthaelt(const QString& text) const;
  };
  Mitschnitt mitschnitt();

 private:
  QJsonArray protokoll();

  QProcess prozess_;
  int port_ = 0;
  int leitung_ = -1;
};
