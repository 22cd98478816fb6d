#pragma once

#include <QByteArray>
#include <functional>

#include "platform/adodb/Connection.h"

/// Gives the firm's records out as a list that comes in unchanged.
namespace vorgangsausgabe {

enum class Form { Csv, Json };
/// Takes a piece of the list; false where it could not.
using Senke = std::function<bool(const QByteArray& bytes)>;

/// All records in the order in which they were made, in UTF-8, a part of them in memory at a time, and all as they
/// stood at the beginning. CSV has a mark of UTF-8, by which spreadsheets know it, a line of headings, semicolons, and
/// an empty value without quotes for NULL; JSON an object a line, with null. Gives how many there are. Raises what the
/// connection raises; a piece that was not taken ends with Abbruch, Ausgang::Datei.
qint64 gib_aus(adodb::Connection& verbindung, Form form, const Senke& senke);

}  // namespace vorgangsausgabe
