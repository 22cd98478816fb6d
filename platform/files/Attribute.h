#pragma once

#include <sys/stat.h>

#include <QByteArray>

/// What stands about a file beside its content, for the files of this folder only. Rights and times are the business of
/// the file system: what it or this user's rights refuse is left, and nothing here raises.
namespace attribute {

/// Owner, group, rights and extended attributes, the access list among them, of the file `von` with that state.
void uebernimm(const QByteArray& von, const struct stat& stand, int nach) noexcept;
void uebernimm_Zeit(const struct stat& stand, int nach) noexcept;

}  // namespace attribute
