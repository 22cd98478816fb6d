#pragma once

#include <QString>
#include <QStringView>

#include "platform/basic/kvo_export.h"

/// How texts are made ready to be searched, and what is typed to be compared with them: the same on both sides.
namespace suchworte {

/// The text with the case of its letters folded, "ß" as "ss" ("Straße" and "STRASSE" become one), white space of any
/// kind and length as one blank, none at the ends.
KVO_EXPORT QString gefaltet(QStringView text);

/// The first letter or digit and the first two of each word of the text, each once, folded, parted by blanks and with a
/// blank before the first and behind the last: " 2 24 a ab " for "AB 24". Empty for a text without a letter or digit. A
/// word begins at a letter or digit behind anything else.
KVO_EXPORT QString anfaenge(QStringView text);

}  // namespace suchworte
