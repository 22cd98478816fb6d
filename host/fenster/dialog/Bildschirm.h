#pragma once

#include <cstdint>
#include <optional>

/// The screen in front of which a user sits, or none.
namespace bildschirm {

/// Ends with Abbruch, Ausgang::Aufruf, where nobody would ever see a window: no display is named, or the one that is
/// does not answer, of which Qt would abort the process. A platform that the environment chooses for Qt by name counts.
/// To be asked before the QApplication is made.
void pruefe();

/// A user sees the windows of this process. Needs the QApplication.
bool hat_Benutzer();
/// The window of the X server that a window manager moves, where that number is one inside of it, as toolkits number
/// their controls; without a manager the same number. None where there is no such window, or no X11.
std::optional<std::uint32_t> ganzes_Fenster(std::uint32_t kennung);

}  // namespace bildschirm
