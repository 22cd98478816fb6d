#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <utility>

#include "platform/basic/kvo_export.h"

/// A folder that was found: its path as asked for, without a closing separator, and what it held then.
class KVO_EXPORT Folder {
 public:
  const QString& Path() const noexcept { return pfad_; }
  /// Names of the regular files, in the order of their names without regard to case; read anew at each call.
  QStringList Files() const;
  /// Names of the folders, likewise. Linked folders are not among them.
  QStringList SubFolders() const;
  /// Number of everything in the folder, also of what the two lists leave out: linked folders, sockets, names that no
  /// path of the table can mean; not what a process that ended in the middle of a write left.
  std::int64_t Anzahl_Eintraege() const;

 private:
  friend class FileSystemObject;
  explicit Folder(QString pfad) : pfad_(std::move(pfad)) {}
  QString pfad_;
};

/// File and folder operations on paths of the table (see Pfadkarte). Names are literal, no operation takes wildcards.
/// Failures: 53 missing file, 58 target exists, 70 access denied (a read-only target or source to delete; a file copied
/// onto itself), 75 path access, 76 missing folder, drive or share, 61 disk full, 57 any other failure of the disk.
/// Read-only is a file's missing write bits (all three), whoever the user is.
class KVO_EXPORT FileSystemObject {
 public:
  /// A file, not a folder, of that path exists. Never raises.
  bool FileExists(const QString& pfad) const;
  /// A folder of that path exists. Never raises.
  bool FolderExists(const QString& pfad) const;
  /// Raises 76 when it is missing.
  Folder GetFolder(const QString& pfad) const;
  /// `pfad` and `name` with exactly one backslash between them.
  QString BuildPath(const QString& pfad, const QString& name) const;

  /// Copies one file. `ziel` is a file, or, when it ends in a separator, an existing folder that gets the source's
  /// name. The copy is written beside the target and takes its name when it is complete. It keeps the time stamp where
  /// the file system takes it. A new file has the rights that its folder gives, never those of the source; one that
  /// takes another's place keeps that one's. An existing target without `ueberschreiben` raises 58; a read-only
  /// target 70.
  void CopyFile(const QString& quelle, const QString& ziel, bool ueberschreiben = true) const;
  /// Renames or moves one file; never replaces (58), but the same file under another case of its name is renamed. A
  /// folder as source raises 53. Across file systems it copies, then deletes.
  void MoveFile(const QString& quelle, const QString& ziel) const;
  /// Renames or moves a folder with all that is in it, within one file system. Never replaces (58); a file as source,
  /// or a missing one, raises 76; a target on another file system 70.
  void MoveFolder(const QString& quelle, const QString& ziel) const;
  /// Deletes one file; without `auch_schreibgeschuetzte` a read-only one raises 70.
  void DeleteFile(const QString& pfad, bool auch_schreibgeschuetzte = false) const;
  /// Deletes an empty folder. Raises 76 when it is missing, 70 when it is not empty or may not go.
  void DeleteFolder(const QString& pfad, bool auch_schreibgeschuetzte = false) const;
  /// This user may take a file or an empty folder out of the folder it stands in, as far as the rights there and a
  /// read-only file system tell; whether it is read-only itself does not count. False for a missing one, for a link to
  /// a folder and for a folder that something is mounted on. Never raises.
  bool darf_loeschen(const QString& pfad) const;
};
