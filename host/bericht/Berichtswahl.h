#pragma once

#include <array>

/// Dots per inch that the pictures of a report have on the page; Original takes each file as it is.
enum class Dichte { Original = 0, Mail = 150, Druck = 300 };

/// What the user chooses for a picture report.
struct Berichtswahl {
  /// How many pictures a page can have.
  static constexpr std::array<int, 4> Moegliche_je_Seite{1, 2, 4, 6};

  int je_Seite = 2;
  Dichte dichte = Dichte::Druck;
  /// All pictures of the record, not only those that are marked for printing.
  bool alle = false;
  bool mit_Info = false;
  bool mit_Dateiname = false;
  bool mit_Aufnahmedatum = false;
  /// What the originals tell of their place and camera goes along. Otherwise a file's pixels alone leave the house.
  bool mit_Ort = false;
  friend bool operator==(const Berichtswahl&, const Berichtswahl&) = default;
};
