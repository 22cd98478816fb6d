#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <array>
#include <cstdint>
#include <cstdio>
#include <vector>

// jpeglib.h wants FILE to be declared before it.
#include <jpeglib.h>

/// JPEGs of any make, and what is inside a JPEG, read by libjpeg alone.
namespace drehvorlagen {

struct Abtastung {
  int waagrecht = 1;
  int senkrecht = 1;
};

struct Machart {
  J_COLOR_SPACE raum = JCS_YCbCr;
  std::vector<Abtastung> abtastung{{2, 2}, {1, 1}, {1, 1}};
  bool progressiv = false;
  bool arithmetisch = false;
  bool optimiert = false;
  unsigned neustart = 0;
  int qualitaet = 92;
  bool mit_Jfif = true;
};

/// A JPEG of that make, coded from samples of each component's own resolution, so that every sampling goes. More than
/// ten blocks to an MCU make it one of several scans.
QByteArray jpeg(QSize groesse, const Machart& art = {});

/// The stream with segments put behind its SOI and bytes behind its end.
QByteArray mit_Marken(const QByteArray& jpeg, const QList<QByteArray>& segmente, const QByteArray& dahinter = {});
/// A segment with its marker and length.
QByteArray segment(int marke, const QByteArray& inhalt);

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
