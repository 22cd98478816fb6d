#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <tuple>

#include "platform/basic/kvo_export.h"

/// The file statements besides the FileSystemObject, on paths of the table. Failure numbers as there.
namespace dateien {

/// Creates one folder level. Raises 75 when it exists, or the right or a writable file system is missing; 76 when the
/// drive, the share or the level above is missing or is a file, for "\\server" and "\\server\share" themselves; 52 for
/// characters that no name may have (<>"|?*) and names that are too long; 61 when the disk is full.
KVO_EXPORT void MkDir(const QString& pfad);

/// Names of the regular files that match: `pfad` is a folder, a separator and a pattern with * and ?, without regard to
/// case. "*.*" matches names without a dot too; "." matches nothing. Sorted without regard to case. A missing folder
/// gives none.
KVO_EXPORT QStringList Dir(const QString& pfad);

/// Length in bytes; 0 for a folder. Raises 53 when it is missing.
KVO_EXPORT std::int64_t FileLen(const QString& pfad);

/// The path is a folder. Raises 53 when there is nothing of that path.
bool ist_Ordner(const QString& pfad);

/// The whole content. Raises 53 when missing, 75 for a folder, 70 without read right, 57 where less came than the file
/// holds.
KVO_EXPORT QByteArray lies_alles(const QString& pfad);

/// At most that many bytes from the start; failures as of lies_alles.
KVO_EXPORT QByteArray lies_Anfang(const QString& pfad, qsizetype hoechstens);

/// Replaces the whole content, or makes the file. Owner, group, rights and extended attributes stay, as far as this
/// user and the file system may. A read-only file raises 75, a full disk 61, a missing folder 76; in every failure the
/// former content stays, wherever the folder takes a second file beside it.
KVO_EXPORT void schreibe_alles(const QString& pfad, const QByteArray& bytes);

/// Makes a file; never replaces (58). It has its name only when it is complete. Owner, group and rights are those that
/// the folder gives to new files; the time stamp is that of the file `vorbild`, where one is named and the file system
/// takes it. Failures of schreibe_alles, and 53 where `vorbild` is missing.
KVO_EXPORT void schreibe_neu(const QString& pfad, const QByteArray& bytes, const QString& vorbild = {});

/// A path beside a file, under a name that no list of this system shows, for a program that writes the file in a way of
/// its own and then renames it. What is left under that name, or under it and an ending, when this process has ended
/// goes with the next write into the folder.
KVO_EXPORT QString verborgener_Name(const QString& pfad);

/// Takes away what processes that ended in the middle of a write left in a folder. Silent; raises only what the path
/// map does.
void raeume_Reste(const QString& ordner);

/// There is no file of that path. False also where a disk or share that fails can't tell.
bool fehlt_gewiss(const QString& pfad);

/// What tells one state of a file from another: device, inode, length and the times of the last changes, in nanoseconds
/// since 1970.
struct Kennung {
  std::uint64_t geraet = 0;
  std::uint64_t inode = 0;
  std::int64_t laenge = 0;
  std::int64_t geaendert_ns = 0;
  /// Time of the last change of the file's entry (contents, rights, name), which nobody can set back.
  std::int64_t zustand_ns = 0;
  friend bool operator==(const Kennung&, const Kennung&) = default;
};
/// Raises 53 when it is missing.
KVO_EXPORT Kennung kennung(const QString& pfad);

/// Where a path leads on this machine, and the state of what stands there, in one look.
struct Fundstelle {
  QByteArray ort;
  Kennung kennung;
};
/// Raises 53 when it is missing.
Fundstelle fundstelle(const QString& pfad);
/// The state of what stands at a path of this machine, exact in case; the path map is not asked. Raises 53 when it is
/// missing.
Kennung kennung_an(const QByteArray& ort);

}  // namespace dateien
