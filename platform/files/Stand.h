#pragma once

#include <sys/stat.h>

#include <QByteArray>
#include <QString>

#include "platform/files/Dateien.h"

/// What the files of this folder ask of a path of the table most: where it leads, and what stands there.
namespace stand {

struct Stand {
  QByteArray ort;  ///< of this machine
  struct stat info {};
  int fehler = 0;  ///< errno of the look; 0: it is there, and `info` holds

  bool vorhanden() const noexcept { return fehler == 0; }
  bool ist_Ordner() const noexcept { return vorhanden() && S_ISDIR(info.st_mode); }
  bool ist_Datei() const noexcept { return vorhanden() && !S_ISDIR(info.st_mode); }
};

/// Resolves the path as Pfadkarte::maschinenpfad and looks behind links. A path that is there exactly as asked for, as
/// nearly all are, costs one look. Raises what maschinenpfad raises; a missing file is none of that.
Stand von(const QString& pfad);

dateien::Kennung kennung(const struct stat& info);

}  // namespace stand
