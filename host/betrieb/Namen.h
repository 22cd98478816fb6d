#pragma once

#include <QString>

#include "store/Bilddatei.h"

/// Names and texts of a call, checked before anything is touched. The statements carry values as they are, without
/// doubling a quote, so an apostrophe would break them; longer texts than the table's would be cut in silence. Both are
/// refused here with words (Abbruch, Ausgang::Aufruf).
namespace namen {

using Bilddatei = ::Bilddatei;

/// Parts a file name at its last dot. A name without both parts is refused.
Bilddatei zerlege(const QString& datei);
/// The same, and the name can stand in the table and on the share.
Bilddatei zerlege_geprueft(const QString& datei);
/// A file name for the table and the share: no apostrophe, no character that the share forbids, no separator.
void pruefe_Dateiname(const QString& name);
/// A key or kind.
void pruefe_Schluessel(const QString& option, const QString& wert);
/// A description; its apostrophes count twice, as the statement holds them doubled before it is cut.
QString beschreibung(const QString& text);
/// A folder relative to the picture root: either separator comes in, backslashes without one at the ends go out.
QString ordner(const QString& angabe);

/// The path in the table's form of a path that the user gave: a drive or share as it stands, anything else from this
/// machine.
QString tabellenpfad(const QString& angabe);

/// A path of the table as the user of this machine knows it; one that means nothing here stays as it is.
QString angezeigt(const QString& pfad);

/// The whole path of a file or folder that the user gave, to be understood from any folder; what has none stays as it
/// is.
QString ganzer_Pfad(const QString& angabe);

}  // namespace namen
