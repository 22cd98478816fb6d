#pragma once

#include <QString>
#include <array>

/// What a record must be like, for whoever makes one. The reasons are clauses without a full stop; empty means that
/// nothing is wrong.
namespace vorgangspruefung {

/// A part of a kind's number: how the kind calls it, and whether it must be there.
struct Teil {
  QString name;
  bool noetig = false;
};
/// The three parts of a kind; one that the kind does not have has no name.
std::array<Teil, 3> teile(const QString& typ1);

/// A kind and a number for a new record. Its parts go into statements as they are, and into names of folders.
QString pruefe_Schluessel(const QString& typ1, const std::array<QString, 3>& keys);
/// The name of a kind alone.
QString pruefe_Typ(const QString& typ1);

enum class Umbruch { Verboten, Erlaubt };
/// Length in 16-bit characters, control characters, and surrogates that stand alone, which no database takes. `was`
/// begins the reason.
QString pruefe_Text(const QString& was, const QString& wert, int laenge, Umbruch umbruch = Umbruch::Verboten);
/// A folder below the picture root.
QString pruefe_Ordner(const QString& ordner);

}  // namespace vorgangspruefung
