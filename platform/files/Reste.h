#pragma once

#include <QByteArray>

/// What processes that ended in the middle left in folders, for the files of this folder only.
namespace reste {

/// Takes it away, silently. A whole content whose target is gone takes the target's name: it is all there is. Never
/// raises.
void raeume(const QByteArray& ordner) noexcept;
/// The same before a write into the folder, where a look that is younger than a second counts too.
void raeume_gelegentlich(const QByteArray& ordner) noexcept;

}  // namespace reste
