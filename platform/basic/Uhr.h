#pragma once

#include <QDateTime>

/// The clock of the system: what names and stamps are made from.
namespace uhr {

using Zeitgeber = QDateTime (*)();

/// Local date and time.
QDateTime jetzt();
/// Puts another clock in force and hands back the one before; none puts the system's back. Tests fix the time with it.
Zeitgeber setze(Zeitgeber zeitgeber);

}  // namespace uhr
