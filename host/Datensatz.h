#pragma once

#include <QString>

class Aufruf;

/// The six parts that name a business record. In an exact record "-" stands for a part without a value, as it does in
/// the table; in a filter an empty part adds no condition.
struct Datensatz {
  QString key1, key2, key3, key4, typ1, typ2;

  /// The one record of a call; --key1 and --typ1 are needed.
  static Datensatz genau(const Aufruf& aufruf);
  /// What a call narrows a list to; a part that was given empty means "-".
  static Datensatz filter(const Aufruf& aufruf);
};
