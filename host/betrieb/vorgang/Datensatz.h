#pragma once

#include <QString>

/// The six parts that name a business record. In an exact record "-" stands for a part without a value, as it does in
/// the table; in a filter an empty part adds no condition.
struct Datensatz {
  QString key1, key2, key3, key4, typ1, typ2;
};
