#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <initializer_list>
#include <variant>
#include <vector>

#include "platform/basic/kvo_export.h"

namespace adodb {

/// One value of a result as the database gave it: NULL, a whole number, a number or a text.
using Wert = std::variant<std::monostate, std::int64_t, double, QString>;

/// The values of a result, row behind row. Kept close together: the characters of all texts lie in one memory, and a
/// text that equals the one above it, as most columns of a record's rows do, lies there once.
class KVO_EXPORT Werte {
 public:
  Werte() = default;
  Werte(std::initializer_list<Wert> werte);

  std::size_t size() const noexcept { return zellen_.size(); }
  bool empty() const noexcept { return zellen_.empty(); }
  void push_back(const Wert& wert);
  /// The value of that number, from 0. A number outside raises 9.
  Wert at(std::size_t nummer) const;
  Wert operator[](std::size_t nummer) const { return at(nummer); }

  void haenge_null_an() { zellen_.push_back({}); }
  void haenge_zahl_an(std::int64_t zahl);
  void haenge_zahl_an(double zahl);
  /// `breite` is the number of values in a row; it finds the value above, which an equal text shares. 0 looks at none.
  void haenge_text_an(QStringView text, std::size_t breite = 0);
  /// The same for a text in UTF-8.
  void haenge_utf8_an(const char* bytes, std::size_t laenge, std::size_t breite = 0);

  /// Adds `zeilen` rows of `breite` values, all NULL, and gives the number of the first value.
  std::size_t haenge_zeilen_an(std::size_t zeilen, std::size_t breite);
  void setze_zahl(std::size_t nummer, std::int64_t zahl) noexcept;
  void setze_zahl(std::size_t nummer, double zahl) noexcept;
  /// As haenge_text_an; to be called in the order of the rows.
  void setze_text(std::size_t nummer, QStringView text, std::size_t breite);

  /// The value is a text. Texts that share their memory have the same `ort`.
  bool ist_text(std::size_t nummer) const noexcept { return zellen_[nummer].art == Art::Text; }
  std::int64_t ort(std::size_t nummer) const noexcept { return zellen_[nummer].inhalt; }
  /// A text's characters; valid until a value is added.
  QStringView zeichen(std::size_t nummer) const noexcept;

 private:
  enum class Art : std::uint32_t { Null, Ganzzahl, Zahl, Text };
  struct Zelle {
    std::int64_t inhalt = 0;  ///< the whole number, the bits of the number, or where the text begins
    std::uint32_t laenge = 0;
    Art art = Art::Null;
  };
  const Zelle* text_ueber(std::size_t nummer, std::size_t breite) const noexcept;
  Zelle neuer_Text(qsizetype laenge) const;

  std::vector<Zelle> zellen_;
  std::vector<char16_t> zeichen_;
};

/// A text of these characters. A single ASCII character is shared without counting references: most columns of most
/// rows hold "-".
QString als_Text(QStringView zeichen);

}  // namespace adodb
