#pragma once

#include <QString>

/// The picture files that the user turned himself while this program ran. Turning leaves a file's Exif mark as it is,
/// so nobody can see from such a file that it stands as the user wants it.
namespace drehspur {

/// The file of that path was turned just now. A missing one is passed over.
void merke(const QString& datei);
/// The file of that path was turned, and nobody has written it since. False for a missing one.
bool hat(const QString& datei);

}  // namespace drehspur
