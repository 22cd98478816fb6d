#pragma once

#include <QJsonArray>
#include <QString>
#include <QStringList>

#include "platform/adodb/Connection.h"

/// Something that is not as it should be.
struct Befund {
  /// For scripts, in small letters.
  QString kennung;
  /// For people.
  QString text;
  /// The system can't work with it; otherwise it works, and loses or misses something.
  bool sperrt = false;
  /// Rows that it is about, 0 where it is about a table; the first of them as objects of names and values.
  qint64 anzahl = 0;
  QJsonArray zeilen;
  /// Good to know and nobody's fault; it leaves the exit code as it is.
  bool hinweis = false;
};

namespace befund {

/// A finding names at most this many of its rows.
inline constexpr int Genannte_Zeilen = 20;

/// The rows of a query whose first columns are `spalten`, as objects with these names in small letters; NULL is told
/// from an empty text. A column behind them is the number of all rows that the query would give without its TOP;
/// without one the rows are counted. The text is left to the caller.
Befund lies(
    adodb::Connection& verbindung, const QString& kennung, const QStringList& spalten, const QString& anweisung);
/// One row of that kind.
QJsonObject als_Objekt(const adodb::Recordset& satz, const QStringList& spalten);

}  // namespace befund
