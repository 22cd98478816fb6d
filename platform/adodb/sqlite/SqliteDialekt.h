#pragma once

#include <QString>

namespace adodb {

/// A statement text of the field's server in the words of SQLite. Two things are rewritten, nothing else; a text
/// without them comes back as it is.
/// - Behind SELECT (and ALL or DISTINCT) `TOP 100 PERCENT` falls out, and `TOP n` or `TOP (n)` becomes a closing
///   `LIMIT n` of its select, before a closing bracket, a semicolon or a closing comment. Where that would mean
///   something else (a select that UNION, EXCEPT or INTERSECT joins with another, another percentage, WITH TIES) the
///   words stay, and the database refuses them.
/// - A number with a word directly behind it ("0order by") gets a blank between the two.
QString sqlite_Dialekt(const QString& text);

}  // namespace adodb
