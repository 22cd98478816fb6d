#pragma once

#include <QSize>
#include <QStringList>
#include <span>

/// The records and pictures of the sample firm.
namespace beispieldaten {

enum class Exif { Ohne, Klein, Gross };

/// A record that has pictures, and the folder of the picture tree that takes them.
struct Beispielvorgang {
  const char16_t* ordner;
  const char16_t* key1;
  const char16_t* key2;
  const char16_t* key3;
  const char16_t* typ1;
};

/// One picture. One without `vorgang` waits in the folder of new pictures and belongs to nothing.
struct Beispielbild {
  int nummer;
  const char16_t* motiv;
  const Beispielvorgang* vorgang;
  const char16_t* beschreibung;
  /// Text of the file beside it, or none.
  const char16_t* text;
  Exif exif;
  QSize groesse;
};

std::span<const Beispielbild> bilder();
/// Statements that fill the firm's tables.
QStringList saetze_des_Betriebs();

}  // namespace beispieldaten
