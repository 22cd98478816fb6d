#pragma once

#include <QByteArray>
#include <cstdint>

/// Where an entry lies: the names that the standard gives. All paths are bytes of this machine.
namespace miniatur {

/// The address under which file managers know a file: "file://" and its absolute path, byte for byte; what RFC 3986
/// does not let stand in a path is written as % and two digits.
QByteArray adresse(const QByteArray& ort);

/// Name of the entry's file: the MD5 sum of the address in small hexadecimal digits, and ".png".
QByteArray eintragsname(const QByteArray& adresse);

/// The user's cache folder: XDG_CACHE_HOME, or .cache in HOME where that is unset or not absolute. Empty without a
/// home.
QByteArray cacheheim_der_Umgebung();

/// The folders in a cache folder.
struct Ordner {
  QByteArray gemeinsam;     ///< the desktop's own, which all programs share
  QByteArray eigen;         ///< ours: what file managers would show in another way
  QByteArray fehlschlaege;  ///< entries of files that are no pictures
};
Ordner ordner_in(const QByteArray& cacheheim);

/// What leads to a file inside of one of these folders, by whatever links.
bool liegt_darin(const Ordner& ordner, const QByteArray& ort);

/// The folder is there, or could be made (0700, with those above it); it is this user's own, and he may write in it.
bool ist_brauchbar(const QByteArray& ordner);

/// Makes a folder and those above it, 0700 each.
void mache_Ordner(const QByteArray& ordner);

/// Removes the oldest entries below a folder of ours while they hold more than `grenze` bytes, until it is three
/// quarters of that. Nobody else clears there.
void kuerze(const QByteArray& ordner, std::int64_t grenze);

}  // namespace miniatur
