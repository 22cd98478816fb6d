#pragma once

/// The user's choice whether new pictures are set upright, kept beside the places of the program's windows.
namespace aufnahmeeinstellung {

/// True unless the user has switched it off.
bool aufrecht();
void aufrecht(bool wert);

}  // namespace aufnahmeeinstellung
