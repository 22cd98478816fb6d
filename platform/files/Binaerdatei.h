#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/files/Dateien.h"

/// A file that is read at any position. Closed at the end of its life.
class Binaerdatei {
 public:
  Binaerdatei() = default;
  ~Binaerdatei() { schliesse(); }
  Q_DISABLE_COPY_MOVE(Binaerdatei)

  /// Opens for reading and writing and creates the file when it is missing; where writing is not allowed it falls back
  /// to reading. Raises 75 for a folder, 70 without read right, 76 when the folder above is missing. The length is
  /// taken once, here. Anything but a regular file (a FIFO, a device) raises 75 and never waits.
  void oeffne_Binaer(const QString& pfad);
  /// Opens for reading only. Raises 53 when missing, otherwise as above.
  void oeffne_lesend(const QString& pfad);
  /// The same by a path of this machine, exact in case; the path map is not asked.
  void oeffne_Ort(const QByteArray& ort);
  void schliesse() noexcept;

  /// Length in bytes at the time of opening.
  std::int64_t laenge() const noexcept { return laenge_; }
  /// The state of the opened file now, whatever its name leads to. Raises 57.
  dateien::Kennung kennung() const;
  /// Fills `ziel` from `position` on and tells how many bytes there were; fewer only at the end. Raises 57.
  std::size_t lies(std::int64_t position, std::span<std::byte> ziel) const;

 private:
  void oeffne(const QString& pfad, int art);
  void uebernimm(int deskriptor);

  int deskriptor_ = -1;
  std::int64_t laenge_ = 0;
};
