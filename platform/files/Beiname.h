#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

/// The hidden names that contents bear until they have their own, for the files of this folder only:
/// ".kvo-DESK-MARK-PID-START-NUMBER-STAGE-TARGET". They tell whose they are, so that what a dead process left behind
/// can go, and what it is, so that nothing goes that is the only copy of something.
namespace beiname {

enum class Stufe : char {
  Entsteht = 'e',    ///< not whole yet, or not wanted without its process
  Fertig = 'f',      ///< whole, and about to take the target's place
  Platzhalter = 'p'  ///< says that an empty file of the target's name may be one that keeps the name free
};

/// What such a name says.
struct Angaben {
  bool eigener_Platz = false;  ///< made on this machine, where its process can be looked for
  pid_t prozess = 0;
  QByteArray beginn;  ///< of the process, counted by this start of the machine
  Stufe stufe = Stufe::Entsteht;
  QByteArray ziel;
  bool gekuerzt = false;  ///< `ziel` is only the beginning of the target's name
};

/// A new name for something that belongs to the file of that name; no folder in front.
QByteArray bilde(QByteArrayView ziel, Stufe stufe);
/// What a name says; none for any other name.
std::optional<Angaben> lies(QByteArrayView name);
bool ist_einer(QByteArrayView name);

/// Nobody works with it any more: its process on this machine is gone, or it is another desk's and a day old.
/// `verzeichnis` is its open folder.
bool ist_verlassen(const Angaben& angaben, int verzeichnis, const char* name);

}  // namespace beiname
