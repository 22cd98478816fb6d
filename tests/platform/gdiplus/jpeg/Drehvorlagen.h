#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <array>
#include <cstdint>
#include <vector>

#include "tests/platform/gdiplus/jpeg/Drehbauer.h"

/// What is inside a JPEG, read by libjpeg alone.
namespace drehvorlagen {

using Block = std::array<JCOEF, DCTSIZE2>;

struct Komponente {
  int kennung = 0;
  Abtastung abtastung;
  int breite = 0;  ///< in blocks
  int hoehe = 0;
  std::array<std::uint16_t, DCTSIZE2> tabelle{};
  std::vector<Block> bloecke;
  friend bool operator==(const Komponente&, const Komponente&);
};

struct Inhalt {
  QSize groesse;
  int raum = 0;
  bool progressiv = false;
  bool arithmetisch = false;
  unsigned neustart = 0;
  std::vector<Komponente> komponenten;
  QList<QByteArray> marken;  ///< marker and content of all APPn and COM segments
  qsizetype ende = 0;        ///< position behind the end marker
};

/// libjpeg reads the coefficients to the end, warnings or not.
bool ist_lesbar(const QByteArray& jpeg);
/// Reads all of it; fails the test where libjpeg gives up.
Inhalt lies(const QByteArray& jpeg);

/// The coefficients after a lossless transform, by its definition for samples.
Komponente gedreht(const Komponente& k, int transform);
/// A transform moves all blocks of that component as a whole.
bool bleibt_ganz(const Inhalt& inhalt, const Komponente& k, int transform);

}  // namespace drehvorlagen
