#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <optional>

#include "bench/freigabe/Zaehlerstand.h"

/// A program that runs beside the benchmark until this object goes. It gets SIGTERM as well when the benchmark dies,
/// and its standard input ends.
class Dienst {
 public:
  Dienst(const QString& programm, const QStringList& argumente, const QString& heim);
  Dienst(const Dienst&) = delete;
  Dienst& operator=(const Dienst&) = delete;
  ~Dienst();
  bool laeuft() { return !prozess_.waitForFinished(0) && prozess_.state() == QProcess::Running; }

 private:
  QProcess prozess_;
};

/// A mount that a program holds; unmounted for it where it does not do that itself.
class Einhaengepunkt {
 public:
  explicit Einhaengepunkt(QString ordner) : ordner_(std::move(ordner)) {}
  Einhaengepunkt(const Einhaengepunkt&) = delete;
  Einhaengepunkt& operator=(const Einhaengepunkt&) = delete;
  ~Einhaengepunkt();
  const QString& ordner() const { return ordner_; }

 private:
  QString ordner_;
};

/// A Samba server for one folder, read-only and without a password, on a free port of 127.0.0.1, and that share mounted
/// with smbnetfs. All of it lies in a folder of its own and ends with this object.
class Freigabe {
 public:
  Freigabe();
  void starte(const QString& ordner);

  /// What this machine lacks for a share; empty where nothing does.
  static QString was_fehlt();
  /// The shared folder, over the share.
  QString ordner() const;

 private:
  void schreibe_Einstellungen(const QString& ordner) const;

  QTemporaryDir heim_;
  int port_;
  std::optional<Dienst> server_;
  Einhaengepunkt eingehaengt_;
  std::optional<Dienst> netz_;
};

/// The share once more through a pass-through with a delay, which counts.
class Durchgang {
 public:
  explicit Durchgang(const QString& ziel);
  void starte(const QString& quelle, int mikrosekunden);

  /// For another process, which maps it.
  const QString& zaehlerdatei() const { return zaehlerdatei_; }

 private:
  QTemporaryDir heim_;
  QString zaehlerdatei_;
  Einhaengepunkt eingehaengt_;
  std::optional<Dienst> dienst_;
};
