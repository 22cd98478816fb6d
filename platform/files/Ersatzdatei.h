#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "platform/files/Schreiben.h"

/// A new content that takes a file's place, all of it or nothing: at each moment, a power cut included, the name stands
/// for the whole old content or the whole new one.
///
/// Until it is complete the new content has no name at all where the file system can hold such files; otherwise, and in
/// the moment of the exchange, it stands beside the file under a hidden name that nobody takes for a picture. A content
/// that did not take the file's place is gone at the end of this object's life, or with the next write into the folder
/// when the process ended before.
class Ersatzdatei {
 public:
  /// The time stamp of the new content.
  enum class Zeit { Jetzt, Behalten };

  /// For the file of that path. Nothing is touched yet. Raises 53 when it is missing, 75 for anything but a file.
  /// Behind a link the file itself is meant.
  explicit Ersatzdatei(const QString& pfad);

  /// Writes the new content and brings it to the disk; with owner, rights and extended attributes of the file, as far
  /// as this user and the file system may. Once only. Raises 61 for a full disk, 70 or 75 without the right to write in
  /// the folder, 57 for any other failure of the disk.
  void schreibe(const QByteArray& bytes, Zeit zeit = Zeit::Jetzt);
  /// Puts the content in the file's place, with one rename where the file system can do that. A read-only file raises
  /// 70 unless `auch_schreibgeschuetzte`, a missing one 53; then everything stays as it was.
  void tausche(bool auch_schreibgeschuetzte = false);

 private:
  QByteArray ort_;
  std::optional<schreiben::Nebendatei> neue_;
};
