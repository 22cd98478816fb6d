#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "platform/basic/kvo_export.h"

/// Moving files from one tree of folders to another, on paths of the table. Failure numbers as in FileSystemObject.
namespace umzug {

/// The folder beside a folder that has its name with `endung` behind it, whether it is there or not. None where no path
/// of the table means that place: beside the root of a drive's file system.
KVO_EXPORT std::optional<QString> neben(const QString& ordner, const QString& endung);

/// What stands in the folder `von` can be renamed into `nach`, also where that is to be made first: both stand on one
/// mount, and this user may make entries there. A folder that is missing is made and goes again. Never raises.
KVO_EXPORT bool geht_durch_Umbenennen(const QString& von, const QString& nach);

/// Makes a folder with all levels above it; one that is there is none the worse. Raises 70, 75 or 76 where that fails.
KVO_EXPORT void lege_an(const QString& ordner);

/// Moves one file; never replaces (58). It is renamed; across file systems it is copied, the copy is compared byte for
/// byte, and only then does the source go. A source whose copy differs stays, the copy goes, and 57 is raised. Names
/// that differ in case alone stand beside each other where the file system lets them.
KVO_EXPORT void verschiebe(const QString& quelle, const QString& ziel);

/// When a file or folder came to the place where it stands, in nanoseconds since 1970: when it was made or, for a file,
/// when its entry (name, rights, contents) last changed, whichever is later. The time stamp, which a copy takes over
/// from its source, does not count. Raises 53 when it is missing.
KVO_EXPORT std::int64_t gekommen_ns(const QString& pfad);

/// What gekommen_ns would say of something that came into this folder now: a share counts by its server's clock, which
/// may be hours away from this machine's. The machine's own where no file can be made there.
KVO_EXPORT std::int64_t jetzt_ns(const QString& ordner);

}  // namespace umzug
