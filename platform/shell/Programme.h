#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

/// The desktop's programs for a file, and choosing one (freedesktop.org: Desktop Entry 1.5, MIME
/// Applications Associations 1.0). Paths are those of the machine.
namespace shell {

/// A program as its desktop entry tells it.
struct Programm {
  QString name;         ///< in the user's language
  QString befehl;       ///< value of Exec, with its field codes
  QString symbol;       ///< name or path of its icon, perhaps empty
  QString eintrag;      ///< file name of the entry
  QString verzeichnis;  ///< where to start it; empty for the current directory
};

/// Programs registered for the type of a file: the user's defaults first, then by name. Deleted ones, ones whose
/// program is missing and ones that need a terminal are left out.
QList<Programm> Programme_fuer(const QString& datei);

/// The command line for one file: field codes replaced, quotes resolved, the file at the end where no code asks for it.
/// The first element is the program; empty for a command that can't be read.
QStringList Befehlszeile(const Programm& programm, const QString& datei);

/// A text as one argument in a value of Exec.
QString als_Argument(const QString& text);

/// Starts a program detached; the program's own name as it was started, or "" where it did not start.
QString starte(const QStringList& befehlszeile, const QString& verzeichnis);

/// Lets the user choose a program for a file.
class Programmwahl {
 public:
  virtual ~Programmwahl();
  /// The command line that was chosen, the file included; empty for none.
  virtual QStringList waehle(const QString& datei, const QList<Programm>& programme, QString& verzeichnis) = 0;
};

/// Puts another service in force and hands back the one before; none puts the default back, which chooses nothing:
/// there are no windows to ask with.
std::shared_ptr<Programmwahl> setze(std::shared_ptr<Programmwahl> dienst);

/// The desktop's Open With for a file of the table: the user chooses, the program starts on it. The name of what was
/// started, "" for nothing. The user is told when the file is missing or the program does not start.
QString OpenAs(const QString& datei);

}  // namespace shell
