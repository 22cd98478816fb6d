#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QSet>
#include <QString>
#include <QStringList>
#include <memory>
#include <utility>

#include "tests/support/Umgebung.h"

/// A firm's table and picture tree, worked on by `kvobild`, and looked at from where the tree really lies: with a share
/// the desk's way there is another one than ours.
class Ablage {
 public:
  Ablage();

  /// The tree's own place.
  QString baum() const { return ordner_.pfad(QStringLiteral("baum")); }
  /// A picture of its own bytes that waits to be attached; with `gedreht` it is one to be set upright.
  QString wartendes(const QString& name, bool gedreht = false);
  QString pfad(const QString& name) const { return ordner_.pfad(name); }

  /// One more content that a whole file may have.
  void erlaube(const QByteArray& inhalt) { ganze_.insert(inhalt); }

  /// Begins a command at a desk that reaches the tree at `baum`; record 1, folder "Belege\1".
  std::unique_ptr<QProcess> beginne(const QString& baum, const QString& befehl, const QStringList& argumente) const;
  /// False where it hangs.
  static bool endet(QProcess& prozess);
  /// The same to its end. Gives the exit code.
  int fuehre(const QString& baum, const QString& befehl, const QStringList& argumente) const;
  /// What it said on its standard error.
  const QString& gesagt() const noexcept { return gesagt_; }

  /// The record's rows, as a desk at the tree itself sees them.
  QList<QJsonObject> zeilen() const;
  /// Names of rows whose file or text is missing or is not whole, and of files in the tree that are no whole picture or
  /// text.
  QStringList schlechte() const;
  /// All files of the tree but the hidden ones that a write in progress has; relative.
  QStringList dateien() const;
  /// Those hidden ones.
  QStringList reste() const;
  /// Puts a whole picture into the tree that no row names.
  void schreibe_freies(const QString& relativ);
  /// What clearings have put beside the tree.
  QStringList weggelegte() const;
  QByteArray inhalt(const QString& relativ) const { return ordner_.lies(QStringLiteral("baum/") + relativ); }

  /// The table's file.
  QString datenbank() const { return ordner_.pfad(QStringLiteral("betrieb.db")); }

 private:
  bool ist_ganz(const QString& relativ) const;
  QStringList alle_Dateien() const;

  Testordner ordner_;
  /// Every content that a whole file may have.
  QSet<QByteArray> ganze_;
  /// Size and time of the files that were whole when they were read.
  mutable QHash<QString, std::pair<qint64, QDateTime>> gesehen_;
  mutable QString gesagt_;
};
