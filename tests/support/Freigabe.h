#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <csignal>
#include <functional>
#include <optional>
#include <utility>

// A share that this machine gives itself: the server and the mount are Debian's. What fails is a std::runtime_error.

/// A program that runs beside this one until this object goes. It gets SIGTERM as well when this program dies, and its
/// standard input ends.
class Dienst {
 public:
  Dienst(const QString& programm, const QStringList& argumente, const QString& heim);
  Dienst(const Dienst&) = delete;
  Dienst& operator=(const Dienst&) = delete;
  ~Dienst();
  bool laeuft() { return !prozess_.waitForFinished(0) && prozess_.state() == QProcess::Running; }
  /// Fails with `was` when the program ends before, or does not get ready.
  void warte_bis(const char* was, const std::function<bool()>& bereit);
  /// To the program and to all that it has made.
  void sende(int signal);
  void erschlage();

  /// Ends the waiting too, where it says so.
  inline static std::function<bool()> unterbrochen;

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
  /// A mount stands on a device of its own.
  static bool ist_eingehaengt(const QString& ordner);

 private:
  QString ordner_;
};

/// A Samba server for one folder, without a password, on a free port of 127.0.0.1. Its own files lie in a folder that
/// ends with this object.
class Freigabe {
 public:
  enum class Art { NurLesen, Schreiben };
  Freigabe(QString ordner, Art art);

  /// What this machine lacks for a share; empty where nothing does.
  static QString was_fehlt();
  int port() const noexcept { return port_; }
  /// The server is gone in the middle of whatever it is at.
  void erschlage();
  /// It is there again.
  void starte();
  /// It answers nobody until it goes on.
  void halte_an() { server_->sende(SIGSTOP); }
  void lass_weiter() { server_->sende(SIGCONT); }

 private:
  void schreibe_Einstellungen(Art art) const;

  QString ordner_;
  QTemporaryDir heim_;
  int port_;
  std::optional<Dienst> server_;
};

/// That share, mounted with smbnetfs: a desk's own.
class Einhaengung {
 public:
  explicit Einhaengung(const Freigabe& freigabe, bool nur_lesen = false);
  /// The shared folder, over the share.
  QString ordner() const;

 private:
  QTemporaryDir heim_;
  int port_;
  Einhaengepunkt eingehaengt_;
  std::optional<Dienst> netz_;
};
