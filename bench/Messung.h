#pragma once

#include <QFile>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

#include "bench/Eigener_Cache.h"

/// Measuring two ways of one job side by side: the runs alternate, so that a machine that grows slower or faster hits
/// both, and the median of each counts.
namespace messung {

/// What a benchmark that has started something must end itself, also when it fails.
inline std::function<void()> vor_dem_Ende;

/// A measurement of something that failed is none: says what and ends the program with 2.
inline void verlange(bool erfuellt, const char* was) {
  if (erfuellt) return;
  std::fprintf(stderr, "benchmark: %s\n", was);
  if (vor_dem_Ende) std::exchange(vor_dem_Ende, {})();
  std::exit(2);
}

inline double sekunden(const std::function<void()>& arbeit) {
  const auto beginn = std::chrono::steady_clock::now();
  arbeit();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - beginn).count();
}

inline double median(std::vector<double> werte) {
  std::sort(werte.begin(), werte.end());
  const std::size_t mitte = werte.size() / 2;
  return werte.size() % 2 == 1 ? werte[mitte] : (werte[mitte - 1] + werte[mitte]) / 2;
}

/// A bound was missed in this process.
inline bool verfehlt = false;

inline void erwarte(bool erfuellt) {
  verfehlt = verfehlt || !erfuellt;
}

/// Exit code of a benchmark: 1 after a missed bound.
inline int urteil() {
  return verfehlt ? 1 : 0;
}

inline constexpr double Ohne_Ziel = 0;

/// Prints one line: both medians in milliseconds, their ratio and the ratio aimed at, if any. Gives the ratio.
inline double zeile(const char* name, const std::vector<double>& unser, const std::vector<double>& peer, double ziel) {
  const double a = median(unser);
  const double b = median(peer);
  std::printf("%-58s %10.3f ms %10.3f ms   %6.3f", name, a * 1e3, b * 1e3, a / b);
  if (ziel != Ohne_Ziel) std::printf("  (aim <= %.2f)%s", ziel, a / b <= ziel ? "" : " NO");
  std::printf("\n");
  std::fflush(stdout);
  erwarte(ziel == Ohne_Ziel || a / b <= ziel);
  return a / b;
}

/// Times `unser` against `peer` in `laeufe` alternated runs, after one uncounted run of each.
inline double vergleiche(
    const char* name, int laeufe, double ziel, const std::function<void()>& unser, const std::function<void()>& peer) {
  std::vector<double> a;
  std::vector<double> b;
  unser();
  peer();
  for (int i = 0; i < laeufe; ++i) {
    a.push_back(sekunden(unser));
    b.push_back(sekunden(peer));
  }
  return zeile(name, a, b, ziel);
}

/// Peak of the process's memory in MB.
inline double groesster_Speicher() {
  QFile datei(QStringLiteral("/proc/self/status"));
  if (!datei.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& zeile : datei.readAll().split('\n'))
    if (zeile.startsWith("VmHWM:")) return zeile.mid(6).trimmed().split(' ').first().toDouble() / 1024;
  return 0;
}

}  // namespace messung
