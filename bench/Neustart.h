#pragma once

#include <sys/prctl.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <csignal>

#include "bench/Messung.h"

/// The same work in a new process of this program, which remembers nothing but what lies in the cache folder.
namespace neustart {

/// Its first argument, by which the program knows that it is the new process.
inline constexpr const char* Zeichen = "--lauf";

/// Set by the handler of a benchmark that must clean up when it is interrupted.
inline volatile std::sig_atomic_t unterbrochen = 0;

/// Runs this program with `argumente` behind the sign and `umgebung` ("NAME=value") added to its surroundings; gives
/// the numbers that it says. It ends with this process, however that ends.
inline QList<double> starte(const QStringList& argumente, const QStringList& umgebung = {}) {
  QProcess prozess;
  QProcessEnvironment gesamt = QProcessEnvironment::systemEnvironment();
  for (const QString& e : umgebung) gesamt.insert(e.section(u'=', 0, 0), e.section(u'=', 1));
  prozess.setProcessEnvironment(gesamt);
  prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  prozess.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
  prozess.start(QCoreApplication::applicationFilePath(), QStringList{QString::fromLatin1(Zeichen)} + argumente);
  constexpr int Takt_ms = 100;
  while (!prozess.waitForFinished(Takt_ms) && prozess.state() != QProcess::NotRunning)
    messung::verlange(unterbrochen == 0, "interrupted");
  messung::verlange(prozess.exitStatus() == QProcess::NormalExit && prozess.exitCode() == 0, "the new process failed");
  QList<double> zahlen;
  for (const QByteArray& wort : prozess.readAllStandardOutput().simplified().split(' ')) zahlen.append(wort.toDouble());
  return zahlen;
}

}  // namespace neustart
