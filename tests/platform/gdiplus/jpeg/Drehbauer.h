#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <cstdio>
#include <vector>

// jpeglib.h wants FILE to be declared before it.
#include <jpeglib.h>

/// JPEGs of any make.
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

}  // namespace drehvorlagen
