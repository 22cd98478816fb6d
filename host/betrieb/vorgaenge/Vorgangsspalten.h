#pragma once

#include <QList>
#include <QString>
#include <array>
#include <optional>

/// What a list of a firm's records has of each, in the order in which lists are given out.
enum class Vorgangsspalte { Typ1, Key1, Key2, Key3, Kundennummer, Kundenname, Ort, Projektnummer, Text, Ordner, Stand };
inline constexpr std::size_t Vorgangsspaltenzahl = 11;

/// One value for each column; none where it is NULL.
using Vorgangswerte = std::array<std::optional<QString>, Vorgangsspaltenzahl>;

namespace vorgangsspalten {

struct Eigenschaft {
  QString name;
  /// In 16-bit characters; 0 where the length follows from the column's form.
  int laenge;
  /// NULL is another value than the empty text.
  bool nullbar;
};
const Eigenschaft& eigenschaft(Vorgangsspalte spalte);
/// All of them in their order.
const QList<Vorgangsspalte>& alle();
/// The column that the heading of a list means, by its name or by what firms call it ("Belegart", "Kunden-Nr."); case,
/// blanks and punctuation do not count.
std::optional<Vorgangsspalte> nach_Namen(const QString& kopf);
constexpr std::size_t platz(Vorgangsspalte spalte) {
  return static_cast<std::size_t>(spalte);
}

}  // namespace vorgangsspalten
