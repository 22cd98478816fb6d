#pragma once

#include <QList>
#include <QString>
#include <cstdint>
#include <optional>

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/befehl/Befehlszeile.h"

/// What a dialog that opens as a program of its own was called with.
struct Dialogauftrag {
  /// Database and picture root; nothing of it is kept for a later start.
  Wirtsoptionen wirt;
  /// The record, where the dialog has one.
  Zuordnungsweg::Vorgang vorgang;
  /// Stands in the window's title in front of its own; may be empty.
  QString titel;
  /// The picture, as the call names it, where the dialog has one.
  QString bild;
  /// Folder in which a search begins, as the call names it; may be empty.
  QString beginn;
  bool nur_Anzeige = false;
  bool nur_Anhang = false;
  /// A search gives one picture at most.
  bool eines = false;
  bool json = false;
  /// Window of the calling program, as the X server numbers it.
  std::optional<std::uint32_t> ueber;
};

/// The options of these dialogs, and what a call makes of them. A wrong call ends with Abbruch, Ausgang::Aufruf.
namespace dialogauftrag {

/// Record, its title and its folder.
QList<Option> vorgang_Optionen();
/// Database and picture root, as the program with the main window has them, and the password.
QList<Option> datenbank_Optionen();
/// What all of them have.
QList<Option> fenster_Optionen();

/// Reads what every dialog has.
Dialogauftrag lies(const Aufruf& aufruf);
/// The same with a record; without --titel and --ordner both are ours by rule.
Dialogauftrag mit_Vorgang(const Aufruf& aufruf);
/// Fills in database and picture root: those of the call, then those of the environment, then those that the program
/// with the main window was started with last. The password of standard input is read here, before that of the
/// environment, which later programs do not get to see.
void lies_Datenbank(const Aufruf& aufruf, Dialogauftrag& auftrag);

}  // namespace dialogauftrag
