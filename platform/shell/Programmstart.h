#pragma once

#include <QString>
#include <memory>

/// Showing files in the programs of the desktop (learn.microsoft.com, "ShellExecute").
namespace shell {

class Programmstarter {
 public:
  virtual ~Programmstarter();
  /// Opens a file of the machine's own path in its program. False when there is none or it did not start.
  virtual bool oeffne(const QString& maschinenpfad) = 0;
};

/// Puts another service in force and hands back the one before; none puts the desktop's back.
std::shared_ptr<Programmstarter> setze(std::shared_ptr<Programmstarter> dienst);

/// Opens a file, given as the table writes it, with the verb "open" in a normal window. The user is told when the file
/// is missing or no program shows it; the result is then False.
bool ShellExecute_open(const QString& datei);

}  // namespace shell
