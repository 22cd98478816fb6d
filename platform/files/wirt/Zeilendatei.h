#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

#include "platform/basic/kvo_export.h"

/// A file of lines to which several processes append at the same time, on paths of the table. Failure numbers as in
/// FileSystemObject.
namespace zeilendatei {

/// Appends lines, each with its line end, whole or not at all, in one piece among those of other processes. The folder
/// must be there. Where the file would grow over `grenze` bytes it first takes the place of `vorige`, and a new one
/// begins. What a killed process left of a line, behind the last line end, goes; where there are no locks it is closed,
/// so that it spoils only itself.
///
/// Waits a second at most for the other processes, then raises 70. A full disk raises 61, a missing right 70 or 75.
KVO_EXPORT void haenge_an(const QString& pfad, const QByteArray& zeilen, const QString& vorige, std::int64_t grenze);

}  // namespace zeilendatei
