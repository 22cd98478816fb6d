#pragma once

#include <QString>

/// Rules of picture names and texts that the table, the statements and every desk's share can hold.
namespace bildnamen {

/// Longest name and longest text that the table keeps, in 16-bit characters.
inline constexpr qsizetype Namenslaenge = 50;
inline constexpr qsizetype Textlaenge = 250;

/// Characters that another desk could not store in a file name, or that break a statement: \ / : * ? " < > | ' and the
/// control characters.
bool ist_verboten(QChar zeichen);
/// The name without them, each replaced by one character: ' by ’ and the others by _.
QString ersetze_verbotene(const QString& name);
/// `name`, for a `nummer` above 1 with "_2" and so on, and the stamp behind it without a separator. Cut before the
/// stamp so that all of it fits the table, never inside a surrogate pair; blanks at the ends are gone.
QString gestempelt(const QString& name, const QString& stempel, int nummer = 1);
/// Name of the text file beside a picture: no dot between name and extension.
QString textdatei(const QString& name, const QString& endung);
/// As much of a Drucktext as fits the table with its quotes doubled, whole: no half pair of quotes or of surrogates.
QString passender_Drucktext(const QString& text);

}  // namespace bildnamen
