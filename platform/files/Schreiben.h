#pragma once

#include <sys/stat.h>

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

/// Writing a file so that its name never stands for half of it, for the files of this folder only.
namespace schreiben {

/// Writes all bytes to an open file.
void schreibe_alle(int deskriptor, QByteArrayView bytes);

/// A file beside `ziel`, without its name yet. Where the file system can hold such files it has no name at all,
/// otherwise a hidden one (see beiname). Gone at the end of its life unless it took the name.
///
/// A file for a free name gets what its folder gives to new files; one for a file that is there keeps that one's owner,
/// group, rights and extended attributes, all as far as this user and the file system may.
class Nebendatei {
 public:
  /// Makes the file in the target's folder; raises 76 when that is missing, 70 or 75 without the right.
  explicit Nebendatei(const QByteArray& ziel);
  ~Nebendatei();
  Q_DISABLE_COPY_MOVE(Nebendatei)

  void schreibe(const QByteArray& bytes) { schreibe_alle(deskriptor_, bytes); }
  /// Copies all of another open file. Raises 57 where less came than it holds.
  void kopiere_von(int quelle);
  /// Its time stamp will be that one.
  void setze_Zeit(const struct stat& vorbild) { zeit_ = vorbild; }
  /// Brings content and attributes to the disk.
  void sichere();
  /// Gives what is on the disk the name; with `ersetzen` in place of what stands there, otherwise only if the name is
  /// free (58).
  void benenne(bool ersetzen);
  void vollende(bool ersetzen) {
    sichere();
    benenne(ersetzen);
  }

 private:
  int rechte() const;
  void mache_mit_Namen();
  void bekomme_Namen();
  void nimm_freien_Namen(bool ersetzen);
  void ersetze();

  QByteArray ziel_;
  std::optional<struct stat> bisherige_;  ///< what stands at the target
  std::optional<struct stat> zeit_;
  QByteArray name_;  ///< where it stands now; empty while it has no name
  int deskriptor_ = -1;
};

}  // namespace schreiben
