#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QList>
#include <atomic>
#include <cstdint>
#include <list>
#include <mutex>
#include <optional>

#include "platform/files/Dateien.h"
#include "platform/gdiplus/bild/Bildkopf.h"

/// Keeps headers and reduced pixels of unchanged files, so that a picture seen before is shown without reading its
/// file. The sum of the pixels is bounded, and a header without pixels counts as Kopfgewicht; the files used longest
/// ago go first. Whole pictures and files' bytes are never kept.
class Bildspeicher {
 public:
  struct Schluessel {
    QByteArray pfad;  ///< of this machine
    dateien::Kennung kennung;
    /// When the file was looked at, in nanoseconds since 1970 by the clock of the desktop's cache.
    std::int64_t gesehen_ns = 0;
  };
  struct Eintrag {
    Bildkopf kopf;
    QList<QImage> reduzierte;  ///< newest first; empty where only the header is known
  };
  static constexpr qint64 Grenze = qint64{64} * 1024 * 1024;
  /// A file changed so recently may change again without its time showing it (FAT counts in steps of two seconds).
  static constexpr std::int64_t Ruhezeit_ns = 3'000'000'000;
  static constexpr int Groessen_je_Datei = 4;
  /// Bytes that an entry without pixels counts as: path, key and the tables' own share, generously.
  static constexpr qint64 Kopfgewicht = 1024;

  static Bildspeicher& aktuell();

  /// The key of a file, or none when it is missing or was changed too recently to be told from its next state.
  std::optional<Schluessel> schluessel(const QString& pfad) const;
  /// The same of a file whose place on this machine and whose state are known.
  std::optional<Schluessel> schluessel(const QByteArray& ort, const dateien::Kennung& kennung) const;
  std::optional<Eintrag> suche(const Schluessel& schluessel);
  /// Takes in a header; pixels of the same state stay, what was kept of another state of the file goes.
  void merke_Kopf(const Schluessel& schluessel, const Bildkopf& kopf);
  /// Takes in reduced pixels; what was kept of another state of the same file goes. A picture of more than a quarter of
  /// the bound is not kept.
  void merke(const Schluessel& schluessel, const Bildkopf& kopf, const QImage& reduziert);

  /// Pixels of that size are not too many to be kept.
  bool haelt(QSize groesse) const;

  /// Bytes of all pixels kept, and the weight of the headers without.
  qint64 belegt() const;
  /// Forgets everything; benchmarks measure the first showing with it.
  void leere();
  /// Another bound in bytes; takes effect at once.
  void grenze(qint64 bytes);
  /// The clock, in nanoseconds since 1970; none puts the system's back. Tests let time pass with it.
  using Uhr = std::int64_t (*)();
  void uhr(Uhr andere);

 private:
  struct Fach {
    QByteArray pfad;
    dateien::Kennung kennung;
    Eintrag eintrag;
    qint64 bytes = 0;
  };
  using Faecher = std::list<Fach>;
  static std::int64_t systemuhr();
  Fach* finde(const Schluessel& schluessel);
  Fach& fach_fuer(const Schluessel& schluessel, const Bildkopf& kopf);
  void zaehle(Fach& fach, qint64 bytes) noexcept;
  void entferne(Faecher::iterator fach);
  void raeume_auf();

  mutable std::mutex sperre_;
  Faecher faecher_;  ///< used last comes first
  QHash<QByteArray, Faecher::iterator> nach_Pfad_;
  qint64 belegt_ = 0;
  qint64 grenze_ = Grenze;
  std::atomic<Uhr> uhr_ = systemuhr;
};
