#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QSize>
#include <QString>
#include <cstdint>

/// Puts an Exif block into a JPEG, for pictures that a program makes: what a camera notes of a shot, in the directories
/// of TIFF 6.0 as Exif 2.32 has them.
namespace exifschreiber {

/// Order of the bytes in a number: "II" or "MM".
enum class Bytefolge { Klein, Gross };

struct Bruch {
  std::uint32_t zaehler = 0;
  std::uint32_t nenner = 1;
};

struct Aufnahme {
  QString hersteller;
  QString modell;
  QString beschreibung;
  /// 1 to 8 as in TIFF 6.0, tag Orientation.
  std::uint16_t ausrichtung = 1;
  QDateTime zeit;
  /// Seconds.
  Bruch belichtung;
  Bruch blende;
  std::uint16_t iso = 100;
  /// Millimetres.
  Bruch brennweite;
  QSize groesse;
};

/// The JPEG with an APP1 segment behind its first marker. Texts are written in Windows-1252, since the field's readers
/// take a byte for a character.
QByteArray mit_Exif(const QByteArray& jpeg, const Aufnahme& aufnahme, Bytefolge folge);

}  // namespace exifschreiber
