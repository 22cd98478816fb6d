#pragma once

#include <QList>

#include "host/betrieb/befehl/Befehlszeile.h"
#include "store/clsBildZuordnungen.h"

/// The print flags of an assignment on the command line.
namespace druckangaben {

/// --drucken, --neue-seite, --anhang, --ganze-seite, each "ja" or "nein".
QList<Option> optionen();
/// One of them was given.
bool genannt(const Aufruf& aufruf);
/// A flag that is neither "ja" nor "nein" ends with Abbruch before anything is touched.
void pruefe(const Aufruf& aufruf);
/// Puts what was given into the current record; the rest stays.
void uebernimm(const Aufruf& aufruf, clsBildZuordnungen& store);
/// The flags of the current record in words.
QString text(const clsBildZuordnungen& store);

}  // namespace druckangaben
