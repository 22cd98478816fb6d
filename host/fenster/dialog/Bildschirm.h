#pragma once

#include <cstdint>

/// The screen in front of which a user sits, or none.
namespace bildschirm {

/// Ends with Abbruch, Ausgang::Aufruf, where nobody would ever see a window: no display is named, or the one that is
/// does not answer, of which Qt would abort the process. A platform that the environment chooses for Qt by name counts.
/// To be asked before the QApplication is made.
void pruefe();

/// A user sees the windows of this process. Needs the QApplication.
bool hat_Benutzer();
/// The X server of this process has a window of that number. False on any other platform than X11.
bool hat_Fenster(std::uint32_t kennung);

}  // namespace bildschirm
