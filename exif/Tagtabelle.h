#pragma once

#include <QStringView>
#include <array>
#include <cstdint>

/// The tags that the properties of a picture know, in the order in which they are listed.
namespace tagtabelle {

struct Zeile {
  QStringView name;
  std::int32_t tag = 0;
  /// False: the value is in the table of properties but lists leave it out.
  bool zeigen = true;
};

extern const std::array<Zeile, 112> Zeilen;

/// The German label of a name, or the name itself where it has none. Upper and lower case count.
QStringView beschriftung(QStringView name);

}  // namespace tagtabelle
