#pragma once

#include <QByteArray>
#include <QString>

/// A new content that takes a file's place, all of it or nothing: at each moment, a power cut included, the name stands
/// for the whole old content or the whole new one.
///
/// The new content lies beside the file under "_" and its name; where that is taken by a file of somebody's, further
/// underscores go in front. Until it is complete it has no name at all, where the file system can hold such files. A
/// content that did not take the file's place is gone at the end of this object's life.
class Ersatzdatei {
 public:
  /// The time stamp of the new content.
  enum class Zeit { Jetzt, Behalten };

  /// For the file of that path. Nothing is touched yet. Raises 53 when it is missing, 75 for anything but a file.
  /// Behind a link the file itself is meant.
  explicit Ersatzdatei(const QString& pfad);
  ~Ersatzdatei();
  Q_DISABLE_COPY_MOVE(Ersatzdatei)

  /// Writes the new content and brings it to the disk; with owner (as far as this user may), rights and extended
  /// attributes of the file. Once only. Raises 61 for a full disk, 70 or 75 without the right to write in the folder,
  /// 57 for any other failure of the disk.
  void schreibe(const QByteArray& bytes, Zeit zeit = Zeit::Jetzt);
  /// Puts the content in the file's place, with one rename where the file system can do that. A read-only file raises
  /// 70 unless `auch_schreibgeschuetzte`, a missing one 53; then everything stays as it was.
  void tausche(bool auch_schreibgeschuetzte = false);

 private:
  void benenne(int deskriptor);
  int oeffne_mit_Namen();

  QByteArray ort_;
  QByteArray name_;  ///< of the new content; empty while it has none
};
