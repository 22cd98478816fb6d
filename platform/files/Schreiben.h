#pragma once

#include <sys/stat.h>

#include <QByteArray>
#include <QByteArrayView>

/// Writing a file so that its name never stands for half of it, for the files of this folder only.
namespace schreiben {

/// Writes all bytes to an open file.
void schreibe_alle(int deskriptor, QByteArrayView bytes);

/// A file beside `ziel`, without its name yet. Gone at the end of its life unless it took the name.
class Nebendatei {
 public:
  /// Makes the file in the target's folder; raises 76 when that is missing, 70 or 75 without the right.
  explicit Nebendatei(const QByteArray& ziel);
  ~Nebendatei();
  Q_DISABLE_COPY_MOVE(Nebendatei)

  int deskriptor() const noexcept { return deskriptor_; }
  void schreibe(const QByteArray& bytes) { schreibe_alle(deskriptor_, bytes); }
  /// Copies all of another open file.
  void kopiere_von(int quelle);
  /// Takes over rights, owner (as far as this user may) and, if told, the time stamp.
  void uebernimm(const struct stat& vorbild, bool zeitstempel);
  /// Brings the content to the disk and gives it the name; with `ersetzen` in place of what stands there, otherwise
  /// only if the name is free (58).
  void vollende(bool ersetzen);

 private:
  QByteArray ziel_;
  QByteArray name_;
  int deskriptor_;
};

/// Renames without ever replacing: an existing target raises 58. False where the target is on another file system.
bool benenne_um(const QByteArray& quelle, const QByteArray& ziel);

}  // namespace schreiben
