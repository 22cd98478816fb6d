#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>
#include <QStringList>

/// What a process left behind.
struct Prozess {
  int code = -1;
  QString ausgabe;
  QString fehlerausgabe;
};

/// Runs a program to its end, with variables of the environment besides those of the tests. A program that can't be
/// started has the code -1.
inline Prozess starte(const QString& programm, const QStringList& argumente,
    const QProcessEnvironment& umgebung = QProcessEnvironment::systemEnvironment()) {
  QProcess prozess;
  prozess.setProcessEnvironment(umgebung);
  prozess.setStandardInputFile(QProcess::nullDevice());
  prozess.start(programm, argumente);
  const bool fertig = prozess.waitForFinished(900'000);
  if (!fertig) prozess.kill();
  const bool normal = fertig && prozess.exitStatus() == QProcess::NormalExit;
  return {normal ? prozess.exitCode() : -1, QString::fromUtf8(prozess.readAllStandardOutput()),
      QString::fromUtf8(prozess.readAllStandardError())};
}

/// The end of a long output, where the reason stands.
inline std::string ende(const Prozess& lauf) {
  return (lauf.ausgabe.right(4000) + lauf.fehlerausgabe.right(4000)).toStdString();
}
