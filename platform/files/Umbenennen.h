#pragma once

#include <QByteArray>

/// New names for files and folders, for the files of this folder only. Each way that a file system refuses has another,
/// and none can overwrite what is there.
namespace umbenennen {

QByteArray ordner_von(const QByteArray& pfad);
QByteArray name_von(const QByteArray& pfad);
/// A new hidden place beside a file; see beiname.
QByteArray fertig_neben(const QByteArray& ziel);

/// Raises the failure of a call that was about a target: a missing level is 76.
[[noreturn]] void wirf_fuer_Ziel(int fehler);

/// Renames without ever replacing: an existing target raises 58. False where the target is on another file system.
bool benenne_um(const QByteArray& quelle, const QByteArray& ziel);
/// Puts a whole file, which stands beside it under a name of fertig_neben, in the place of another. At each moment one
/// of the two can be found: under the target's name, or under a name by which it comes back there.
void ersetze(const QByteArray& quelle, const QByteArray& ziel);

/// Both mean the same file of a share that takes names without regard to case, and only the old one is spelled so.
bool ist_andere_Schreibung(const QByteArray& quelle, const QByteArray& ziel);

/// Brings a folder's names to the disk, where the file system does that; names stand without it too.
void sichere_Ordner(const QByteArray& ordner) noexcept;

}  // namespace umbenennen
