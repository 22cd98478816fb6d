#pragma once

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QString>

#include "bench/Messung.h"

#if __has_include("platform/gdiplus/vorlauf/Vorlauf.h")
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#define KVO_MIT_VORLAUF 1
#else
#define KVO_MIT_VORLAUF 0
#endif
#if __has_include("platform/gdiplus/miniatur/Miniaturablage.h")
#include "platform/gdiplus/miniatur/Miniaturablage.h"
#define KVO_MIT_ABLAGE 1
#else
#define KVO_MIT_ABLAGE 0
#endif

/// What a benchmark switches off to measure the way without: the decoding ahead on other threads, and the thumbnails
/// that outlive the program. Only benchmarks read these variables.
namespace schalter {

inline constexpr bool Mit_Vorlauf = KVO_MIT_VORLAUF == 1;
inline constexpr bool Mit_Ablage = KVO_MIT_ABLAGE == 1;
inline constexpr const char* Vorlauf = "KVO_VORLAUF";
inline constexpr const char* Ablage = "KVO_ABLAGE";

inline void stelle_Vorlauf([[maybe_unused]] bool an) {
#if KVO_MIT_VORLAUF
  bildvorlauf::an(an);
#endif
}

inline void stelle_Ablage([[maybe_unused]] bool an) {
#if KVO_MIT_ABLAGE
  Miniaturablage::aktuell().an(an);
#endif
}

/// Each is on unless its variable says "aus".
inline void richte_ein() {
  stelle_Vorlauf(qgetenv(Vorlauf) != "aus");
  stelle_Ablage(qgetenv(Ablage) != "aus");
}

inline QString cacheordner() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
}

inline int zaehle_Miniaturen() {
  int anzahl = 0;
  for (QDirIterator i(
           cacheordner(), {QStringLiteral("*.png")}, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
       i.hasNext(); i.next())
    ++anzahl;
  return anzahl;
}

/// Thumbnails are written when nothing else is to be done: gives them the time, until for half a second none has come.
inline void warte_auf_Miniaturen() {
  if (!Mit_Ablage || qgetenv(Ablage) == "aus") return;
  constexpr int Ruhe_ms = 500;
  QElapsedTimer ruhe;
  ruhe.start();
  for (int bisher = zaehle_Miniaturen(); !ruhe.hasExpired(Ruhe_ms);) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    const int jetzt = zaehle_Miniaturen();
    if (jetzt != bisher) ruhe.restart();
    bisher = jetzt;
  }
  messung::verlange(zaehle_Miniaturen() > 0, "no thumbnails were kept");
}

/// The folders stay: who writes into them need not make them anew.
inline void leere_Miniaturen() {
  QStringList alle;
  for (QDirIterator i(
           cacheordner(), {QStringLiteral("*.png")}, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
       i.hasNext();)
    alle.append(i.next());
  for (const QString& datei : alle) messung::verlange(QFile::remove(datei), "thumbnail cannot be removed");
}

}  // namespace schalter
