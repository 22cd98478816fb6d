#pragma once

#include <functional>

#include "host/bericht/Bericht.h"
#include "host/bericht/Berichtswahl.h"
#include "store/clsBildZuordnungen.h"

/// Makes a report's content of a record's assignments.
namespace berichtsinhalt {

/// So many pictures of so many are looked at; false ends the reading.
using Fortgang = std::function<bool(std::size_t getan, std::size_t von)>;

/// `store` holds the assignments in the order of the strip; its cursor moves. `wurzel` is the picture root without a
/// closing backslash, `vorgang` the record's line. Only headers of the pictures are read. What can't be read of a
/// picture becomes its reason. Stopped by `fortgang` it gives the pictures until then.
Bericht lies(clsBildZuordnungen& store, const QString& wurzel, const QString& vorgang, const Berichtswahl& wahl,
    const Fortgang& fortgang = {});

}  // namespace berichtsinhalt
